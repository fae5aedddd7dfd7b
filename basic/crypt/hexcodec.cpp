#include "crypt/hexcodec.h"

#include <emmintrin.h>

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

__m128i all(int byte) { return _mm_set1_epi8(static_cast<char>(byte)); }

// The values of 16 digits. Bit 7 of `strange` is set where there is none.
__m128i values(__m128i characters, __m128i& strange) {
    // "0" to "9" become 0 to 9, all others 16 and above.
    const __m128i upToNine = _mm_add_epi8(characters, all(0xFF - '9'));
    const __m128i asDigit = _mm_sub_epi8(_mm_subs_epu8(upToNine, all(6)), all(0xF0));
    // "A" to "F" and "a" to "f" become 10 to 15, all others 16 and above.
    const __m128i folded = _mm_and_si128(characters, all(0xFF ^ 'a' ^ 'A'));
    const __m128i asLetter = _mm_adds_epu8(_mm_sub_epi8(folded, all('A')), all(10));
    const __m128i value = _mm_min_epu8(asDigit, asLetter);
    strange = _mm_or_si128(strange, _mm_adds_epu8(value, all(0x7F - 15)));
    return value;
}

// The bytes of 16 values, each in a 16-bit lane: the first value goes above the second.
__m128i joined(__m128i halves) {
    return _mm_srli_epi16(_mm_add_epi16(halves, _mm_slli_epi16(halves, 12)), 8);
}

void decodeStep(const char* text, unsigned char* data, __m128i& strange) {
    const __m128i first = joined(values(load(text), strange));
    const __m128i second = joined(values(load(text + kStep), strange));
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
    __m128i strange = _mm_setzero_si128();
    for (; size - at >= kStep; at += kStep) decodeStep(text + 2 * at, data + at, strange);
    if (_mm_movemask_epi8(strange) != 0) return false;
    for (; at < size; ++at) {
        const int high = digitValue(text[2 * at]);
        const int low = digitValue(text[2 * at + 1]);
        if (high < 0 || low < 0) return false;
        data[at] = static_cast<unsigned char>(high << 4 | low);
    }
    return true;
}
