// What the measured code asks of the system, for programs of this machine.

#include <algorithm>
#include <string>

#include "diag/librarytext.h"
#include "text/ztools_sys.h"

SV::String libraryText(std::uint32_t) {
    std::string entities;  // of the length that the names of ISO 8859-1 have
    for (int i = 0; i < 128; ++i) entities += "&#" + std::to_string(128 + i) + "; ";
    return SV::String(entities);
}

namespace SV {

String ConvertStringToUTF8String(const String& text) {
    if (std::ranges::none_of(text, [](char c) { return c < 0; })) return text;
    std::string utf8;
    for (const char c : text) {
        const char16_t unit = codePageCharacter(c);
        if (unit < 0x80) {
            utf8 += static_cast<char>(unit);
        } else if (unit < 0x800) {
            utf8 += static_cast<char>(0xC0 | (unit >> 6));
            utf8 += static_cast<char>(0x80 | (unit & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | (unit >> 12));
            utf8 += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (unit & 0x3F));
        }
    }
    return String(utf8);
}

}  // namespace SV
