// Searching text for the few bytes that need something done to them.

#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>

// Finds bytes 16 at a time. `Candidates` has
// - `__m128i operator()(__m128i bytes) const`: 0xFF for each byte that may be one of them;
// - `bool operator()(char byte) const`: whether it is one.
template <class Candidates>
const char* findByte(const char* begin, const char* end, const Candidates& candidates) {
    constexpr std::ptrdiff_t kStep = sizeof(__m128i);
    const char* at = begin;
    for (; end - at >= kStep; at += kStep) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(candidates(bytes)));
        for (; hits != 0; hits &= hits - 1) {
            const char* const hit = at + std::countr_zero(hits);
            if (candidates(*hit)) return hit;
        }
    }
    while (at != end && !candidates(*at)) ++at;
    return at;
}

// How many bytes the candidates accept; the mask must not be 0xFF for any other.
template <class Candidates>
std::size_t countBytes(const char* begin, const char* end, const Candidates& candidates) {
    constexpr std::ptrdiff_t kStep = sizeof(__m128i);
    constexpr int kMaxRounds = 255;  // what a byte counts up to
    std::size_t count = 0;
    while (end - begin >= kStep) {
        __m128i counts = _mm_setzero_si128();
        for (int round = 0; round < kMaxRounds && end - begin >= kStep; ++round, begin += kStep) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin));
            counts = _mm_sub_epi8(counts, candidates(bytes));
        }
        const __m128i sums = _mm_sad_epu8(counts, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
                 static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
    }
    for (; begin != end; ++begin) count += candidates(*begin) ? 1 : 0;
    return count;
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
