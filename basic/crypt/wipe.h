// Forgetting what must not stay readable in memory.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "sv/string.h"

inline void wipe(void* data, std::size_t size) {
    if (size == 0) return;
    std::memset(data, 0, size);
    // Seems to read the bytes, for all that the compiler knows: it must not drop the line above.
    __asm__ __volatile__("" : : "r"(data) : "memory");
}

// Also the memory that a text alone holds; other copies of the text keep theirs.
inline void wipe(SV::String& text) {
    constexpr std::size_t kStep = 64;
    constexpr char kZeros[kStep] = {};
    const std::size_t size = text.size();
    text.assign(kZeros, 0);  // leaves a block that copies share, and stays in any other memory
    while (text.size() < size && text.capacity() >= size) {
        text.append(kZeros, std::min(kStep, size - text.size()));
    }
    text.clear();
}

// A value that is wiped when it goes out of scope.
template <class T>
struct Wiped {
    T value{};

    Wiped() = default;
    Wiped(const Wiped&) = delete;
    Wiped& operator=(const Wiped&) = delete;
    ~Wiped() { wipe(&value, sizeof value); }
};

// Wipes memory of somebody else's when it goes out of scope: to be declared behind its owner.
struct WipeAtEnd {
    void* data;
    std::size_t size;

    ~WipeAtEnd() { wipe(data, size); }
};
