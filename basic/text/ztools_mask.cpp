// Escaping single characters.

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

#include "text/bytescan.h"
#include "text/shorttext.h"
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

void copyBlock(char* to, const char* from) { std::memcpy(to, from, kScanStep); }

// Visits text in blocks of 16 bytes with the bits that say where in them candidates are, as long as
// 16 bytes more can be read behind each of these; gives the rest.
template <class Candidates, class Visit>
std::string_view forEachBlock(std::string_view text, const Candidates& candidates, Visit visit) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; end - at >= kScanStep; at += kScanStep) {
        const unsigned hits = candidateBits(at, end, candidates);
        if (hits != 0 && end - at < 2 * kScanStep) break;
        visit(at, hits);
    }
    return {at, end};
}

// What is written below in blocks of 16 bytes reaches beyond the end.
constexpr std::size_t kExcess = kScanStep;

// Copies text with `escape` before each special character; gives the end of the copy.
char* mask(std::string_view text, const EitherByte& special, char escape, char* to) {
    const auto maskBlock = [&](const char* block, unsigned hits) {
        char* out = to;
        std::size_t done = 0;
        for (; hits != 0; hits &= hits - 1) {
            const auto hit = static_cast<std::size_t>(std::countr_zero(hits));
            copyBlock(out, block + done);
            out += hit - done;
            *out++ = escape;
            done = hit;
        }
        copyBlock(out, block + done);
        to = out + (kScanStep - done);
    };
    const std::string_view rest = forEachBlock(text, special, maskBlock);
    char* out = to;
    for (const char c : rest) {
        *out = escape;  // without a branch, which would be guessed wrong
        out += special(c) ? 1 : 0;
        *out++ = c;
    }
    return out;
}

// Copies text without its escapes; gives the end of the copy. `wasEscape` says whether the last
// byte was one that escapes the next, before and afterwards.
char* unmask(std::string_view text, char escape, bool& wasEscape, char* to) {
    const auto unmaskBlock = [&](const char* block, unsigned hits) {
        if (wasEscape) hits &= ~1U;
        wasEscape = false;
        char* out = to;
        std::size_t done = 0;
        for (; hits != 0; hits &= hits - 1) {
            const auto hit = static_cast<std::size_t>(std::countr_zero(hits));
            copyBlock(out, block + done);
            out += hit - done;
            done = hit + 1;
            hits &= ~(2U << hit);  // what is escaped is no escape
            wasEscape = done == kScanStep;
        }
        copyBlock(out, block + done);
        to = out + (kScanStep - done);
    };
    const std::string_view rest = forEachBlock(text, EitherByte(escape, escape), unmaskBlock);
    char* out = to;
    bool isEscape = wasEscape;
    for (const char c : rest) {
        isEscape = c == escape && !isEscape;
        *out = c;
        out += isEscape ? 0 : 1;
    }
    wasEscape = isEscape;
    return out;
}

std::size_t maskedSize(std::string_view text, const EitherByte& special) {
    return text.size() + countBytes(text.data(), text.data() + text.size(), special);
}

// Whether `escape` stands before each of the special characters that `hits` tells of: not so when
// the text has become too long for it.
// Not inlined, as most texts need none of it.
[[gnu::noinline]] bool mask(ShortText& text, unsigned hits, char escape) {
    for (std::size_t inserted = 0; hits != 0; hits &= hits - 1, ++inserted) {
        if (text.room() == 0) return false;
        text.insert(static_cast<std::size_t>(std::countr_zero(hits)) + inserted, escape);
    }
    return true;
}

// Whether there was room for quotes around the text.
bool quote(ShortText& text) {
    if (text.room() < 2) return false;
    text.insert(0, '"');
    text.insert(text.size(), '"');
    return true;
}

[[gnu::noinline]] void unmask(ShortText& text, unsigned hits) {
    for (std::size_t erased = 0; hits != 0; hits &= hits - 1, ++erased) {
        const int hit = std::countr_zero(hits);
        text.erase(static_cast<std::size_t>(hit) - erased);
        hits &= ~(2U << hit);  // what is escaped is no escape
    }
}

// Text is changed in pieces, in a buffer that stays in the processor's cache.
constexpr std::size_t kPiece = 1024;

// Of a buffer with at least `kInlineCapacity` bytes.
SV::String textOf(const char* begin, const char* end) {
    SV::String text;
    text.assignPadded(begin, static_cast<std::size_t>(end - begin));
    return text;
}

// `quote` stands around it.
SV::String maskedText(std::string_view text, char special, char escape, std::string_view quote) {
    const EitherByte candidates(special, escape);
    char buffer[2 * kPiece + 2 + kExcess];
    if (text.size() <= kPiece) {
        char* to = buffer;
        for (const char c : quote) *to++ = c;
        to = mask(text, candidates, escape, to);
        for (const char c : quote) *to++ = c;
        return textOf(buffer, to);
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
    std::string_view text = source ? source : "";
    const EitherByte special(delimiter, '\\');
    const std::size_t size = maskedSize(text, special) + 1;
    if (size > UINT_MAX || !Zel_MemoryIsWriteable(target, static_cast<unsigned>(size))) {
        displayErrorMessage(kSource, kNoRoom);
        // Relied on by callers: the copy is made all the same.
    }
    char buffer[2 * kPiece + kExcess];
    for (; !text.empty(); text.remove_prefix(std::min(kPiece, text.size()))) {
        const char* const end = mask(text.substr(0, kPiece), special, '\\', buffer);
        target = std::copy<const char*>(buffer, end, target);
    }
    *target = '\0';
}

}  // namespace

SV::String Zel_Mask(const char* text, char special, char escape) {
    const std::string_view source = text ? text : "";
    const EitherByte candidates(special, escape);
    if (ShortText::takes(source)) {
        ShortText masked(source);
        const unsigned hits = masked.bitsOf(candidates);
        if (hits == 0 || mask(masked, hits, escape)) return masked.toString();
    } else if (!hasOneOf(source, candidates)) {
        return SV::String(source);
    }
    return maskedText(source, special, escape, "");
}

SV::String Zel_Unmask(const char* text, char escape) {
    std::string_view source = text ? text : "";
    const EitherByte candidates(escape, escape);
    if (ShortText::takes(source)) {
        ShortText unmasked(source);
        const unsigned hits = unmasked.bitsOf(candidates);
        if (hits != 0) unmask(unmasked, hits);
        return unmasked.toString();
    }
    if (!hasOneOf(source, candidates)) return SV::String(source);
    char buffer[kPiece + kExcess];
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
    const EitherByte special('"', ';');
    if (ShortText::takes(field)) {
        ShortText masked(field);
        if (masked.bitsOf(special) == 0) return field;
        if (mask(masked, masked.bitsOf(EitherByte('"', '"')), '"') && quote(masked)) {
            return masked.toString();
        }
    } else if (!hasOneOf(field, special)) {
        return field;
    }
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
