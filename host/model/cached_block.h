// Buffers out of the cache of heap blocks.

#pragma once

#include <cstddef>
#include <new>

#include "zbasic/zmemcache.h"

namespace zelhost {

// One import after the other gets the same memory, without new pages of the system. Main thread.
class CachedBlock {
public:
    explicit CachedBlock(std::size_t size)  // in bytes; not cleared
        : m_data(static_cast<char*>(ZelMemCache::General().Alloc(size))) {
        if (!m_data) throw std::bad_alloc();
    }
    CachedBlock(const CachedBlock&) = delete;
    CachedBlock& operator=(const CachedBlock&) = delete;
    ~CachedBlock() { ZelMemCache::General().Free(m_data); }

    char* data() { return m_data; }
    char operator[](std::size_t index) const { return m_data[index]; }

private:
    char* const m_data;
};

}  // namespace zelhost
