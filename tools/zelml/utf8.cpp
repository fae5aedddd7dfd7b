#include "codepage.h"

#include <algorithm>
#include <iterator>

namespace {

// Bytes 80 to 9F; elsewhere byte and character have the same number. 0: no character.
constexpr char32_t kUpper[] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       //
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};
constexpr char32_t kUpperStart = 0x80;
constexpr char32_t kUpperEnd = 0xA0;

constexpr bool isUpper(char32_t number) { return number >= kUpperStart && number < kUpperEnd; }

constexpr Decoded kInvalid = {0, 0};

}  // namespace

std::optional<char> toCodePage(char32_t character) {
    if (character <= 0xFF && !isUpper(character)) return static_cast<char>(character);
    const auto found = std::ranges::find(kUpper, character);
    if (found == std::end(kUpper)) return std::nullopt;
    return static_cast<char>(kUpperStart + static_cast<char32_t>(found - kUpper));
}

std::optional<char32_t> fromCodePage(char byte) {
    const char32_t number = static_cast<unsigned char>(byte);
    if (!isUpper(number)) return number;
    const char32_t character = kUpper[number - kUpperStart];
    return character ? std::optional(character) : std::nullopt;
}

Decoded decodeUtf8(std::string_view text) {
    const auto byte = [&](std::size_t i) -> char32_t {
        return static_cast<unsigned char>(text[i]);
    };
    if (text.empty()) return kInvalid;
    const char32_t first = byte(0);
    if (first < 0x80) return {first, 1};

    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC0 || first > 0xF4 || size > text.size()) return kInvalid;
    char32_t character = first & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return kInvalid;
        character = (character << 6) | (byte(i) & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0x80, 0x800, 0x10000};  // of two, three, four bytes
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < kSmallest[size - 2] || isSurrogate || character > 0x10FFFF) return kInvalid;
    return {character, size};
}

void appendUtf8(std::string& text, char32_t character) {
    const auto tail = [&](int shift) {
        text += static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        tail(0);
    } else {  // the code page has nothing beyond three bytes
        text += static_cast<char>(0xE0 | (character >> 12));
        tail(6);
        tail(0);
    }
}
