// Searching text for the few bytes that need something done to them.

#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

constexpr std::ptrdiff_t kScanStep = sizeof(__m128i);

// 16 bytes in memory's order.
struct ShortBytes {
    std::uint64_t front = 0;
    std::uint64_t back = 0;
};

// Up to 16 bytes and zeros behind them, nothing but them being read.
inline ShortBytes readShort(const char* bytes, std::size_t size) {
    ShortBytes read;
    if (size >= 8) {
        std::memcpy(&read.front, bytes, 8);
        std::memcpy(&read.back, bytes + size - 8, 8);
        read.back = size == 8 ? 0 : read.back >> (8 * (16 - size));
    } else if (size >= 4) {
        std::uint32_t half;
        std::memcpy(&half, bytes, 4);
        read.front = half;
        std::memcpy(&half, bytes + size - 4, 4);
        read.front |= std::uint64_t{half} << (8 * (size - 4));  // what overlaps is the same
    } else {
        for (std::size_t i = 0; i < size; ++i) {
            read.front |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
        }
    }
    return read;
}

inline __m128i inOneRegister(const ShortBytes& bytes) {
    return _mm_set_epi64x(static_cast<std::int64_t>(bytes.back),
                          static_cast<std::int64_t>(bytes.front));
}

inline __m128i loadShort(const char* bytes, std::size_t size) {
    return inOneRegister(readShort(bytes, size));
}

// Where in the next up to 16 bytes candidates are: bit 0 for the first byte.
template <class Candidates>
unsigned candidateBits(const char* at, const char* end, const Candidates& candidates) {
    if (end - at >= kScanStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        return static_cast<unsigned>(_mm_movemask_epi8(candidates(bytes)));
    }
    const auto size = static_cast<std::size_t>(end - at);
    const auto hits = static_cast<unsigned>(_mm_movemask_epi8(candidates(loadShort(at, size))));
    return hits & ((1U << size) - 1);
}

// Behind those blocks in front in which no candidate is.
template <class Candidates>
const char* skipBlocks(const char* at, const char* end, const Candidates& candidates) {
    constexpr std::ptrdiff_t kRound = 4 * kScanStep;  // for one branch
    for (; end - at >= kRound; at += kRound) {
        const auto* const block = reinterpret_cast<const __m128i*>(at);
        const __m128i front = _mm_or_si128(candidates(_mm_loadu_si128(block)),
                                           candidates(_mm_loadu_si128(block + 1)));
        const __m128i back = _mm_or_si128(candidates(_mm_loadu_si128(block + 2)),
                                          candidates(_mm_loadu_si128(block + 3)));
        if (_mm_movemask_epi8(_mm_or_si128(front, back)) != 0) break;
    }
    return at;
}

// Finds bytes 16 at a time. `Candidates` has
// - `__m128i operator()(__m128i bytes) const`: 0xFF for each byte that may be one of them;
// - `bool operator()(char byte) const`: whether it is one.
template <class Candidates>
const char* findByte(const char* begin, const char* end, const Candidates& candidates) {
    const char* at = begin;
    for (;;) {
        unsigned hits = candidateBits(at, end, candidates);
        for (; hits != 0; hits &= hits - 1) {
            const char* const hit = at + std::countr_zero(hits);
            if (candidates(*hit)) return hit;
        }
        if (end - at < kScanStep) return end;
        at = skipBlocks(at + kScanStep, end, candidates);
    }
}

// Visits each byte that the candidates' mask, which must be exact, accepts.
template <class Candidates, class Visit>
void forEachByte(const char* begin, const char* end, const Candidates& candidates, Visit visit) {
    for (const char* at = begin;; at += kScanStep) {
        for (unsigned hits = candidateBits(at, end, candidates); hits != 0; hits &= hits - 1) {
            visit(at + std::countr_zero(hits));
        }
        if (end - at < kScanStep) return;
    }
}

// How many bytes the candidates' mask, which must be exact, accepts.
template <class Candidates>
std::size_t countBytes(const char* begin, const char* end, const Candidates& candidates) {
    constexpr int kMaxRounds = 255;  // what a byte counts up to
    std::size_t count = 0;
    while (end - begin >= kScanStep) {
        __m128i counts = _mm_setzero_si128();
        for (int round = 0; round < kMaxRounds && end - begin >= kScanStep;
             ++round, begin += kScanStep) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin));
            counts = _mm_sub_epi8(counts, candidates(bytes));
        }
        const __m128i sums = _mm_sad_epu8(counts, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
                 static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
    }
    return count + static_cast<std::size_t>(std::popcount(candidateBits(begin, end, candidates)));
}

// Masks for `Candidates`. Two letters that differ in one bit cost one comparison.
inline __m128i isByte(__m128i bytes, char byte) {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte));
}

inline __m128i isMarkup(__m128i bytes) {  // < > & "
    const __m128i angle = isByte(_mm_or_si128(bytes, _mm_set1_epi8('<' ^ '>')), '<' | '>');
    const __m128i other = isByte(_mm_or_si128(bytes, _mm_set1_epi8('&' ^ '"')), '&' | '"');
    return _mm_or_si128(angle, other);
}

inline __m128i isInRange(__m128i bytes, unsigned char first, unsigned char last) {
    const __m128i distance = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(first)));
    const __m128i size = _mm_set1_epi8(static_cast<char>(last - first));
    return _mm_cmpeq_epi8(_mm_min_epu8(distance, size), distance);
}
