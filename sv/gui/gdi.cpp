#include "sv/gdi.h"

#include <windows.h>

namespace SV {

SelectedObject::SelectedObject(HDC__* device, void* object)
    : m_device(device), m_object(object), m_previous(::SelectObject(device, object)) {}

SelectedObject::~SelectedObject() {
    ::SelectObject(m_device, m_previous);
    ::DeleteObject(m_object);
}

}  // namespace SV
