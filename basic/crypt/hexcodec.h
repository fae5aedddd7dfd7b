// Bytes as hexadecimal digits.

#pragma once

#include <cstddef>

// Writes two upper-case digits a byte.
void hexEncode(const unsigned char* data, std::size_t size, char* text);

// Reads `size` bytes from twice as many digits of either case. False when one of the characters
// is none; what is in `data` then means nothing.
bool hexDecode(const char* text, std::size_t size, unsigned char* data);
