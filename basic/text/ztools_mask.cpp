// Escaping single characters.

#include <algorithm>
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

bool hasOneOf(std::string_view text, const EitherByte& candidates) {
    const char* const end = text.data() + text.size();
    return findByte(text.data(), end, candidates) != end;
}

// Where reading and writing have come to.
struct Place {
    const char* from;
    char* to;

    // Copies blocks of 16 bytes, and bytes up to the next candidate; false when less than a block
    // is left. Nothing is written that the copy of the rest of the text does not reach.
    template <typename Candidates>
    bool copyToCandidate(const char* end, const Candidates& candidates) {
        while (end - from >= kScanStep) {
            const unsigned hits = candidateBits(from, end, candidates);
            std::memcpy(to, from, kScanStep);
            const std::ptrdiff_t size = hits ? std::countr_zero(hits) : kScanStep;
            from += size;
            to += size;
            if (hits) return true;
        }
        return false;
    }
};

// Copies text with `escape` before each special character; gives the end of the copy.
char* mask(std::string_view text, const EitherByte& special, char escape, char* to) {
    Place at = {text.data(), to};
    const char* const end = text.data() + text.size();
    while (at.copyToCandidate(end, special)) {
        *at.to++ = escape;
        *at.to++ = *at.from++;
    }
    while (at.from != end) {  // without a branch, which would be guessed wrong
        *at.to = escape;
        at.to += special(*at.from) ? 1 : 0;
        *at.to++ = *at.from++;
    }
    return at.to;
}

// Copies text without its escapes; gives the end of the copy. `wasEscape` says whether the last
// byte was one that escapes the next, before and afterwards.
char* unmask(std::string_view text, char escape, bool& wasEscape, char* to) {
    Place at = {text.data(), to};
    const char* const end = text.data() + text.size();
    const auto copyByte = [&] {
        wasEscape = *at.from == escape && !wasEscape;
        *at.to = *at.from++;
        at.to += wasEscape ? 0 : 1;
    };
    if (wasEscape) copyByte();
    while (at.copyToCandidate(end, EitherByte(escape, escape))) {
        copyByte();
        if (at.from != end) copyByte();
    }
    while (at.from != end) {
        if (*at.from != escape) {
            *at.to++ = *at.from++;
            continue;
        }
        copyByte();
        if (at.from != end) copyByte();
    }
    return at.to;
}

std::size_t maskedSize(std::string_view text, const EitherByte& special) {
    return text.size() + countBytes(text.data(), text.data() + text.size(), special);
}

// Text is changed in pieces, in a buffer that stays in the processor's cache.
constexpr std::size_t kPiece = 1024;

SV::String textOf(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// `quote` stands around it.
SV::String maskedText(std::string_view text, char special, char escape, std::string_view quote) {
    const EitherByte candidates(special, escape);
    char buffer[2 * kPiece + 2];
    if (text.size() <= kPiece) {
        char* const begin = std::ranges::copy(quote, buffer).out;
        return textOf(buffer, std::ranges::copy(quote, mask(text, candidates, escape, begin)).out);
    }
    SV::String masked(quote);
    masked.reserve(maskedSize(text, candidates) + 2 * quote.size());
    for (; !text.empty(); text.remove_prefix(std::min(kPiece, text.size()))) {
        const char* const end = mask(text.substr(0, kPiece), candidates, escape, buffer);
        masked.append(buffer, static_cast<std::size_t>(end - buffer));
    }
    return masked.append(quote);
}

void maskForExport(const char* source, char* target, char delimiter) {
    const std::string_view text = source ? source : "";
    const EitherByte special(delimiter, '\\');
    const std::size_t size = maskedSize(text, special) + 1;
    if (size > UINT_MAX || !Zel_MemoryIsWriteable(target, static_cast<unsigned>(size))) {
        displayErrorMessage(kSource, kNoRoom);
        // Relied on by callers: the copy is made all the same.
    }
    *mask(text, special, '\\', target) = '\0';
}

}  // namespace

SV::String Zel_Mask(const char* text, char special, char escape) {
    const std::string_view source = text ? text : "";
    if (!hasOneOf(source, EitherByte(special, escape))) return SV::String(source);
    return maskedText(source, special, escape, "");
}

SV::String Zel_Unmask(const char* text, char escape) {
    std::string_view source = text ? text : "";
    if (!hasOneOf(source, EitherByte(escape, escape))) return SV::String(source);
    char buffer[kPiece];
    bool wasEscape = false;
    if (source.size() <= kPiece) return textOf(buffer, unmask(source, escape, wasEscape, buffer));
    SV::String unmasked;
    unmasked.reserve(source.size());
    for (; !source.empty(); source.remove_prefix(std::min(kPiece, source.size()))) {
        const char* const end = unmask(source.substr(0, kPiece), escape, wasEscape, buffer);
        unmasked.append(buffer, static_cast<std::size_t>(end - buffer));
    }
    return unmasked;
}

SV::String Zel_MaskCSV(const SV::String& field) {
    if (!hasOneOf(field, EitherByte('"', ';'))) return field;
    return maskedText(field, '"', '"', "\"");
}

void Zel_Mask_Export_Name(const char* src, char* dst) {
    maskForExport(src, dst, '>');
    for (char* at = dst; (at = std::strchr(at, '\n')) != nullptr; *at++ = ' ') {
        displayErrorMessage(kSource, kLineFeedInName);
    }
}

void Zel_Mask_Export_Value(const char* src, char* dst) { maskForExport(src, dst, '"'); }

void Zel_Mask_Export_Path(const char* src, char* dst) { maskForExport(src, dst, '/'); }
