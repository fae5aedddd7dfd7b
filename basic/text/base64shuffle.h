// Base64 in blocks of 16 characters, for processors with SSSE3.

#pragma once

#include <cstddef>

namespace base64 {

// Whether this processor can do what follows.
inline bool hasShuffle() { return __builtin_cpu_supports("ssse3"); }

// Encodes the front of `bytes` in blocks of 12, writing nothing but their characters; gives how
// many bytes that were.
std::size_t encodeBlocks(const char* bytes, std::size_t size, char* text);

// Decodes the front of `text` in blocks of 16, writing nothing but their bytes, up to the block
// with a character that does not belong to the alphabet; gives how many characters that were.
std::size_t decodeBlocks(const char* text, std::size_t size, char* bytes);

}  // namespace base64
