// The texts of one language by resource id.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sv/string.h"

// One value for each 16-bit key, `T()` at first. Keys come in clusters, so there
// is memory for the pages of 64 keys that were written to. They lie in one block,
// the first of them standing for all that were not: reading needs no test, and
// seldom more than one line of memory that is not in the cache yet.
template <class T>
class PagedArray {
public:
    static constexpr std::size_t kPageSize = 64;

    PagedArray() : m_values(kPageSize) {}

    const T& operator[](std::uint16_t key) const {
        return m_values[m_pageOf[key / kPageSize] * kPageSize + key % kPageSize];
    }
    T& writable(std::uint16_t key) {
        std::uint16_t& page = m_pageOf[key / kPageSize];
        if (page == 0) {
            const std::size_t size = m_values.size();
            m_values.resize(size + kPageSize);  // before anybody knows the page: it may throw
            page = static_cast<std::uint16_t>(size / kPageSize);
        }
        return m_values[page * kPageSize + key % kPageSize];
    }
    // Room for so many values, so that writing them moves nothing.
    void reserve(std::size_t values) { m_values.reserve(m_values.size() + values); }

private:
    std::array<std::uint16_t, 65536 / kPageSize> m_pageOf = {};
    std::vector<T> m_values;
};

// Short texts lie in the table itself, long ones in blocks that the copies share
// which callers get.
// Threads: any number may read; adding must happen while nobody reads.
class MlStringTable {
public:
    // Takes the texts of a file, from whose bytes the key is taken off on the way. An
    // id that is there already keeps its text. False, and nothing taken, when the
    // header is not the one of such a file.
    bool add(char* bytes, std::size_t size);

    // The text; empty when there is none, for no file has an empty text.
    const SV::String& operator[](std::uint16_t id) const { return m_texts[id]; }

    std::size_t count() const { return m_count; }

private:
    PagedArray<SV::String> m_texts;
    std::size_t m_count = 0;
};
