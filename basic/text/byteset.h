// A set of bytes.

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

class ByteSet {
public:
    static constexpr ByteSet all() {
        ByteSet set;
        set.invert();
        return set;
    }

    constexpr bool contains(unsigned char byte) const {
        return m_words[byte / 64] >> byte % 64 & 1;
    }
    constexpr void add(unsigned char byte) { m_words[byte / 64] |= std::uint64_t{1} << byte % 64; }
    constexpr void remove(unsigned char byte) {
        m_words[byte / 64] &= ~(std::uint64_t{1} << byte % 64);
    }
    constexpr void add(const ByteSet& other) {
        for (std::size_t i = 0; i < m_words.size(); ++i) m_words[i] |= other.m_words[i];
    }
    constexpr void invert() {
        for (std::uint64_t& word : m_words) word = ~word;
    }
    constexpr bool intersects(const ByteSet& other) const {
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            if (m_words[i] & other.m_words[i]) return true;
        }
        return false;
    }
    constexpr int size() const {
        int count = 0;
        for (const std::uint64_t word : m_words) count += std::popcount(word);
        return count;
    }
    constexpr auto operator<=>(const ByteSet&) const = default;

    // Calls `visit` with each byte of the set, in ascending order.
    template <class Visit>
    constexpr void forEach(Visit visit) const {
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            for (std::uint64_t rest = m_words[i]; rest != 0; rest &= rest - 1) {
                visit(static_cast<unsigned char>(i * 64 +
                                                 static_cast<std::size_t>(std::countr_zero(rest))));
            }
        }
    }

private:
    std::array<std::uint64_t, 4> m_words{};
};
