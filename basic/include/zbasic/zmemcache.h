// Reuse of released heap blocks.

#pragma once

#include <cstddef>

#include "zbasic/zexport.h"

// Keeps up to ten released blocks and hands them out again, so that a caller that needs buffers
// of similar sizes over and over seldom reaches the heap.
//
// Ownership: a block belongs to the caller from `Alloc` to `Free`, and to the cache afterwards.
// Sizes are in bytes.
// Threads: one cache must not be used by two threads at a time.
class ZBASIC_API ZelMemCache {
public:
    // The cache of the process: made on first use (by any thread), released at exit.
    static ZelMemCache& General();

    ZelMemCache() noexcept;
    ZelMemCache(const ZelMemCache&) noexcept;  // a copy starts empty: blocks are never shared
    ZelMemCache& operator=(const ZelMemCache&) noexcept;  // keeps its own blocks
    ~ZelMemCache();                                       // leaves alone what callers still hold

    // At least `size` bytes, aligned to 8; null when the heap has no room, and for a size that no
    // block can have. Not cleared.
    // Relied on by callers: the largest cached block goes out, not the best fit.
    void* Alloc(std::size_t size) noexcept;

    // Takes back what `Alloc` of any cache gave; never null. Into a full cache nothing is put: the
    // block goes straight to the heap.
    void Free(void* data) noexcept;

private:
    struct Block;
    enum : std::size_t { kMostBlocks = 10 };

    Block* m_blocks[kMostBlocks];  // ascending by capacity
    std::size_t m_count = 0;
};
