// Fonts.

#pragma once

#include "sv/color.h"
#include "sv/export.h"
#include "sv/string.h"

struct HFONT__;

namespace SV {

// How large a window, a picture or a character is.
struct Size {
    // In pixels.
    int width = 0;
    int height = 0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

// What is wanted of a font; `Create` makes the system's object of it.
class SV_API Font {
public:
    // Numbers of the tool library's colours, as callers know them.
    enum ColorNumber : int { kWindowTextColor = 20, kWindowColor = 21 };

    Font() = default;  // the system's choice in everything
    // Sizes in pixels; a width of 0 lets the system choose.
    Font(const String& face, Size size) : m_face(face), m_size(size) {}

    const String& GetFace() const { return m_face; }  // empty: the system's choice
    Size GetSize() const { return m_size; }  // the height of characters, not of their cells
    // The system's number of a character set (`..._CHARSET`), 1 (default) at first.
    int GetCharSet() const { return m_charSet; }
    void ChangeCharSet(int charSet) { m_charSet = charSet; }
    // How callers want text drawn: a `ColorNumber` for the text and for what lies behind it, or
    // nothing behind it (transparent, as at first). `Create` does not look at these.
    int GetTextColor() const { return m_textColor; }
    void ChangeTextColor(int number) { m_textColor = number; }
    int GetFillColor() const { return m_fillColor; }
    void ChangeFillColor(int number) { m_fillColor = number; }
    bool IsTransparent() const { return m_isTransparent; }
    void ChangeTransparent(bool isTransparent) { m_isTransparent = isTransparent; }

    // A new GDI font, which the caller deletes with `DeleteObject`; null on failure.
    HFONT__* Create() const;

private:
    String m_face;
    Size m_size;
    int m_charSet = 1;  // DEFAULT_CHARSET
    int m_textColor = kWindowTextColor;
    int m_fillColor = kWindowColor;
    bool m_isTransparent = true;
};

}  // namespace SV
