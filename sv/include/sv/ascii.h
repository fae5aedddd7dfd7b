// Kinds of characters by ASCII, whatever the locale and the code page are.

#pragma once

namespace SV {

// "0" to "9".
constexpr bool IsAsciiDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

// "A" to "Z" and "a" to "z"; umlauts and the like are none.
constexpr bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// A blank, tab, line feed, vertical tab, form feed or carriage return.
constexpr bool IsAsciiSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The small letter of "A" to "Z"; any other character as it is.
constexpr char ToAsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Either of the characters that separate the parts of a path.
constexpr bool IsPathSeparator(char c) { return c == '\\' || c == '/'; }

}  // namespace SV
