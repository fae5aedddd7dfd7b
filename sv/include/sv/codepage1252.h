// Code page 1252, the same on every system and whatever the process code page is.

#pragma once

#include <optional>

namespace SV {

// The characters of the bytes 0x80 to 0x9F, with 0 for the five that have none (81, 8D, 8F, 90,
// 9D). Every other byte is the character of its own number.
inline constexpr char16_t kCodePage1252[] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       //
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// The character of a byte; nothing for those five.
constexpr std::optional<char32_t> CodePage1252ToCharacter(unsigned char byte) {
    if (byte < 0x80 || byte > 0x9F) return byte;
    const char16_t character = kCodePage1252[byte - 0x80];
    return character != 0 ? std::optional<char32_t>(character) : std::nullopt;
}

// The byte of a character; nothing when the code page lacks it.
constexpr std::optional<char> CharacterToCodePage1252(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    for (int i = 0; i < 32; ++i) {
        if (kCodePage1252[i] == character) return static_cast<char>(0x80 + i);
    }
    return std::nullopt;
}

}  // namespace SV
