// The tokens of GML.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/encoding.h"
#include "model/file_scan.h"
#include "zbasic/ztextparser.h"

namespace zelhost {

// Cuts a GML file, which `scanTextFile` found good, into keys and values.
class GmlLexer {
public:
    enum class Kind { end, word, open, close, text, failed };

    GmlLexer(const std::string& fileName, const FileScan& scan);

    // The next token behind comments. A word is whatever stands where a key or a number may.
    Kind next();

    std::int64_t line() const { return m_line; }  // of that token; of a text: where it begins
    std::string_view word() const { return m_word; }
    std::string_view text() const { return m_text; }  // UTF-8, entities replaced
    const FileProblem& problem() const { return m_problem; }

    // How far the file has been read.
    std::int64_t offset() const { return m_reader->GetCurrentOffset(); }
    double percent() const { return m_reader->GetCurrentPercent(); }

private:
    Kind nextText();
    bool isFirstOnLine() const;
    void skipComment();
    bool isQuoteInText();
    bool appendTagValue();
    bool appendRestOfLine();
    bool appendUntil(char stop, bool consumeStop);
    void decodeText();
    Kind fail(const char* message);

    ZelFileReader* m_reader;  // belongs to the parser
    ZelTextParser m_parser;
    Encoding m_encoding;
    bool m_isBehindComment = true;  // the file's start is the start of a line, too
    std::int64_t m_line = 0;
    SV::String m_word;
    SV::String m_raw;  // a text as it stands in the file
    SV::String m_piece;
    std::string m_decoded;
    std::string_view m_text;  // in one of the two
    FileProblem m_problem{};
};

}  // namespace zelhost
