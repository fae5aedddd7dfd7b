// Base64 in lines of 64 characters, as libcrypto's base64 filter writes and reads it.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

// The length of the text of `size` bytes with all its line feeds.
std::size_t base64LinesSize(std::size_t size);

// Writes that many characters.
void base64LinesEncode(const unsigned char* data, std::size_t size, char* text);

// The number of bytes written to `data`, which has room for as many bytes as the text has
// characters, at most 2,147,483,647. Nothing when the filter failed.
std::optional<std::size_t> base64LinesDecode(std::string_view text, unsigned char* data);
