// Code page 1252 without Windows: what `sv/core/codepage_win.cpp` does with a process code page of
// 1252, for texts as tests and benchmarks have them.

#include <cstdint>
#include <string>

#include "sv/string.h"
#include "text/ztools_sys.h"

namespace SV {

namespace {

char byteOf(std::uint32_t character) {
    for (int byte = 0; byte < 256; ++byte) {
        if (codePageCharacter(static_cast<char>(byte)) == character) {
            return static_cast<char>(byte);
        }
    }
    return '?';
}

std::size_t sequenceLength(unsigned char lead) {
    return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::uint32_t decode(std::string_view sequence) {
    const auto lead = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1) return lead;
    std::uint32_t character = lead & (0x7Fu >> sequence.size());
    for (const char c : sequence.substr(1))
        character = character << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    return character;
}

template <class Change>
String changed(const String& text, Change change) {
    std::string copy(text.begin(), text.end());
    for (char& c : copy) c = change(static_cast<unsigned char>(c));
    return String(copy);
}

bool isLower(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 0xE0 && c != 0xF7 && c != 0xFF);
}

bool isUpper(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
}

}  // namespace

String String::Upper() const {
    return changed(*this,
                   [](unsigned char c) { return static_cast<char>(isLower(c) ? c - 32 : c); });
}

String String::Lower() const {
    return changed(*this,
                   [](unsigned char c) { return static_cast<char>(isUpper(c) ? c + 32 : c); });
}

String ConvertStringToUTF8String(const String& text) {
    std::string utf8;
    for (const char c : text) {
        const char16_t character = codePageCharacter(c);
        if (character < 0x80) {
            utf8 += c;
        } else if (character < 0x800) {
            utf8 += {static_cast<char>(0xC0 | character >> 6),
                     static_cast<char>(0x80 | (character & 0x3F))};
        } else {
            utf8 += {static_cast<char>(0xE0 | character >> 12),
                     static_cast<char>(0x80 | (character >> 6 & 0x3F)),
                     static_cast<char>(0x80 | (character & 0x3F))};
        }
    }
    return String(utf8);
}

String ConvertUTF8StringToString(const String& utf8) {
    const std::string_view text = utf8;
    std::string bytes;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t length = sequenceLength(static_cast<unsigned char>(text[pos]));
        bytes += byteOf(decode(text.substr(pos, length)));
        pos += length;
    }
    return String(bytes);
}

}  // namespace SV
