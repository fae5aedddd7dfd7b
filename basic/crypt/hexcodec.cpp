#include "crypt/hexcodec.h"

#include <emmintrin.h>

#include "text/bytescan.h"

namespace {

constexpr std::size_t kStep = sizeof(__m128i);

__m128i load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
void store(void* to, __m128i bytes) { _mm_storeu_si128(static_cast<__m128i*>(to), bytes); }

// The digits of 16 values from 0 to 15.
__m128i digits(__m128i halves) {
    const __m128i isLetter = _mm_cmpgt_epi8(halves, _mm_set1_epi8(9));
    const __m128i letterGap = _mm_and_si128(isLetter, _mm_set1_epi8('A' - '9' - 1));
    return _mm_add_epi8(_mm_add_epi8(halves, _mm_set1_epi8('0')), letterGap);
}

void encodeStep(const unsigned char* data, char* text) {
    const __m128i bytes = load(data);
    const __m128i lowHalf = _mm_set1_epi8(0x0F);
    const __m128i high = digits(_mm_and_si128(_mm_srli_epi16(bytes, 4), lowHalf));
    const __m128i low = digits(_mm_and_si128(bytes, lowHalf));
    store(text, _mm_unpacklo_epi8(high, low));
    store(text + kStep, _mm_unpackhi_epi8(high, low));
}

// The values of 16 digits; `valid` loses the bits of what is none.
__m128i values(__m128i characters, __m128i& valid) {
    const __m128i isDigit = isInRange(characters, '0', '9');
    const __m128i folded = _mm_or_si128(characters, _mm_set1_epi8('a' ^ 'A'));
    const __m128i isLetter = isInRange(folded, 'a', 'f');
    valid = _mm_and_si128(valid, _mm_or_si128(isDigit, isLetter));
    const __m128i nine = _mm_and_si128(isLetter, _mm_set1_epi8(9));  // 'a' ends in 1
    return _mm_add_epi8(_mm_and_si128(characters, _mm_set1_epi8(0x0F)), nine);
}

// The bytes of 16 values, each in the lower half of a 16-bit lane.
__m128i joined(__m128i halves) {
    const __m128i both = _mm_or_si128(_mm_slli_epi16(halves, 4), _mm_srli_epi16(halves, 8));
    return _mm_and_si128(both, _mm_set1_epi16(0xFF));
}

void decodeStep(const char* text, unsigned char* data, __m128i& valid) {
    const __m128i first = joined(values(load(text), valid));
    const __m128i second = joined(values(load(text + kStep), valid));
    store(data, _mm_packus_epi16(first, second));
}

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

void hexEncode(const unsigned char* data, std::size_t size, char* text) {
    std::size_t at = 0;
    for (; size - at >= kStep; at += kStep) encodeStep(data + at, text + 2 * at);
    for (; at < size; ++at) {
        text[2 * at] = "0123456789ABCDEF"[data[at] >> 4];
        text[2 * at + 1] = "0123456789ABCDEF"[data[at] & 15];
    }
}

bool hexDecode(const char* text, std::size_t size, unsigned char* data) {
    std::size_t at = 0;
    __m128i valid = _mm_set1_epi8(-1);
    for (; size - at >= kStep; at += kStep) decodeStep(text + 2 * at, data + at, valid);
    if (_mm_movemask_epi8(valid) != 0xFFFF) return false;
    for (; at < size; ++at) {
        const int high = digitValue(text[2 * at]);
        const int low = digitValue(text[2 * at + 1]);
        if (high < 0 || low < 0) return false;
        data[at] = static_cast<unsigned char>(high << 4 | low);
    }
    return true;
}
