// The keys that are built into the library.

#pragma once

#include <cstddef>

#include "crypt/wipe.h"

// What a build generates from its seed (cmake/keytables.cmake). Of the first two only the
// even-numbered bytes become part of the key.
constexpr std::size_t kKeyTableSize = 64;
extern const unsigned char kAesKeyTable[kKeyTableSize];
extern const unsigned char kAesIvTable[kKeyTableSize];
extern const unsigned char kDesKey[8];

constexpr std::size_t kBuiltInKeySize = 32;

// Put together anew for each use and wiped behind it: it is never whole in memory otherwise.
struct BuiltInKey {
    unsigned char key[kBuiltInKeySize];
    unsigned char iv[kBuiltInKeySize];  // the first 16 are used

    BuiltInKey() {
        for (std::size_t i = 0; i < kBuiltInKeySize; ++i) {
            key[i] = kAesKeyTable[2 * i];
            iv[i] = kAesIvTable[2 * i];
        }
        key[1] = static_cast<unsigned char>(kAesKeyTable[2] + 1);
        iv[4] = static_cast<unsigned char>(kAesIvTable[8] - 2);
    }
    BuiltInKey(const BuiltInKey&) = delete;
    BuiltInKey& operator=(const BuiltInKey&) = delete;
    ~BuiltInKey() { wipe(this, sizeof *this); }
};
