// Reading text files line by line and cutting them into tokens.

#pragma once

#include <bitset>
#include <cstdint>
#include <memory>
#include <string_view>

#include "sv/string.h"
#include "zbasic/zexport.h"
#include "zbasic/zobject.h"

// A source of lines for `ZelTextParser`.
class ZBASIC_API ZelLineReader : public ZelObject {
public:
    ~ZelLineReader() override;

    virtual bool Init() = 0;  // prepares reading; false: there is nothing to read
    virtual bool Done() = 0;  // ends reading

    // The next line with one line feed at its end, whatever ended it in the source.
    // False when there is none; `line` then is as it was.
    virtual bool GetLine(SV::String& line) = 0;

    // Bytes from the start of the source to what is read next.
    virtual std::int64_t GetCurrentOffset() const = 0;

    // Whether two characters ended the line that was read last.
    virtual bool Is2CharsForNewline() const = 0;
};

// Reads a file in blocks of 8192 bytes and knows where in the file it is.
//
// The file stays open, shared with other readers, from `_ImpOpenFile` until
// `Done` or the destructor. Offsets and sizes are in bytes.
class ZBASIC_API ZelFileReader : public ZelLineReader {
public:
    ZelFileReader(const ZelFileReader&) = delete;
    ZelFileReader& operator=(const ZelFileReader&) = delete;
    ~ZelFileReader() override;

    bool Done() override;                            // closes the file; true
    std::int64_t GetCurrentOffset() const override;  // 0 at first
    bool Is2CharsForNewline() const override;        // true before `Init`

protected:
    // Opens nothing yet.
    explicit ZelFileReader(const SV::String& fileName);

    // The next block. True with an empty buffer when the end of the file is reached
    // (`GetLine` gives its last line only because of that); false, with all offsets
    // 0, when reading fails and when the end had been reached before.
    virtual bool _ImpRead();

public:
    // Goes on at `offset`, which may lie behind the end; false when it is negative
    // or the file is not open, and nothing has changed then.
    virtual bool MoveTo(std::int64_t offset);

    // Where the block begins in the file, and in the block what is read next; their sum is
    // `GetCurrentOffset`.
    std::int64_t GetAbsoluteBufferOffset() const { return m_bufferOffset; }
    std::int64_t GetInBufferOffset() const { return m_position - m_buffer.get(); }

    double GetCurrentPercent() const;  // 0 to 100; 0 for an empty file
    // The name as given; the pointer is valid as long as the reader.
    SV::String GetFilename() const { return m_fileName; }
    const char* GetpFilename() const { return m_fileName.c_str(); }

    void* GetHandle() const { return m_file; }  // a HANDLE; INVALID_HANDLE_VALUE when closed

protected:
    bool _ImpOpenFile();  // also reads the size; false, and closed, when either fails

    bool isOpen() const;  // between `_ImpOpenFile` and `Done`

    void* m_file;                      // as `GetHandle`
    SV::String m_fileName;             // as given
    std::int64_t m_fileSize = 0;       // when it was opened
    std::int64_t m_bufferOffset = 0;   // of the buffer's first byte in the file
    std::unique_ptr<char[]> m_buffer;  // the block, and readable bytes behind it
    char* m_position;                  // what is read next
    char* m_end;                       // behind the last byte that was read
    std::int32_t m_lastCount = -1;     // bytes of the last read; -1: nothing read yet
    bool m_is2CharsForNewline = true;  // as `Is2CharsForNewline`
};

class ZelTextParser;

// The lines of a text file. CR, LF and CR LF each end a line; LF CR ends two.
//
//     "a\r\nb"  gives  "a\n", "b\n"
//
// Relied on by callers: a line of 8192 bytes or more, its end not counted, ends the
// process at once with a message box and exit code 1; 8191 bytes pass.
class ZBASIC_API ZelTextFileReader : public ZelFileReader {
public:
    // Opens nothing yet.
    explicit ZelTextFileReader(const SV::String& fileName);
    ~ZelTextFileReader() override;

