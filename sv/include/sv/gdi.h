// Owners of what drawing needs for a while.

#pragma once

#include "sv/export.h"

struct HDC__;

namespace SV {

// Owns a pen, brush or font and has it selected into a device context for as long
// as it lives; what was selected before is selected again.
class SV_API SelectedObject {
public:
    // Takes over `object`, a GDI handle; `device` stays the caller's and must outlive this.
    SelectedObject(HDC__* device, void* object);
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
    ~SelectedObject();

private:
    HDC__* m_device;
    void* m_object;
    void* m_previous;
};

}  // namespace SV
