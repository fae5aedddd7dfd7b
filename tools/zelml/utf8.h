// Code page 1252 and UTF-8, the same on every system.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The byte of a character; nothing when the code page lacks it. The five bytes
// without a character (81, 8D, 8F, 90, 9D) belong to none.
std::optional<char> toCodePage(char32_t character);

// The character of a byte; nothing for those five.
std::optional<char32_t> fromCodePage(char byte);

// One character of a UTF-8 text (RFC 3629): no overlong forms, no surrogates,
// nothing above U+10FFFF.
struct Decoded {
    char32_t character;
    std::size_t size;  // in bytes; 0: what stands there is not UTF-8
};
Decoded decodeUtf8(std::string_view text);

void appendUtf8(std::string& text, char32_t character);