    // Opens the file and reads its first block. A second call starts over.
    bool Init() override;

    // A last line without a line end is delivered with a line feed as well. Behind
    // the line end that closes a file there is no further, empty line.
    bool GetLine(SV::String& line) override;

protected:
    bool _ImpRead() override;

private:
    friend class ZelTextParser;

    std::string_view lineInBlock();
    bool assembleLine(SV::String& line);
    void skipLineEnd();

    ZelTextParser* m_borrower = nullptr;  // reads lines where they lie in the block
};

// Cuts the lines of a reader into tokens, with one token of look-ahead.
//
// A token is the longest run of letters, digits, "+", "-", ".", "_" and "," or else
// one single byte; white space only separates. `3.14e+5` and `my_name-2` are one
// token each, `"x"` is three: there are no rules for quotes and comments, callers
// read those with `GetUntil` and `SkipUntil`.
//
// Which bytes above 127 are letters or white space is as of the locale (LC_CTYPE) that
// the host has set when the parser is made; in the "C" locale, which holds unless a
// host sets another one, none are.
//
// Line numbers count from 1, offsets are in bytes from the start of the source.
// Reading failures look like the end of the input.
class ZBASIC_API ZelTextParser : public ZelObject {
public:
    enum Flag : int { kCommaIsDelimiter = 1 };  // "," is a token of its own

    // Takes over the reader: calls its `Init`, at the end its `Done`, and deletes it.
    explicit ZelTextParser(ZelLineReader* reader, int flags = 0);
    ZelTextParser(const ZelTextParser&) = delete;
    ZelTextParser& operator=(const ZelTextParser&) = delete;
    ~ZelTextParser() override;

    // The look-ahead token, which the token behind it then replaces. False at the end
    // of the input; `token` then is as it was.
    bool GetNextToken(SV::String& token);

    void GetLookAheadToken(SV::String& token) const;  // empty at the end of the input
    void GetSpacesToken(SV::String& spaces) const;    // the white space before it

    // Of the look-ahead token: its first character, its text, its text whatever the
    // case (in the user's locale).
    bool IsNext(char ch) const;
    bool IsNext(const char* text) const;
    bool IsNexti(const char* text) const;

    // Skips the look-ahead token when it is that one; else false.
    // Relied on by callers: of a character only the token's first one is compared, so a
    // word that begins with it is skipped whole.
    bool ExpectToken(char ch);
    bool ExpectToken(const char* text);

    // Drop the look-ahead token, or all that is left of the line it lies on. False when
    // no token follows.
    bool SkipToken();
    bool SkipLine();

    // The text from behind the last token (white space included) up to the first `stop`,
    // over as many lines as it takes. A `stop` behind an `escape` that is not escaped
    // itself does not count; escapes stay in the text. With `consumeStop` the `stop`
    // is dropped, else it is the next token. False when the input ends before; `out` then
    // holds all that was left.
    bool GetUntil(char stop, SV::String& out, bool consumeStop, char escape);
    bool SkipUntil(char stop, bool consumeStop);

    // Goes on at `offset` of the file as if `lineNumber` lines had been read. False when
    // the reader is no `ZelFileReader`, the offset is refused, or no token follows.
    bool MoveTo(std::int64_t offset, std::int64_t lineNumber);

    // Remembers offset and line of the token that `GetNextToken` gave last.
    void SaveOffset();

    // The next token cut leaves `GetNextTokenOffset`, and the next `GetNextToken`
    // leaves `GetTokenOffset` as it is.
    void KeepTokenOffset() { m_keepTokenOffset = true; }

    // The line on which the white space before the last token began, counting the line
    // feed that ends the line before.
    // Relied on by callers: the first token of a line reports an earlier line, "x" in
    // "a\n\nx" line 1. Whoever wants the token's own line asks for
    // `GetLookAheadLineNumber` before taking the token.
    std::int64_t GetLastLineNumber() const { return m_lastLineNumber; }

    // Lines read so far, which is the line of the look-ahead token. The read that finds
    // the end of the input counts, too.
    std::int64_t GetLookAheadLineNumber() const { return m_lookAheadLineNumber; }

