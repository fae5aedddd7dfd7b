// Decimal digits at fixed places.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "sv/ascii.h"

// The number of `count` digits at `text`, -1 when one of them is none. Nothing is read
// behind the first character that is none, such as a closing NUL.
constexpr int readDigits(const char* text, std::size_t count) {
    int number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!SV::IsAsciiDigit(text[i])) return -1;
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

// Two digits; `number` is 0 to 99.
constexpr char* writeTwoDigits(char* out, int number) {
    *out++ = static_cast<char>('0' + number / 10);
    *out++ = static_cast<char>('0' + number % 10);
    return out;
}

// Writes as `printf` does with "%0<width>d" and returns the place behind: at most 11
// characters, unless the width is larger.
inline char* writePadded(char* out, std::int32_t number, std::ptrdiff_t width) {
    if (width == 2 && number >= 0 && number < 100) return writeTwoDigits(out, number);
    if (width <= 4 && number >= 1000 && number < 10000) {
        return writeTwoDigits(writeTwoDigits(out, number / 100), number % 100);
    }
    auto magnitude = static_cast<std::uint32_t>(number);
    if (number < 0) {
        magnitude = 0 - magnitude;
        *out++ = '-';
        --width;
    }
    char digits[10];
    char* const last = digits + sizeof digits;
    char* first = last;
    do *--first = static_cast<char>('0' + magnitude % 10);
    while ((magnitude /= 10) != 0);
    if (width > last - first) out = std::fill_n(out, width - (last - first), '0');
    return std::copy(first, last, out);
}
