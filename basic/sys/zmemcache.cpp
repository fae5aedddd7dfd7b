#include "zbasic/zmemcache.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

struct ZelMemCache::Block {
    std::uint64_t capacity;  // of the data behind this header, as first asked for

    void* data() { return this + 1; }
    static Block* of(void* data) { return static_cast<Block*>(data) - 1; }
};

ZelMemCache& ZelMemCache::General() {
    static ZelMemCache cache;
    return cache;
}

ZelMemCache::ZelMemCache() noexcept = default;
ZelMemCache::ZelMemCache(const ZelMemCache&) noexcept {}
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is taken from any other one
ZelMemCache& ZelMemCache::operator=(const ZelMemCache&) noexcept { return *this; }

ZelMemCache::~ZelMemCache() {
    std::for_each(m_blocks, m_blocks + m_count, [](Block* block) { std::free(block); });
}

void* ZelMemCache::Alloc(std::size_t size) noexcept {
    // Relied on by callers: the largest block goes out, also for a much smaller size.
    if (m_count > 0 && m_blocks[m_count - 1]->capacity >= size) return m_blocks[--m_count]->data();
    if (size > std::numeric_limits<std::size_t>::max() - sizeof(Block)) return nullptr;
    auto* const block = static_cast<Block*>(std::malloc(sizeof(Block) + size));
    if (!block) return nullptr;
    block->capacity = size;
    return block->data();
}

void ZelMemCache::Free(void* data) noexcept {
    Block* const block = Block::of(data);
    if (m_count == kMostBlocks) {
        std::free(block);
        return;
    }
    // In front of those of its own capacity; mostly it is the largest, and few have to move.
    std::size_t place = m_count++;
    for (; place > 0 && m_blocks[place - 1]->capacity >= block->capacity; --place) {
        m_blocks[place] = m_blocks[place - 1];
    }
    m_blocks[place] = block;
}
