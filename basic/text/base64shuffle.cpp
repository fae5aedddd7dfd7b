// After W. Muła and D. Lemire, "Faster Base64 Encoding and Decoding Using AVX2 Instructions"
// (2018): a shuffle of bytes as a table of 16 entries, multiplications as shifts by another amount
// a lane.

#include "text/base64shuffle.h"

#include <tmmintrin.h>

#include <cstring>

#define BASE64_SSSE3 __attribute__((target("ssse3")))

namespace base64 {

namespace {

constexpr std::size_t kBytes = 12;
constexpr std::size_t kCharacters = 16;

__m128i load(const char* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }

void store(char* at, __m128i value) { _mm_storeu_si128(reinterpret_cast<__m128i*>(at), value); }

// Each three bytes b0 b1 b2 as b1 b0 b2 b1, so that every value of six bits lies in one 16-bit
// lane. `skipped` bytes stand before the first of them.
BASE64_SSSE3 __m128i spread(__m128i bytes, char skipped) {
    const __m128i order = _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
    return _mm_shuffle_epi8(bytes, _mm_add_epi8(order, _mm_set1_epi8(skipped)));
}

// The values of six bits, one a byte.
BASE64_SSSE3 __m128i valuesOf(__m128i spreadBytes) {
    const __m128i even = _mm_and_si128(spreadBytes, _mm_set1_epi32(0x0FC0FC00));
    const __m128i odd = _mm_and_si128(spreadBytes, _mm_set1_epi32(0x003F03F0));
    return _mm_or_si128(_mm_mulhi_epu16(even, _mm_set1_epi32(0x04000040)),
                        _mm_mullo_epi16(odd, _mm_set1_epi32(0x01000010)));
}

BASE64_SSSE3 __m128i charactersOf(__m128i values) {
    // By kind: 0 small letters, 1 to 10 digits, 11 "+", 12 "/", 13 capital letters.
    const __m128i distance =
        _mm_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                      '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0);
    const __m128i capital = _mm_cmpgt_epi8(_mm_set1_epi8(26), values);
    const __m128i kind = _mm_or_si128(_mm_subs_epu8(values, _mm_set1_epi8(51)),
                                      _mm_and_si128(capital, _mm_set1_epi8(13)));
    return _mm_add_epi8(values, _mm_shuffle_epi8(distance, kind));
}

// Whether all 16 are characters of the alphabet: the two halves of a byte each name the rows of the
// character set in which it is none.
BASE64_SSSE3 __m128i strangersOf(__m128i text, __m128i highHalves) {
    const __m128i byLow = _mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                        0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A);
    const __m128i byHigh = _mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10,
                                         0x10, 0x10, 0x10, 0x10, 0x10, 0x10);
    const __m128i lowHalves = _mm_and_si128(text, _mm_set1_epi8(0x0F));
    return _mm_and_si128(_mm_shuffle_epi8(byLow, lowHalves), _mm_shuffle_epi8(byHigh, highHalves));
}

BASE64_SSSE3 __m128i valuesOfCharacters(__m128i text, __m128i highHalves) {
    // By high half; "/" shares the one of "+" and takes the entry before it.
    const __m128i distance = _mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', -'A', -'A', 26 - 'a',
                                           26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i slash = _mm_cmpeq_epi8(text, _mm_set1_epi8('/'));
    return _mm_add_epi8(text, _mm_shuffle_epi8(distance, _mm_add_epi8(slash, highHalves)));
}

// Twelve bytes in front, out of values of six bits, one a byte.
BASE64_SSSE3 __m128i bytesOf(__m128i values) {
    const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
    const __m128i groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
    return _mm_shuffle_epi8(groups,
                            _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

}  // namespace

BASE64_SSSE3 std::size_t encodeBlocks(const char* bytes, std::size_t size, char* text) {
    std::size_t done = 0;
    for (; size - done >= kCharacters; done += kBytes, text += kCharacters) {
        store(text, charactersOf(valuesOf(spread(load(bytes + done), 0))));
    }
    // The last block reaches backwards for what a load takes in excess.
    constexpr std::size_t kExcess = kCharacters - kBytes;
    if (done > 0 && size - done >= kBytes) {
        store(text, charactersOf(valuesOf(spread(load(bytes + done - kExcess), kExcess))));
        done += kBytes;
    }
    return done;
}

BASE64_SSSE3 std::size_t decodeBlocks(const char* text, std::size_t size, char* bytes) {
    std::size_t done = 0;
    for (; size - done >= kCharacters; done += kCharacters, bytes += kBytes) {
        const __m128i block = load(text + done);
        const __m128i highHalves = _mm_and_si128(_mm_srli_epi32(block, 4), _mm_set1_epi8(0x0F));
        const __m128i fine = _mm_cmpeq_epi8(strangersOf(block, highHalves), _mm_setzero_si128());
        if (_mm_movemask_epi8(fine) != 0xFFFF) break;
        const __m128i decoded = bytesOf(valuesOfCharacters(block, highHalves));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(bytes), decoded);
        const int rest = _mm_cvtsi128_si32(_mm_srli_si128(decoded, 8));
        std::memcpy(bytes + 8, &rest, sizeof rest);
    }
    return done;
}

}  // namespace base64
