// AES by libcrypto.

#pragma once

#include <cstddef>

enum class AesMode { kCbc, kBlocks };
enum class Direction { kEncrypt, kDecrypt };

constexpr std::size_t kAesBlock = 16;

struct AesKey {
    const unsigned char* bytes;
    std::size_t size;         // of 16, 24 or 32 bytes
    const unsigned char* iv;  // 16 bytes; null for `kBlocks`
};

bool isAesKeySize(std::size_t size);

// `out` has room for `size` rounded up to whole blocks. A part of a block at the end is filled
// up with NUL bytes before; deciphered, it is cut to its length and filled up with NUL bytes again.
// False, with nothing in `out`, when libcrypto has no memory.
bool aesTransform(AesMode mode, Direction direction, const AesKey& key, const unsigned char* in,
                  std::size_t size, unsigned char* out);
