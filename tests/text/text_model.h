// The tokenizer as its contract reads, without regard for speed: the measure for the real one.

#pragma once

#include <cstdint>
#include <string>

#include "zbasic/ztextparser.h"

// Reads lines from a text in memory.
class ModelReader {
public:
    explicit ModelReader(std::string text) : m_text(std::move(text)) {}

    bool getLine(std::string& line);
    bool moveTo(std::int64_t offset);
    std::int64_t offset() const { return static_cast<std::int64_t>(m_offset); }
    bool is2CharsForNewline() const { return m_is2CharsForNewline; }

private:
    std::string m_text;
    std::size_t m_offset = 0;
    bool m_is2CharsForNewline = false;
};

struct ModelParser {
    ModelParser(std::string text, bool isCommaDelimiter);

    bool getNextToken(std::string& token);
    bool skipLine();
    bool skipToken() { return cut(); }
    bool readUntil(char stop, std::string& out, bool consumeStop, const char* escape);
    bool moveTo(std::int64_t offset, std::int64_t number);
    void saveOffset();

    ModelReader reader;
    std::int64_t lastLineNumber = 0;
    std::int64_t lookAheadLineNumber = 0;
    std::int64_t tokenOffset = -1;
    std::int64_t nextTokenOffset = -1;
    std::int64_t savedOffset = -1;
    std::int64_t savedLineNumber = -1;
    std::int64_t currentLineOffset = 0;
    std::int64_t nextLineOffset = 0;
    std::int32_t tokenCount = 0;
    std::string line;
    std::string spaces;
    std::string lookAhead;
    bool keepTokenOffset = false;
    bool okay = true;
    bool isCommaDelimiter;

private:
    bool readLine();
    bool cut();
    bool isWord(char c) const;
};

// One call of an operation that reads on.
struct ParserCall {
    enum Operation : std::size_t {
        kGetUntil,
        kSkipUntil,
        kSkipLine,
        kSkipToken,
        kSaveOffset,
        kKeepTokenOffset,
        kMoveToSaved,
        kNextToken,  // and all from here on
    };

    std::size_t operation = kNextToken;
    char stop = '"';
    bool consumesStop = false;
};

// Does the same to both: in what they differ then, empty when in nothing.
std::string differenceAfter(const ParserCall& call, ZelTextParser& parser, ModelParser& model);