    // Relied on by callers: the reader's position when the look-ahead token was cut,
    // which is behind the token's whole line; -1 before there was one.
    std::int64_t GetNextTokenOffset() const { return m_nextTokenOffset; }

    // The same of the last token, less the white space before it. `MoveTo` a saved
    // offset therefore resumes with the line behind it.
    std::int64_t GetTokenOffset() const { return m_tokenOffset; }

    std::int64_t GetSavedOffset() const { return m_savedOffset; }    // -1: none saved
    std::int64_t GetSavedLineNum() const { return m_savedLineNum; }  // -1: none saved

    // Where the line that was read last begins, counted from the lines' sizes.
    std::int64_t GetCurrentLineOffset() const { return m_currentLineOffset; }

    std::int32_t GetTokenCount() const { return m_tokenCount; }  // look-ahead tokens cut so far
    // Stays the parser's. Whoever reads lines from it takes them from the parser.
    ZelLineReader* GetLineReader() const { return m_reader.get(); }

    // Whether more input may follow: the result of the last line read.
    bool IsOkay() const { return m_okay; }

private:
    friend class ZelTextFileReader;
    static constexpr int kChunk = 64;  // bytes classified at a time

    std::string_view lookAhead() const;
    bool readLine();
    bool borrowLine();
    bool copyLine();
    void countLine(std::size_t size, bool has2CharsForNewline);
    std::int64_t readerOffset() const;
    bool cutLookAhead();
    bool goOnInNextLine();
    bool findToken();
    void openChunk();
    void readUpperHalf();
    void classifyUpperHalf();
    bool isUpperWord(char byte) const;
    const char* endOfWord(const char* at) const;
    void moveRest(const char* rest);
    bool readUntil(char stop, const char* escape, bool consumeStop, SV::String* out);
    void putBackLookAhead();
    void keepLine();
    void takeOwnLine(std::size_t position);
    void setLine(const char* begin, const char* end);
    std::int64_t spacesSize() const;

    std::unique_ptr<ZelLineReader> m_reader;
    ZelTextFileReader* const m_textFile;  // the reader, when it is one and not derived from one
    std::int64_t m_lastLineNumber = 0;
    std::int64_t m_lookAheadLineNumber = 0;
    std::int64_t m_tokenOffset = -1;
    std::int64_t m_nextTokenOffset = -1;
    std::int64_t m_savedOffset = -1;
    std::int64_t m_savedLineNum = -1;
    std::int64_t m_currentLineOffset = 0;
    std::int64_t m_nextLineOffset = 0;
    std::int32_t m_tokenCount = 0;
    SV::String m_line;
    // The look-ahead token and the white space before it stay where they are in the
    // line; only white space of lines before that one is kept aside.
    const char* m_spaces;
    const char* m_token;
    const char* m_rest;     // behind the token
    const char* m_lineEnd;  // of `m_line`
    SV::String m_earlierSpaces;
    std::int64_t m_spaceLineFeeds = 0;  // in all of the white space
    // What the 64 bytes from `m_classified` on are, one bit each; null: not known.
    const char* m_classified = nullptr;
    std::uint64_t m_spaceBits = 0;
    std::uint64_t m_wordBits = 0;
    // The bytes above 127 that the locale knows, from 128 on.
    std::bitset<128> m_upperSpaces;
    std::bitset<128> m_upperWords;
    bool m_hasUpperHalf = false;  // any at all?
    // The tokens of the line are looked for in chunks of as many bytes.
    const char* m_chunk = nullptr;
    const char* m_chunkEnd;      // where the next one begins
    std::uint64_t m_starts = 0;  // first bytes of the tokens not yet cut
    std::uint64_t m_lasts = 0;   // their last bytes
    bool m_endsInOnlyLineFeed = false;
    char m_delimiter;           // "," or a byte that belongs to no word anyway
    bool m_isBorrowed = false;  // the line lies in the reader's block, not in `m_line`
    bool m_keepTokenOffset = false;
    bool m_okay = false;
};
