#include "zbasic/ztextparser.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstring>
#include <typeinfo>

#include "diag/comparetext.h"
#include "text/bytescan.h"

namespace {

// The standard classification of the bytes up to 127, which is that of every locale.

__m128i isSpace(__m128i bytes) {
    return _mm_or_si128(isInRange(bytes, '\t', '\r'), isByte(bytes, ' '));
}

// Letters, digits and + , - . _ but not `delimiter`.
__m128i isWord(__m128i bytes, char delimiter) {
    const __m128i letters = isInRange(_mm_or_si128(bytes, _mm_set1_epi8('a' ^ 'A')), 'a', 'z');
    const __m128i upToNine = _mm_andnot_si128(isByte(bytes, '/'), isInRange(bytes, '+', '9'));
    const __m128i all = _mm_or_si128(_mm_or_si128(letters, upToNine), isByte(bytes, '_'));
    return _mm_andnot_si128(isByte(bytes, delimiter), all);
}

struct ClassBits {
    std::uint64_t spaces = 0;
    std::uint64_t words = 0;
};

// One bit for each of the 64 bytes from `at` on.
ClassBits classify(const char* at, char delimiter) {
    ClassBits bits;
    for (int place = 0; place < 64; place += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + place));
        const auto spaces = static_cast<unsigned>(_mm_movemask_epi8(isSpace(bytes)));
        const auto words = static_cast<unsigned>(_mm_movemask_epi8(isWord(bytes, delimiter)));
        bits.spaces |= std::uint64_t{spaces} << place;
        bits.words |= std::uint64_t{words} << place;
    }
    return bits;
}

// One bit for each of the 64 bytes from `at` on that is above 127.
std::uint64_t upperBits(const char* at) {
    std::uint64_t bits = 0;
    for (int place = 0; place < 64; place += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + place));
        bits |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(bytes))} << place;
    }
    return bits;
}

std::size_t upperIndex(char byte) { return static_cast<unsigned char>(byte) & 0x7Fu; }

std::string_view viewOf(const char* text) { return text ? text : std::string_view(); }

// Whether an odd number of escapes stands before `at`: each second one is escaped itself.
bool isEscaped(const char* begin, const char* at, char escape) {
    const char* first = at;
    while (first != begin && first[-1] == escape) --first;
    return (at - first) % 2 != 0;
}

// The first `stop` that is not escaped, else `end`; no `escape` when that is null.
const char* findStop(const char* begin, const char* end, char stop, const char* escape) {
    for (const char* from = begin; from != end;) {
        const void* const hit = std::memchr(from, stop, static_cast<std::size_t>(end - from));
        if (!hit) break;
        const char* const at = static_cast<const char*>(hit);
        if (!escape || *escape == stop || !isEscaped(begin, at, *escape)) return at;
        from = at + 1;
    }
    return end;
}

}  // namespace

ZelTextParser::ZelTextParser(ZelLineReader* reader, int flags)
    : m_reader(reader),
      m_textFile(reader && typeid(*reader) == typeid(ZelTextFileReader)
                     ? static_cast<ZelTextFileReader*>(reader)
                     : nullptr),
      m_delimiter(flags & kCommaIsDelimiter ? ',' : '\0') {
    readUpperHalf();
    if (m_textFile) m_textFile->m_borrower = this;
    takeOwnLine(0);
    m_okay = m_reader && m_reader->Init();
    if (m_okay) cutLookAhead();
}

ZelTextParser::~ZelTextParser() {
    if (m_reader) m_reader->Done();
}

bool ZelTextParser::GetNextToken(SV::String& token) {
    // Relied on by callers: the line feed of the line before counts as well.
    m_lastLineNumber = m_lookAheadLineNumber - m_spaceLineFeeds;
    if (!m_keepTokenOffset) m_tokenOffset = m_nextTokenOffset - spacesSize();
    const std::string_view next = lookAhead();
    if (!m_okay && next.empty()) return false;
    if (next.empty()) {
        token.clear();
    } else {
        token.assignPadded(next.data(), next.size());  // lines have readable bytes behind them
    }
    cutLookAhead();
    m_keepTokenOffset = false;
    return true;
}

void ZelTextParser::GetLookAheadToken(SV::String& token) const { token.assign(lookAhead()); }

void ZelTextParser::GetSpacesToken(SV::String& spaces) const {
    spaces = m_earlierSpaces;
    spaces.append(m_spaces, static_cast<std::size_t>(m_token - m_spaces));
}

bool ZelTextParser::IsNext(char ch) const { return m_token != m_rest && *m_token == ch; }

bool ZelTextParser::IsNext(const char* text) const { return lookAhead() == viewOf(text); }

bool ZelTextParser::IsNexti(const char* text) const {
    const std::string_view next = lookAhead();
    const std::string_view other = viewOf(text);
    return next.empty() == other.empty() && isEqualIgnoringCase(next, other);
}

bool ZelTextParser::ExpectToken(char ch) {
    if (!IsNext(ch)) return false;
    SkipToken();  // Relied on by callers: all of a word that begins with `ch`
    return true;
}

