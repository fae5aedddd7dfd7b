#include "sv/font.h"

#include <windows.h>

namespace SV {

HFONT__* Font::Create() const {
    // A negative height is the height of the characters, not of their cells.
    return ::CreateFontA(-m_size.height, m_size.width, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                         static_cast<DWORD>(m_charSet), OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                         CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, m_face.c_str());
}

}  // namespace SV
