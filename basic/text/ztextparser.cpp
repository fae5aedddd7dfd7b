#include "zbasic/ztextparser.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "text/comparetext.h"

namespace {

enum : unsigned char { kSpace = 1, kWord = 2, kComma = 4 };

// The standard classification in the "C" locale, whatever locale the host has set.
constexpr std::array<unsigned char, 256> kClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (const char c : std::string_view(" \t\n\v\f\r"))
        classes[static_cast<unsigned char>(c)] = kSpace;
    for (unsigned c = '0'; c <= '9'; ++c) classes[c] = kWord;
    for (unsigned c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c - 'A' + 'a'] = kWord;
    for (const char c : std::string_view("+-._")) classes[static_cast<unsigned char>(c)] = kWord;
    classes[','] = kComma;
    return classes;
}();

bool isOf(char c, unsigned char classes) {
    return (kClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

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
    : m_reader(reader), m_wordClasses(flags & kCommaIsDelimiter ? kWord : kWord | kComma) {
    startAt(0);
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
    token.assign(next);
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
    m_rest = m_lineEnd;
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
    startAt(0);
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

// Everything from `position` of the line on is unconsumed; there is no look-ahead token.
void ZelTextParser::startAt(std::size_t position) {
    m_rest = m_token = m_spaces = m_line.data() + position;
    m_lineEnd = m_line.end();
}

bool ZelTextParser::readLine() {
    if (!m_okay) return false;
    ++m_lookAheadLineNumber;
    m_currentLineOffset = m_nextLineOffset;
    m_okay = m_reader->GetLine(m_line);
    if (!m_okay) m_line.clear();
    m_nextLineOffset = m_currentLineOffset + static_cast<std::int64_t>(m_line.size());
    if (m_reader->Is2CharsForNewline()) ++m_nextLineOffset;
    startAt(0);
    return m_okay;
}

bool ZelTextParser::cutLookAhead() {
    m_earlierSpaces.clear();
    m_spaceLineFeeds = 0;
    m_spaces = m_token = m_rest;
    if (m_rest == m_lineEnd) readLine();
    for (;;) {
        for (; m_token != m_lineEnd && isOf(*m_token, kSpace); ++m_token) {
            m_spaceLineFeeds += *m_token == '\n';
        }
        if (m_token != m_lineEnd) break;
        m_earlierSpaces.append(m_spaces, static_cast<std::size_t>(m_token - m_spaces));
        m_spaces = m_rest = m_token;
        if (!readLine()) return false;
    }
    if (!m_keepTokenOffset) m_nextTokenOffset = m_reader->GetCurrentOffset();
    m_rest = m_token + 1;
    if (isOf(*m_token, m_wordClasses)) {
        while (m_rest != m_lineEnd && isOf(*m_rest, m_wordClasses)) ++m_rest;
    }
    ++m_tokenCount;
    return true;
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
    if (consumeStop) ++m_rest;
    cutLookAhead();
    return true;
}

void ZelTextParser::putBackLookAhead() {
    const auto spaces = static_cast<std::size_t>(m_spaces - m_line.data());
    m_spaceLineFeeds = 0;
    if (m_earlierSpaces.empty()) return startAt(spaces);
    m_line.replace(0, spaces, m_earlierSpaces);
    m_earlierSpaces.clear();
    startAt(0);
}