bool ZelTextParser::ExpectToken(const char* text) {
    if (!IsNext(text)) return false;
    SkipToken();
    return true;
}

bool ZelTextParser::SkipToken() { return cutLookAhead(); }

bool ZelTextParser::SkipLine() {
    moveRest(m_lineEnd);
    return cutLookAhead();
}

bool ZelTextParser::GetUntil(char stop, SV::String& out, bool consumeStop, char escape) {
    out.clear();
    return readUntil(stop, &escape, consumeStop, &out);
}

bool ZelTextParser::SkipUntil(char stop, bool consumeStop) {
    return readUntil(stop, nullptr, consumeStop, nullptr);
}

bool ZelTextParser::MoveTo(std::int64_t offset, std::int64_t lineNumber) {
    const auto file = dynamic_cast<ZelFileReader*>(m_reader.get());
    if (!file || !file->MoveTo(offset)) return false;
    m_nextTokenOffset = -1;
    m_lastLineNumber = m_lookAheadLineNumber = lineNumber;
    m_tokenOffset = offset;
    m_line.clear();
    takeOwnLine(0);
    m_okay = true;
    m_nextLineOffset = offset;
    return cutLookAhead();
}

void ZelTextParser::SaveOffset() {
    m_savedOffset = m_tokenOffset;
    m_savedLineNum = m_lastLineNumber;
}

std::string_view ZelTextParser::lookAhead() const {
    return {m_token, static_cast<std::size_t>(m_rest - m_token)};
}

std::int64_t ZelTextParser::spacesSize() const {
    return static_cast<std::int64_t>(m_earlierSpaces.size()) + (m_token - m_spaces);
}

// The line is `m_line`, unconsumed from `position` on.
void ZelTextParser::takeOwnLine(std::size_t position) {
    m_line.reserve(m_line.size() + kChunk);  // so that a chunk may reach behind the end
    m_isBorrowed = false;
    m_classified = nullptr;
    setLine(m_line.data() + position, m_line.end());
    m_endsInOnlyLineFeed = false;
}

// Everything of the line is unconsumed; there is no look-ahead token.
void ZelTextParser::setLine(const char* begin, const char* end) {
    m_token = m_spaces = begin;
    m_lineEnd = end;
    moveRest(begin);
}

// Called before the reader's block changes: what is left of a line in it is copied.
void ZelTextParser::keepLine() {
    m_classified = nullptr;
    if (!m_isBorrowed) return;
    const std::ptrdiff_t token = m_token - m_spaces;
    const std::ptrdiff_t rest = m_rest - m_spaces;
    m_line.assign(m_spaces, static_cast<std::size_t>(m_lineEnd - m_spaces));
    takeOwnLine(0);
    m_token += token;
    moveRest(m_spaces + rest);
}

void ZelTextParser::moveRest(const char* rest) {
    m_rest = m_chunkEnd = rest;
    m_starts = 0;
}

// Finds the tokens of the bytes from the last chunk's end on. A word that the end of the chunk
// would cut begins the next one instead, unless it fills the chunk.
void ZelTextParser::openChunk() {
    const char* const begin = m_chunkEnd;
    const std::ptrdiff_t left = m_lineEnd - begin;
    // Short lines: several of them are classified at once.
    const bool isKnown =
        m_classified && begin >= m_classified && m_lineEnd <= m_classified + kChunk;
    if (!isKnown) {
        m_classified = begin;
        const ClassBits bits = classify(begin, m_delimiter);
        m_spaceBits = bits.spaces;
        m_wordBits = bits.words;
        if (m_hasUpperHalf) classifyUpperHalf();
    }
    const auto place = static_cast<int>(begin - m_classified);
    const std::uint64_t inLine =
        left >= kChunk ? ~std::uint64_t{0} : (std::uint64_t{1} << left) - 1;
    std::uint64_t words = (m_wordBits >> place) & inLine;
    const std::uint64_t singles = ~(m_spaceBits >> place) & inLine & ~words;

    m_chunk = begin;
    m_chunkEnd = begin + std::min<std::ptrdiff_t>(left, kChunk);
    const int cut = left > kChunk ? std::countl_one(words) : 0;
    if (cut == kChunk) {
        m_chunkEnd = endOfWord(m_chunkEnd);
    } else if (cut > 0) {
        m_chunkEnd -= cut;
        words &= ~std::uint64_t{0} >> cut;
    }
    m_starts = singles | (words & ~(words << 1));
    m_lasts = singles | (words & ~(words >> 1));
}

// Asked once: a host may set another locale while a line is half classified.
void ZelTextParser::readUpperHalf() {
    for (int byte = 128; byte < 256; ++byte) {
        const auto index = static_cast<std::size_t>(byte - 128);
        m_upperSpaces[index] = std::isspace(byte) != 0;
        m_upperWords[index] = std::isalnum(byte) != 0;
    }
    m_hasUpperHalf = (m_upperSpaces | m_upperWords).any();
}

