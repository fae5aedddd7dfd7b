// UTF-8, the same on every system.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// One character of a UTF-8 text (RFC 3629): no overlong forms, no surrogates,
// nothing above U+10FFFF.
struct Decoded {
    char32_t character;
    std::size_t size;  // in bytes; 0: what stands there is not UTF-8
};
Decoded decodeUtf8(std::string_view text);

void appendUtf8(std::string& text, char32_t character);
