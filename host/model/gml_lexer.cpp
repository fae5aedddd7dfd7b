#include "model/gml_lexer.h"

#include <algorithm>

namespace zelhost {

namespace {

constexpr char kQuote = '"';
constexpr char kNoEscape = '\0';  // which the file does not hold
constexpr int kByteOrderMarkTokens = 3;

bool isAscii(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

std::string_view withoutBlanksAtEnd(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(0, last == text.npos ? 0 : last + 1);
}

// Whether the text ends in `name=` of a tag that is still open.
bool awaitsTagValue(std::string_view text) {
    if (!withoutBlanksAtEnd(text).ends_with('=')) return false;
    const std::size_t open = text.rfind('<');
    if (open == text.npos || open + 1 == text.size()) return false;
    const char first = text[open + 1];
    const bool isName = (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z');
    return isName && text.find('>', open) == text.npos;
}

}  // namespace

GmlLexer::GmlLexer(const std::string& fileName, const FileScan& scan)
    : m_reader(new ZelTextFileReader(SV::String(std::string_view(fileName)))),
      m_parser(m_reader, ZelTextParser::kCommaIsDelimiter),
      m_encoding(scan.encoding) {
    for (int i = 0; scan.hasByteOrderMark && i < kByteOrderMarkTokens; ++i) m_parser.SkipToken();
}

GmlLexer::Kind GmlLexer::next() {
    for (;;) {
        m_line = m_parser.GetLookAheadLineNumber();  // the token's own, unlike the last line number
        if (!m_parser.GetNextToken(m_word)) return Kind::end;
        switch (m_word[0]) {
            case '[':
                m_isBehindComment = false;
                return Kind::open;
            case ']':
                m_isBehindComment = false;
                return Kind::close;
            case kQuote:
                m_isBehindComment = false;
                return nextText();
            case '#':
                if (!isFirstOnLine()) return fail("a comment must begin on a line of its own");
                skipComment();
                break;
            default:
                m_isBehindComment = false;
                return Kind::word;
        }
    }
}

// Skipping a line drops its line feed, so that the token behind it seems to follow on the line.
bool GmlLexer::isFirstOnLine() const {
    return m_isBehindComment || m_parser.GetLastLineNumber() < m_line;
}

void GmlLexer::skipComment() {
    m_isBehindComment = true;
    if (m_parser.GetLookAheadLineNumber() == m_line) m_parser.SkipLine();
}

GmlLexer::Kind GmlLexer::fail(const char* message) {
    m_problem = {m_line, message};
    return Kind::failed;
}

GmlLexer::Kind GmlLexer::nextText() {
    bool isClosed = m_parser.GetUntil(kQuote, m_raw, true, kNoEscape);
    while (isClosed && isQuoteInText()) {
        if (awaitsTagValue(m_raw)) {
            isClosed = appendTagValue();
        } else if (!appendRestOfLine()) {
            return fail(
                "something follows a text without a blank (a quotation mark in a text is written "
                "&quot;)");
        }
    }
    if (!isClosed) return fail("the text that begins here has no closing quotation mark");
    decodeText();
    return Kind::text;
}

// Behind a text comes a blank, a line end, the end of the list or of the file.
bool GmlLexer::isQuoteInText() {
    m_parser.GetSpacesToken(m_piece);
    return m_piece.empty() && m_parser.IsOkay() && !m_parser.IsNext(']');
}

bool GmlLexer::appendUntil(char stop, bool consumeStop) {
    const bool isFound = m_parser.GetUntil(stop, m_piece, consumeStop, kNoEscape);
    m_raw += m_piece;
    return isFound;
}

bool GmlLexer::appendTagValue() {
    m_raw += kQuote;
    if (!appendUntil(kQuote, true)) return false;
    m_raw += kQuote;
    return appendUntil(kQuote, true);
}

bool GmlLexer::appendRestOfLine() {
    m_parser.GetUntil('\n', m_piece, false, kNoEscape);
    const std::string_view rest = withoutBlanksAtEnd(m_piece);
    if (!rest.ends_with(kQuote)) return false;
    m_raw += kQuote;
    m_raw += rest.substr(0, rest.size() - 1);
    return true;
}

void GmlLexer::decodeText() {
    const std::string_view raw = m_raw;
    const bool isPlain = raw.find('&') == raw.npos;
    if (isPlain && (m_encoding == Encoding::utf8 || isAscii(raw))) {
        m_text = raw;
        return;
    }
    decodeEntities(raw, m_encoding, m_decoded);
    m_text = m_decoded;
}

}  // namespace zelhost