void ZelTextParser::classifyUpperHalf() {
    for (std::uint64_t places = upperBits(m_classified); places != 0; places &= places - 1) {
        const int place = std::countr_zero(places);
        const std::size_t index = upperIndex(m_classified[place]);
        m_spaceBits |= std::uint64_t{m_upperSpaces[index]} << place;
        m_wordBits |= std::uint64_t{m_upperWords[index]} << place;
    }
}

bool ZelTextParser::isUpperWord(char byte) const {
    return static_cast<unsigned char>(byte) > 127 && m_upperWords[upperIndex(byte)];
}

const char* ZelTextParser::endOfWord(const char* at) const {
    for (; at != m_lineEnd; ++at) {
        const __m128i byte = _mm_set1_epi8(*at);
        if (_mm_movemask_epi8(isWord(byte, m_delimiter)) == 0 && !isUpperWord(*at)) break;
    }
    return at;
}

// Moves on to the next token of the line; false when there is none.
bool ZelTextParser::findToken() {
    while (m_starts == 0) {
        if (m_chunkEnd == m_lineEnd) return false;
        openChunk();
    }
    const int last = std::countr_zero(m_lasts);
    m_token = m_chunk + std::countr_zero(m_starts);
    m_rest = last == kChunk - 1 ? m_chunkEnd : m_chunk + last + 1;
    m_starts &= m_starts - 1;
    m_lasts &= m_lasts - 1;
    return true;
}

bool ZelTextParser::readLine() { return borrowLine() || copyLine(); }

// A line that lies whole in the reader's block is read where it is.
bool ZelTextParser::borrowLine() {
    if (!m_textFile || !m_okay) return false;
    const std::string_view line = m_textFile->lineInBlock();
    if (line.empty()) return false;
    setLine(line.data(), line.data() + line.size());
    m_isBorrowed = m_endsInOnlyLineFeed = true;
    countLine(line.size(), m_textFile->m_is2CharsForNewline);
    return true;
}

bool ZelTextParser::copyLine() {
    if (!m_okay) return false;
    m_okay = m_reader->GetLine(m_line);
    if (!m_okay) m_line.clear();
    takeOwnLine(0);
    countLine(m_line.size(), m_reader->Is2CharsForNewline());
    return m_okay;
}

void ZelTextParser::countLine(std::size_t size, bool has2CharsForNewline) {
    ++m_lookAheadLineNumber;
    m_currentLineOffset = m_nextLineOffset;
    m_nextLineOffset += static_cast<std::int64_t>(size) + has2CharsForNewline;
}

std::int64_t ZelTextParser::readerOffset() const {
    if (!m_textFile) return m_reader->GetCurrentOffset();
    return m_textFile->GetAbsoluteBufferOffset() + m_textFile->GetInBufferOffset();
}

bool ZelTextParser::cutLookAhead() {
    if (!m_earlierSpaces.empty()) m_earlierSpaces.clear();
    m_spaceLineFeeds = 0;
    if (m_rest == m_lineEnd) readLine();
    m_spaces = m_rest;
    while (!findToken()) {
        if (!goOnInNextLine()) return false;
    }
    if (!m_endsInOnlyLineFeed) m_spaceLineFeeds += std::count(m_spaces, m_token, '\n');
    if (!m_keepTokenOffset) m_nextTokenOffset = readerOffset();
    ++m_tokenCount;
    return true;
}

// The line holds nothing but white space any more, which goes on in the next one.
bool ZelTextParser::goOnInNextLine() {
    const char* const spaces = m_spaces;
    const char* const end = m_lineEnd;
    m_spaceLineFeeds += m_endsInOnlyLineFeed ? 1 : std::count(spaces, end, '\n');
    const bool isBorrowed = borrowLine();
    if (isBorrowed && m_spaces == end) {  // side by side in the block
        m_spaces = spaces;
        return true;
    }
    m_earlierSpaces.append(spaces, static_cast<std::size_t>(end - spaces));
    if (isBorrowed) return true;
    setLine(m_lineEnd, m_lineEnd);
    return copyLine();
}

// The unconsumed text up to `stop`, which every further line is searched for from its first byte.
bool ZelTextParser::readUntil(char stop, const char* escape, bool consumeStop, SV::String* out) {
    putBackLookAhead();
    for (;;) {
        const char* const found = findStop(m_rest, m_lineEnd, stop, escape);
        if (out) out->append(m_rest, static_cast<std::size_t>(found - m_rest));
        m_spaces = m_token = m_rest = found;
        if (found != m_lineEnd) break;
        if (!readLine()) return false;
    }
    moveRest(consumeStop ? m_rest + 1 : m_rest);
    cutLookAhead();
    return true;
}

void ZelTextParser::putBackLookAhead() {
    if (m_spaceLineFeeds != 0) m_endsInOnlyLineFeed = false;
    m_spaceLineFeeds = 0;
    if (m_earlierSpaces.empty()) return setLine(m_spaces, m_lineEnd);
    keepLine();
    const auto spaces = static_cast<std::size_t>(m_spaces - m_line.data());
    m_line.replace(0, spaces, m_earlierSpaces);
    m_earlierSpaces.clear();
    takeOwnLine(0);
}
