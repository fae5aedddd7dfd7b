#include "text/text_model.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace {

// What a caller can see of a parser.
std::string described(bool result, std::string_view text, std::string_view lookAhead,
                      std::string_view spaces, const std::vector<std::int64_t>& numbers) {
    std::string all = result ? "yes" : "no";
    for (const std::string_view part : {text, lookAhead, spaces}) all.append(" | ").append(part);
    for (const std::int64_t number : numbers) all += " " + std::to_string(number);
    return all;
}

std::vector<std::int64_t> numbersOf(const ZelTextParser& parser) {
    return {parser.GetLastLineNumber(),
            parser.GetLookAheadLineNumber(),
            parser.GetTokenOffset(),
            parser.GetNextTokenOffset(),
            parser.GetSavedOffset(),
            parser.GetSavedLineNum(),
            parser.GetCurrentLineOffset(),
            parser.GetTokenCount(),
            parser.IsOkay(),
            parser.GetLineReader()->GetCurrentOffset()};
}

std::vector<std::int64_t> numbersOf(const ModelParser& model) {
    return {model.lastLineNumber,    model.lookAheadLineNumber, model.tokenOffset,
            model.nextTokenOffset,   model.savedOffset,         model.savedLineNumber,
            model.currentLineOffset, model.tokenCount,          model.okay,
            model.reader.offset()};
}

std::string after(const ParserCall& call, ZelTextParser& parser) {
    SV::String text;
    bool result = true;
    switch (call.operation) {
        case ParserCall::kGetUntil:
            result = parser.GetUntil(call.stop, text, call.consumesStop, '\\');
            break;
        case ParserCall::kSkipUntil:
            result = parser.SkipUntil(call.stop, call.consumesStop);
            break;
        case ParserCall::kSkipLine:
            result = parser.SkipLine();
            break;
        case ParserCall::kSkipToken:
            result = parser.SkipToken();
            break;
        case ParserCall::kSaveOffset:
            parser.SaveOffset();
            break;
        case ParserCall::kKeepTokenOffset:
            parser.KeepTokenOffset();
            break;
        case ParserCall::kMoveToSaved:
            result = parser.MoveTo(parser.GetSavedOffset(), parser.GetSavedLineNum());
            break;
        default:
            result = parser.GetNextToken(text);
    }
    SV::String lookAhead, spaces;
    parser.GetLookAheadToken(lookAhead);
    parser.GetSpacesToken(spaces);
    return described(result, text, lookAhead, spaces, numbersOf(parser));
}

std::string after(const ParserCall& call, ModelParser& model) {
    std::string text, unused;
    bool result = true;
    switch (call.operation) {
        case ParserCall::kGetUntil:
            result = model.readUntil(call.stop, text, call.consumesStop, "\\");
            break;
        case ParserCall::kSkipUntil:
            result = model.readUntil(call.stop, unused, call.consumesStop, nullptr);
            break;
        case ParserCall::kSkipLine:
            result = model.skipLine();
            break;
        case ParserCall::kSkipToken:
            result = model.skipToken();
            break;
        case ParserCall::kSaveOffset:
            model.saveOffset();
            break;
        case ParserCall::kKeepTokenOffset:
            model.keepTokenOffset = true;
            break;
        case ParserCall::kMoveToSaved:
            result = model.moveTo(model.savedOffset, model.savedLineNumber);
            break;
        default:
            result = model.getNextToken(text);
    }
    return described(result, text, model.lookAhead, model.spaces, numbersOf(model));
}

}  // namespace

bool ModelReader::getLine(std::string& line) {
    if (m_offset >= m_text.size()) return false;
    line.clear();
    while (m_offset < m_text.size() && m_text[m_offset] != '\r' && m_text[m_offset] != '\n') {
        line += m_text[m_offset++];
    }
    const std::string ending = m_text.substr(m_offset, 2);
    m_is2CharsForNewline = ending == "\r\n";
    m_offset += m_is2CharsForNewline ? 2 : std::min<std::size_t>(ending.size(), 1);
    line += '\n';
    return true;
}

bool ModelReader::moveTo(std::int64_t offset) {
    if (offset < 0) return false;
    m_offset = static_cast<std::size_t>(offset);
    return true;
}

ModelParser::ModelParser(std::string text, bool commaIsDelimiter)
    : reader(std::move(text)), isCommaDelimiter(commaIsDelimiter) {
    cut();
}

bool ModelParser::getNextToken(std::string& token) {
    lastLineNumber = lookAheadLineNumber - std::count(spaces.begin(), spaces.end(), '\n');
    if (!keepTokenOffset) tokenOffset = nextTokenOffset - static_cast<std::int64_t>(spaces.size());
    if (!okay && lookAhead.empty()) return false;
    token = lookAhead;
    cut();
    keepTokenOffset = false;
    return true;
}

bool ModelParser::skipLine() {
    line.clear();
    return cut();
}

bool ModelParser::readUntil(char stop, std::string& out, bool consumeStop, const char* escape) {
    out.clear();
    line = spaces + lookAhead + line;
    lookAhead.clear();
    spaces.clear();
    for (;;) {
        bool isEscaped = false;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] == stop && !isEscaped) {
                out += line.substr(0, i);
                line.erase(0, consumeStop ? i + 1 : i);
                cut();
                return true;
            }
            isEscaped = escape && line[i] == *escape && !isEscaped;
        }
        out += line;
        line.clear();
        if (!readLine()) return false;
    }
}

bool ModelParser::moveTo(std::int64_t offset, std::int64_t number) {
    if (!reader.moveTo(offset)) return false;
    nextTokenOffset = -1;
    lastLineNumber = lookAheadLineNumber = number;
    tokenOffset = offset;
    line.clear();
    spaces.clear();
    lookAhead.clear();
    okay = true;
    nextLineOffset = offset;
    return cut();
}

void ModelParser::saveOffset() {
    savedOffset = tokenOffset;
    savedLineNumber = lastLineNumber;
}

bool ModelParser::readLine() {
    if (!okay) return false;
    ++lookAheadLineNumber;
    currentLineOffset = nextLineOffset;
    okay = reader.getLine(line);
    nextLineOffset = currentLineOffset + static_cast<std::int64_t>(line.size());
    if (reader.is2CharsForNewline()) ++nextLineOffset;
    return okay;
}

bool ModelParser::cut() {
    spaces.clear();
    lookAhead.clear();
    if (line.empty()) readLine();
    for (;;) {
        while (!line.empty() && std::isspace(static_cast<unsigned char>(line[0]))) {
            spaces += line[0];
            line.erase(0, 1);
        }
        if (!line.empty()) break;
        if (!readLine()) return false;
    }
    if (!keepTokenOffset) nextTokenOffset = reader.offset();
    do {
        lookAhead += line[0];
        line.erase(0, 1);
    } while (isWord(lookAhead[0]) && !line.empty() && isWord(line[0]));
    ++tokenCount;
    return true;
}

bool ModelParser::isWord(char c) const {
    if (c == ',') return !isCommaDelimiter;
    return std::isalnum(static_cast<unsigned char>(c)) || c == '+' || c == '-' || c == '.' ||
           c == '_';
}

std::string differenceAfter(const ParserCall& call, ZelTextParser& parser, ModelParser& model) {
    const std::string got = after(call, parser);
    const std::string expected = after(call, model);
    return got == expected ? "" : "got " + got + ", expected " + expected;
}
