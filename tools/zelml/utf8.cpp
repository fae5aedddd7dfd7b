#include "utf8.h"

namespace {

constexpr Decoded kInvalid = {0, 0};

}  // namespace

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
