// The characters of base64 (RFC 4648 section 4) without padding and line ends: what its forms
// share.

#pragma once

#include <cstddef>
#include <cstdint>

namespace base64 {

// Characters that `size` bytes become.
constexpr std::uint64_t encodedSize(std::uint64_t size) {
    return size / 3 * 4 + (size % 3 != 0 ? size % 3 + 1 : 0);
}

// Bytes that `size` characters become; a single one behind the groups of four counts for none.
constexpr std::uint64_t decodedSize(std::uint64_t size) {
    return size / 4 * 3 + (size % 4 != 0 ? size % 4 - 1 : 0);
}

// Writes `encodedSize(size)` characters and nothing behind them; gives the end of them.
char* encode(const char* bytes, std::size_t size, char* text);

// Writes at most `decodedSize(size)` bytes; null when a character does not belong to the
// alphabet, with the groups before it written. A single character behind the groups of four is not
// looked at.
char* decode(const char* text, std::size_t size, char* bytes);

// The same on any x86-64; those above take what the processor has.
char* encodePlain(const char* bytes, std::size_t size, char* text);
char* decodePlain(const char* text, std::size_t size, char* bytes);

}  // namespace base64
