// Escaping single characters.

#include <climits>
#include <cstring>
#include <utility>

#include "text/bytescan.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "ztools.cpp";
constexpr unsigned kNoRoom = 1358;
constexpr unsigned kLineFeedInName = 1370;

// Candidates for `findByte`: one of two.
class EitherByte {
public:
    EitherByte(char a, char b) : m_a(a), m_b(b) {}
    __m128i operator()(__m128i bytes) const {
        return _mm_or_si128(isByte(bytes, m_a), isByte(bytes, m_b));
    }
    bool operator()(char c) const { return c == m_a || c == m_b; }

private:
    char m_a;
    char m_b;
};

constexpr std::ptrdiff_t kBlock = sizeof(__m128i);

__m128i copyBlock(const char* from, char* to) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
    return bytes;
}

// Copies text with `escape` before each special character; gives the end of the copy. Nothing is
// written behind that: where a block of text is left, the copy of the rest is a block long as well.
char* mask(const char* from, const char* end, const EitherByte& special, char escape, char* to) {
    while (end - from >= kBlock) {
        const auto hits = static_cast<unsigned>(_mm_movemask_epi8(special(copyBlock(from, to))));
        const int size = hits ? std::countr_zero(hits) : kBlock;
        from += size;
        to += size;
        if (!hits) continue;
        *to++ = escape;
        *to++ = *from++;
    }
    for (; from != end; ++from) {
        if (special(*from)) *to++ = escape;
        *to++ = *from;
    }
    return to;
}

// Where reading and writing have come to.
struct Place {
    const char* from;
    char* to;
};

// Copies text without its escapes up to `stop`, or to the character behind it when that one is
// escaped. An escape at the very `end` has nothing to escape and is dropped.
Place unmask(Place at, const char* stop, const char* end, char escape) {
    const auto copyEscaped = [&] {
        if (++at.from != end) *at.to++ = *at.from++;
    };
    while (stop - at.from >= kBlock) {
        const __m128i bytes = copyBlock(at.from, at.to);
        const auto hits = static_cast<unsigned>(_mm_movemask_epi8(isByte(bytes, escape)));
        const int size = hits ? std::countr_zero(hits) : kBlock;
        at = {at.from + size, at.to + size};
        if (hits) copyEscaped();
    }
    while (at.from < stop) {
        if (*at.from == escape) {
            copyEscaped();
        } else {
            *at.to++ = *at.from++;
        }
    }
    return at;
}

// Text is changed in pieces, in a buffer that stays in the processor's cache.
constexpr std::size_t kPiece = 1024;

const char* pieceEnd(const char* from, const char* end) {
    return static_cast<std::size_t>(end - from) > kPiece ? from + kPiece : end;
}

// Behind what `masked` holds already.
void appendMasked(SV::String& masked, std::string_view text, char special, char escape) {
    const EitherByte candidates(special, escape);
    const char* const end = text.data() + text.size();
    char buffer[2 * kPiece];
    for (const char* from = text.data(); from != end;) {
        const char* const stop = pieceEnd(from, end);
        const char* const written = mask(from, stop, candidates, escape, buffer);
        masked.append(buffer, static_cast<std::size_t>(written - buffer));
        from = stop;
    }
}

std::size_t maskedSize(std::string_view text, const EitherByte& special) {
    return text.size() + countBytes(text.data(), text.data() + text.size(), special);
}

void maskForExport(const char* source, char* target, char delimiter) {
    const std::string_view text = source ? source : "";
    const EitherByte special(delimiter, '\\');
    const std::size_t size = maskedSize(text, special) + 1;
    if (size > UINT_MAX || !Zel_MemoryIsWriteable(target, static_cast<unsigned>(size))) {
        displayErrorMessage(kSource,
                            kNoRoom);  // Relied on by callers: the copy is made all the same
    }
    *mask(text.data(), text.data() + text.size(), special, '\\', target) = '\0';
}

}  // namespace

SV::String Zel_Mask(const char* text, char special, char escape) {
    const std::string_view source = text ? text : "";
    SV::String masked;
    if (source.size() > SV::String::kInlineCapacity) {
        masked.reserve(maskedSize(source, EitherByte(special, escape)));
    }
    appendMasked(masked, source, special, escape);
    return masked;
}

SV::String Zel_Unmask(const char* text, char escape) {
    const char* from = text ? text : "";
    const char* const end = from + std::strlen(from);
    SV::String unmasked;
    if (pieceEnd(from, end) != end) unmasked.reserve(static_cast<std::size_t>(end - from));
    char buffer[kPiece + 1];
    while (from != end) {
        const Place place = unmask({from, buffer}, pieceEnd(from, end), end, escape);
        unmasked.append(buffer, static_cast<std::size_t>(place.to - buffer));
        from = place.from;
    }
    return unmasked;
}

SV::String Zel_MaskCSV(const SV::String& field) {
    const std::string_view text = field;
    const EitherByte reasons('"', ';');
    if (findByte(field.begin(), field.end(), reasons) == field.end()) return field;
    SV::String masked;
    masked.reserve(maskedSize(text, EitherByte('"', '"')) + 2);
    masked += '"';
    appendMasked(masked, text, '"', '"');
    return masked += '"';
}

void Zel_Mask_Export_Name(const char* src, char* dst) {
    maskForExport(src, dst, '>');
    for (char* at = dst; (at = std::strchr(at, '\n')) != nullptr; *at++ = ' ') {
        displayErrorMessage(kSource, kLineFeedInName);
    }
}

void Zel_Mask_Export_Value(const char* src, char* dst) { maskForExport(src, dst, '"'); }

void Zel_Mask_Export_Path(const char* src, char* dst) { maskForExport(src, dst, '/'); }
