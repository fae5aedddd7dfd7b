#include "zbasic/ztextparser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "text/text_model.h"

#include <windows.h>

namespace {

constexpr std::size_t kBlockSize = 8192;

// `size` bytes in lines of at most `width` bytes, the last byte a line feed.
std::string filler(std::size_t size, std::size_t width = 100) {
    std::string text;
    while (text.size() < size) {
        const std::size_t line = std::min(width, size - text.size());
        text.append(line - 1, 'f').push_back('\n');
    }
    return text;
}

struct ReadLine {
    std::string text;
    bool has2Chars;
    std::int64_t offset;  // of the reader behind it

    bool operator==(const ReadLine&) const = default;
};

void PrintTo(const ReadLine& line, std::ostream* stream) {
    *stream << '"' << line.text << "\" two=" << line.has2Chars << " at " << line.offset;
}

std::vector<ReadLine> linesOf(ZelLineReader& reader) {
    std::vector<ReadLine> lines;
    SV::String line;
    while (reader.GetLine(line)) {
        lines.push_back({line.c_str(), reader.Is2CharsForNewline(), reader.GetCurrentOffset()});
    }
    return lines;
}

struct LinesCase {
    const char* why;
    std::size_t before;  // bytes of filler before the text
    std::string text;
    std::vector<ReadLine> expected;  // offsets count from the start of `text`
};

const LinesCase kLines[] = {
    {"empty file", 0, "", {}},
    {"no line end", 0, "a", {{"a\n", false, 1}}},
    {"no empty line behind the last line end", 0, "a\n", {{"a\n", false, 2}}},
    {"every line end",
     0,
     "a\nb\rc\r\nd",
     {{"a\n", false, 2}, {"b\n", false, 4}, {"c\n", true, 7}, {"d\n", false, 8}}},
    {"LF CR ends two lines", 0, "a\n\rb", {{"a\n", false, 2}, {"\n", false, 3}, {"b\n", false, 4}}},
    {"CR CR LF ends two lines", 0, "\r\r\n", {{"\n", false, 1}, {"\n", true, 3}}},
    {"CR as the last byte of the file", 0, "a\r", {{"a\n", false, 2}}},
    {"longer than one search step",
     0,
     "0123456789abcdefghij\r\n",
     {{"0123456789abcdefghij\n", true, 22}}},
    {"LF as the last byte of a block",
     kBlockSize - 2,
     "a\nb",
     {{"a\n", false, 2}, {"b\n", false, 3}}},
    {"CR as the last byte of a block",
     kBlockSize - 2,
     "a\rb",
     {{"a\n", false, 2}, {"b\n", false, 3}}},
    {"CR LF cut by the end of a block",
     kBlockSize - 2,
     "a\r\nb",
     {{"a\n", true, 3}, {"b\n", false, 4}}},
    {"CR LF as the last bytes of a block",
     kBlockSize - 3,
     "a\r\nb",
     {{"a\n", true, 3}, {"b\n", false, 4}}},
    {"text cut by the end of a block", kBlockSize - 2, "abcd\r\n", {{"abcd\n", true, 6}}},
    {"file of one block without line end", kBlockSize - 1, "a", {{"a\n", false, 1}}},
    {"file of one block ending in CR", kBlockSize - 1, "\r", {{"\n", false, 1}}},
    {"file of one block ending in LF", kBlockSize - 1, "\n", {{"\n", false, 1}}},
};

TEST(TextFileReader, DeliversLines) {
    const TempDir dir;
    for (const auto& [why, before, text, expected] : kLines) {
        SCOPED_TRACE(why);
        const std::string fillerText = filler(before);
        ZelTextFileReader reader(SV::String(dir.write("lines.txt", fillerText + text)));
        ASSERT_TRUE(reader.Init());
        std::vector<ReadLine> lines = linesOf(reader);
        lines.erase(lines.begin(), lines.begin() + std::ranges::count(fillerText, '\n'));
        for (ReadLine& line : lines) line.offset -= static_cast<std::int64_t>(before);
        EXPECT_EQ(lines, expected);
    }
}

TEST(TextFileReader, KeepsBytesThatAreNoText) {
    const TempDir dir;
    const std::string text("\0\x1A\xFF\0\n", 5);
    ZelTextFileReader reader(SV::String(dir.write("bytes", text)));
    ASSERT_TRUE(reader.Init());
    SV::String line;
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(line, std::string_view(text));
}

TEST(TextFileReader, TellsWhereItIs) {
    const TempDir dir;
    const std::string path = dir.write("offsets.txt", filler(kBlockSize + 92) + "last");
    ZelTextFileReader reader{SV::String(path)};
    EXPECT_TRUE(reader.Is2CharsForNewline());
    ASSERT_TRUE(reader.Init());
    EXPECT_FALSE(reader.Is2CharsForNewline());
    EXPECT_EQ(reader.GetFilename(), path);
    EXPECT_STREQ(reader.GetpFilename(), path.c_str());
    EXPECT_EQ(reader.GetCurrentPercent(), 0.0);

    SV::String line;
    for (int i = 0; i < 82; ++i) ASSERT_TRUE(reader.GetLine(line));  // the last one crosses blocks
    EXPECT_EQ(reader.GetAbsoluteBufferOffset(), 8192);
    EXPECT_EQ(reader.GetInBufferOffset(), 8);
    EXPECT_EQ(reader.GetCurrentOffset(), 8200);
    EXPECT_DOUBLE_EQ(reader.GetCurrentPercent(), 8200.0 / 8288.0 * 100.0);

    ASSERT_TRUE(reader.MoveTo(8284));
    EXPECT_EQ(reader.GetAbsoluteBufferOffset(), 8284);
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(line, "last\n");
    EXPECT_EQ(reader.GetCurrentOffset(), 8288);
    EXPECT_FALSE(reader.GetLine(line));
    EXPECT_EQ(line, "last\n");  // as it was

    EXPECT_FALSE(reader.MoveTo(-1));
    EXPECT_EQ(reader.GetCurrentOffset(), 8288);
    EXPECT_TRUE(reader.MoveTo(9000));
    EXPECT_FALSE(reader.GetLine(line));

    ASSERT_TRUE(reader.Init());  // starts over
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(reader.GetCurrentOffset(), 100);
}

TEST(TextFileReader, FailsWithoutAFile) {
    const TempDir dir;
    SV::String line("before");
    for (const std::string& path : {dir.path("missing.txt"), dir.root().string(), std::string()}) {
        SCOPED_TRACE(path);
        ZelTextFileReader reader{SV::String(path)};
        EXPECT_FALSE(reader.GetLine(line));
        EXPECT_FALSE(reader.Init());
        EXPECT_EQ(reader.GetHandle(), INVALID_HANDLE_VALUE);
        EXPECT_FALSE(reader.GetLine(line));
        EXPECT_FALSE(reader.MoveTo(0));
        EXPECT_EQ(reader.GetCurrentPercent(), 0.0);
    }
    EXPECT_EQ(line, "before");
}

TEST(TextFileReader, SharesTheFileUntilItIsDone) {
    const TempDir dir;
    const std::string path = dir.write("shared.txt", "a");
    ZelTextFileReader first{SV::String(path)};
    ZelTextFileReader second{SV::String(path)};
    EXPECT_TRUE(first.Init());
    EXPECT_TRUE(second.Init());
    EXPECT_TRUE(first.Done());
    SV::String line;
    EXPECT_FALSE(first.GetLine(line));
    EXPECT_FALSE(::DeleteFileA(path.c_str()));
    EXPECT_TRUE(second.Done());
    EXPECT_TRUE(::DeleteFileA(path.c_str()));
}

TEST(TextFileReader, Passes8191BytesInALine) {
    const TempDir dir;
    const std::string longest(8191, 'x');
    for (const std::string& text : {longest, longest + "\r\n", "a\n" + longest + "\n"}) {
        ZelTextFileReader reader(SV::String(dir.write("long.txt", text)));
        ASSERT_TRUE(reader.Init());
        EXPECT_EQ(linesOf(reader).back().text, longest + "\n");
    }
}

CHILD_MAIN(readOverlongLine) {
    ZelTextFileReader reader(argv[1]);
    reader.Init();
    const BoxWatcher watcher(0);  // notes the box; there is no button 0
    std::atomic<bool> isDone = false;
    std::thread reading([&] {
        SV::String line;
        while (reader.GetLine(line)) {
        }
        isDone = true;
    });
    while (watcher.seen().empty() && !isDone) ::Sleep(10);
    for (const SeenBox& box : watcher.seen()) std::fputs(box.text.c_str(), stdout);
    std::fflush(stdout);
    const BoxWatcher answer(IDOK);
    reading.join();
    return 0;
}

TEST(TextFileReader, EndsTheProcessAt8192BytesInALine) {
    const TempDir dir;
    const std::string tooLong(8192, 'x');
    for (const std::string& text : {tooLong, "a\n" + tooLong + "\nb\n"}) {
        const ChildResult result = runChild("readOverlongLine", {dir.write("long.txt", text)});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_NE(
            result.out.find("INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. "
                            "8192 characters are allowed per line! Aborting program."),
            std::string::npos)
            << result.out;
    }
}

class TextParser : public ::testing::Test {
protected:
    std::unique_ptr<ZelTextParser> parserOf(const std::string& text, int flags = 0) {
        const std::string path = m_dir.write("text" + std::to_string(++m_files), text);
        return std::make_unique<ZelTextParser>(new ZelTextFileReader(SV::String(path)), flags);
    }

private:
    TempDir m_dir;
    int m_files = 0;
};

struct Token {
    std::string text;
    std::int64_t line;
    std::int64_t ownLine;  // the look-ahead's, before the token was taken

    bool operator==(const Token&) const = default;
};

void PrintTo(const Token& token, std::ostream* stream) {
    *stream << '"' << token.text << "\" " << token.line << " " << token.ownLine;
}

struct TokensCase {
    const char* why;
    std::string text;
    int flags;
    std::vector<Token> expected;
};

const TokensCase kTokens[] = {
    {"empty file", "", 0, {}},
    {"nothing but white space", " \t\n\v\f\n", 0, {}},
    {"words and single bytes",
     "node [id 7]",
     0,
     {{"node", 1, 1}, {"[", 1, 1}, {"id", 1, 1}, {"7", 1, 1}, {"]", 1, 1}}},
    {"comma belongs to a word", "abc,def", 0, {{"abc,def", 1, 1}}},
    {"comma delimits",
     "abc,def",
     ZelTextParser::kCommaIsDelimiter,
     {{"abc", 1, 1}, {",", 1, 1}, {"def", 1, 1}}},
    {"numbers and names", "3.14e+5 my_name-2", 0, {{"3.14e+5", 1, 1}, {"my_name-2", 1, 1}}},
    {"no rule for quotes", "\"word\"", 0, {{"\"", 1, 1}, {"word", 1, 1}, {"\"", 1, 1}}},
    {"the line feed before a token counts", "a\nb c\n", 0, {{"a", 1, 1}, {"b", 1, 2}, {"c", 2, 2}}},
    {"over an empty line", "a\n\nx", 0, {{"a", 1, 1}, {"x", 1, 3}}},
};

TEST_F(TextParser, CutsTokens) {
    for (const auto& [why, text, flags, expected] : kTokens) {
        SCOPED_TRACE(why);
        const auto parser = parserOf(text, flags);
        std::vector<Token> tokens;
        SV::String token("before");
        for (std::int64_t own = parser->GetLookAheadLineNumber(); parser->GetNextToken(token);
             own = parser->GetLookAheadLineNumber()) {
            tokens.push_back({token.c_str(), parser->GetLastLineNumber(), own});
        }
        EXPECT_EQ(tokens, expected);
        EXPECT_EQ(token, expected.empty() ? "before" : expected.back().text.c_str());
        EXPECT_EQ(parser->GetTokenCount(), static_cast<int>(expected.size()));
        EXPECT_FALSE(parser->IsOkay());
    }
}

// Another classification of characters for as long as it lives.
class CharacterLocale {
public:
    explicit CharacterLocale(const char* name) : m_before(std::setlocale(LC_CTYPE, nullptr)) {
        EXPECT_TRUE(std::setlocale(LC_CTYPE, name)) << name;
    }
    CharacterLocale(const CharacterLocale&) = delete;
    CharacterLocale& operator=(const CharacterLocale&) = delete;
    ~CharacterLocale() { std::setlocale(LC_CTYPE, m_before.c_str()); }

private:
    const std::string m_before;
};

constexpr char kGerman[] = "German_Germany.1252";

struct LocaleCase {
    const char* why;
    const char* locale;
    const char* text;
    std::vector<std::string> tokens;
};

const LocaleCase kLocales[] = {
    {"no umlauts in \"C\"", "C", "M\xFCller", {"M", "\xFC", "ller"}},
    {"no white space in \"C\"", "C", "a\xA0x", {"a", "\xA0", "x"}},
    {"umlauts in German", kGerman, "M\xFCller", {"M\xFCller"}},
    {"umlauts at both ends", kGerman, "(\xDC.\xE4)", {"(", "\xDC.\xE4", ")"}},
    {"no-break space in German", kGerman, "a\xA0x", {"a", "x"}},
    {"signs are no letters", kGerman, "5\x80\xA7", {"5", "\x80", "\xA7"}},
};

TEST_F(TextParser, ClassifiesUpperBytesAsTheLocaleDoes) {
    for (const auto& [why, name, text, expected] : kLocales) {
        SCOPED_TRACE(why);
        const CharacterLocale locale(name);
        const auto parser = parserOf(text);
        std::vector<std::string> tokens;
        for (SV::String token; parser->GetNextToken(token);) tokens.push_back(token.c_str());
        EXPECT_EQ(tokens, expected);
    }
}

TEST_F(TextParser, KeepsTheLocaleThatItWasMadeIn) {
    std::unique_ptr<ZelTextParser> parser;
    {
        const CharacterLocale locale(kGerman);
        parser = parserOf("x\nM\xFCller\n");
    }
    EXPECT_TRUE(parser->SkipToken());
    EXPECT_TRUE(parser->IsNext("M\xFCller"));
}

TEST_F(TextParser, ComparesTheLookAheadToken) {
    const auto parser = parserOf(
        "Gr\xFC"
        "n");
    EXPECT_TRUE(parser->IsNext('G'));
    EXPECT_FALSE(parser->IsNext('g'));
    EXPECT_TRUE(parser->IsNext("Gr"));
    EXPECT_FALSE(parser->IsNext("G"));
    EXPECT_FALSE(parser->IsNext("gr"));
    EXPECT_TRUE(parser->IsNexti("gR"));
    EXPECT_FALSE(parser->IsNexti("grx"));
    EXPECT_FALSE(parser->IsNexti(""));
    EXPECT_FALSE(parser->IsNexti(nullptr));
    EXPECT_TRUE(parser->SkipToken());
    EXPECT_TRUE(parser->IsNexti("\xDC"));
    EXPECT_TRUE(parser->SkipToken());
    EXPECT_FALSE(parser->SkipToken());
    EXPECT_FALSE(parser->IsNext('\0'));
    EXPECT_TRUE(parser->IsNext(""));
    EXPECT_TRUE(parser->IsNexti(""));
    EXPECT_FALSE(parser->IsNexti("n"));
}

TEST_F(TextParser, ExpectsATokenByItsFirstCharacterOrItsText) {
    const auto parser = parserOf("edge [ x");
    EXPECT_FALSE(parser->ExpectToken("edg"));
    EXPECT_FALSE(parser->ExpectToken('['));
    EXPECT_TRUE(parser->ExpectToken('e'));  // the whole word
    EXPECT_TRUE(parser->ExpectToken("["));
    SV::String token;
    parser->GetLookAheadToken(token);
    EXPECT_EQ(token, "x");
}

struct UntilCase {
    const char* why;
    std::string text;  // behind a first token "t"
    char stop;
    bool consumeStop;
    bool isFound;
    const char* out;
    const char* next;
};

const UntilCase kUntil[] = {
    {"white space before it belongs to it", "  a b\" c", '"', true, true, "  a b", "c"},
    {"stop is kept", " a\" c", '"', false, true, " a", "\""},
    {"nothing before the stop", "\"x", '"', true, true, "", "x"},
    {"nothing before the stop, which is kept", "\"x", '"', false, true, "", "\""},
    {"escaped stop", " a\\\"b\"c", '"', true, true, " a\\\"b", "c"},
    {"escaped escape", " a\\\\\"c", '"', true, true, " a\\\\", "c"},
    {"escape and stop behind an escaped escape", " a\\\\\\\"b\"c", '"', true, true, " a\\\\\\\"b",
     "c"},
    {"over lines", " a\nb\r\n\n \"c", '"', true, true, " a\nb\n\n ", "c"},
    {"look-ahead lies on a further line", "\n\n  a b\"c", '"', true, true, "\n\n  a b", "c"},
    {"a line end escapes nothing on the next line", " a\\\n\"c", '"', true, true, " a\\\n", "c"},
    {"line feed as stop", " // note\nc", '\n', true, true, " // note", "c"},
    {"the line feed before the look-ahead is the stop", "\n a\nc", '\n', true, true, "", "a"},
    {"stop within the look-ahead", " abc", 'b', true, true, " a", "c"},
    {"end of the input", " a\nb", '"', true, false, " a\nb\n", ""},
};

TEST_F(TextParser, ReadsUntilACharacter) {
    for (const auto& [why, text, stop, consumeStop, isFound, out, next] : kUntil) {
        SCOPED_TRACE(why);
        const auto parser = parserOf("t" + text);
        SV::String token;
        SV::String got("before");
        ASSERT_TRUE(parser->GetNextToken(token));
        EXPECT_EQ(parser->GetUntil(stop, got, consumeStop, '\\'), isFound);
        EXPECT_EQ(got, out);
        parser->GetLookAheadToken(token);
        EXPECT_EQ(token, next);
    }
}

TEST_F(TextParser, ReturnsToASavedOffsetAtTheNextLine) {
    const auto parser = parserOf("a b\r\nc d\r\ne");
    SV::String token;
    for (const char* expected : {"a", "b"}) {
        ASSERT_TRUE(parser->GetNextToken(token));
        EXPECT_EQ(token, expected);
    }
    EXPECT_EQ(parser->GetTokenOffset(), 4);       // behind the line, less one blank
    EXPECT_EQ(parser->GetNextTokenOffset(), 10);  // "c": behind its line
    EXPECT_EQ(parser->GetCurrentLineOffset(), 5);
    EXPECT_EQ(parser->GetSavedOffset(), -1);
    parser->SaveOffset();
    while (parser->GetNextToken(token)) {
    }

    ASSERT_TRUE(parser->MoveTo(parser->GetSavedOffset(), parser->GetSavedLineNum()));
    EXPECT_EQ(parser->GetLookAheadLineNumber(), 3);  // the line feed at offset 4 is a line
    ASSERT_TRUE(parser->GetNextToken(token));
    EXPECT_EQ(token, "c");
    EXPECT_FALSE(parser->MoveTo(-1, 7));
    EXPECT_FALSE(parser->MoveTo(100, 7));
    EXPECT_FALSE(parser->GetNextToken(token));
}

TEST_F(TextParser, KeepsItsLineWhenTheReaderIsMovedBehindItsBack) {
    const auto parser = parserOf("one two\n  three four\n" + filler(3 * kBlockSize));
    SV::String token, line;
    for (int i = 0; i < 2; ++i) ASSERT_TRUE(parser->GetNextToken(token));
    while (parser->GetLineReader()->GetLine(line)) {
    }
    SV::String spaces;
    parser->GetSpacesToken(spaces);
    EXPECT_EQ(spaces, "\n  ");
    EXPECT_TRUE(parser->IsNext("three"));
    for (const char* expected : {"three", "four"}) {
        ASSERT_TRUE(parser->GetNextToken(token));
        EXPECT_EQ(token, expected);
    }
    EXPECT_FALSE(parser->GetNextToken(token));
}

TEST_F(TextParser, CutsTokensOfAnyLength) {
    const CharacterLocale locale(kGerman);
    for (const std::size_t size : {1, 22, 23, 24, 31, 32, 33, 63, 64, 65, 1000}) {
        for (std::size_t before = 0; before < 34; ++before) {
            std::string word(size, 'w');
            word[before * 7 % size] = '\xFC';
            const auto parser = parserOf(std::string(before, ' ') + word + "[" + word + "\n");
            SV::String token;
            for (const std::string& expected : {word, std::string("["), word}) {
                ASSERT_TRUE(parser->GetNextToken(token));
                ASSERT_EQ(token, expected) << before;
            }
            ASSERT_FALSE(parser->GetNextToken(token));
        }
    }
}

// Two lines of its own; counts what its owner does with it.
class ListReader : public ZelLineReader {
public:
    struct Calls {
        int init = 0, done = 0, deleted = 0;
    };

    ListReader(Calls& calls, bool isReady) : m_calls(calls), m_isReady(isReady) {}
    ~ListReader() override { ++m_calls.deleted; }

    bool Init() override { return ++m_calls.init, m_isReady; }
    bool Done() override { return ++m_calls.done, true; }
    bool GetLine(SV::String& line) override {
        if (m_line == 2) return false;
        line = m_line++ == 0 ? "one" : "two three\nfour\n";  // no line feed; one inside
        return true;
    }
    std::int64_t GetCurrentOffset() const override { return 10 * m_line; }
    bool Is2CharsForNewline() const override { return false; }

private:
    Calls& m_calls;
    bool m_isReady;
    int m_line = 0;
};

TEST_F(TextParser, OwnsAnyReader) {
    ListReader::Calls calls;
    {
        auto* const reader = new ListReader(calls, true);
        ZelTextParser parser(reader);
        EXPECT_EQ(parser.GetLineReader(), reader);
        EXPECT_FALSE(parser.MoveTo(0, 0));  // no file
        std::string tokens;
        SV::String token;
        while (parser.GetNextToken(token)) {
            tokens += token.c_str();
            tokens += '@' + std::to_string(parser.GetTokenOffset()) + ' ';
        }
        EXPECT_EQ(tokens, "one@10 two@20 three@19 four@19 ");
        EXPECT_EQ(calls.done, 0);
    }
    EXPECT_EQ(calls.init, 1);
    EXPECT_EQ(calls.done, 1);
    EXPECT_EQ(calls.deleted, 1);
}

TEST_F(TextParser, IsAtTheEndWhenThereIsNothingToRead) {
    ListReader::Calls calls;
    for (ZelLineReader* reader : {static_cast<ZelLineReader*>(new ListReader(calls, false)),
                                  static_cast<ZelLineReader*>(nullptr)}) {
        ZelTextParser parser(reader);
        SV::String text("x");
        EXPECT_FALSE(parser.IsOkay());
        EXPECT_FALSE(parser.GetNextToken(text));
        EXPECT_FALSE(parser.SkipLine());
        EXPECT_FALSE(parser.MoveTo(0, 0));
        EXPECT_FALSE(parser.GetUntil('x', text, true, '\\'));
        EXPECT_EQ(text, "");
        EXPECT_EQ(parser.GetLookAheadLineNumber(), 0);
    }
}

// What a caller can see of a parser.
std::vector<std::int64_t> stateOf(const ZelTextParser& parser) {
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

std::vector<std::int64_t> stateOf(const ModelParser& model) {
    return {model.lastLineNumber,    model.lookAheadLineNumber, model.tokenOffset,
            model.nextTokenOffset,   model.savedOffset,         model.savedLineNumber,
            model.currentLineOffset, model.tokenCount,          model.okay,
            model.reader.offset()};
}

class RandomUse {
public:
    explicit RandomUse(unsigned seed) : m_random(seed) {}

    std::string text() {
        static constexpr std::string_view kAlphabet = "ab1,._\\\"[] \t \n\n\r\xE4\xA0";
        // Half of the texts cross the end of a block.
        std::string text = pick(2) ? filler(kBlockSize - pick(40), 3000) : "";
        for (std::size_t left = pick(60); left > 0; --left)
            text += kAlphabet[pick(kAlphabet.size())];
        return text;
    }

    // Does the same to both; the result and the texts of both in two strings.
    void step(ZelTextParser& parser, ModelParser& model, std::string& got, std::string& expected) {
        SV::String text;
        std::string modelText;
        const char stop = "\"\n]a"[pick(4)];
        const bool consumeStop = pick(2) != 0;
        bool result = true, modelResult = true;
        switch (pick(12)) {
            default:
                result = parser.GetNextToken(text);
                modelResult = model.getNextToken(modelText);
                break;
            case 0:
                result = parser.GetUntil(stop, text, consumeStop, '\\');
                modelResult = model.readUntil(stop, modelText, consumeStop, "\\");
                break;
            case 1: {
                std::string unused;
                result = parser.SkipUntil(stop, consumeStop);
                modelResult = model.readUntil(stop, unused, consumeStop, nullptr);
                break;
            }
            case 2:
                result = parser.SkipLine();
                modelResult = model.skipLine();
                break;
            case 3:
                result = parser.SkipToken();
                modelResult = model.skipToken();
                break;
            case 4:
                parser.SaveOffset();
                model.saveOffset();
                break;
            case 5:
                parser.KeepTokenOffset();
                model.keepTokenOffset = true;
                break;
            case 6:
                if (pick(3)) break;
                result = parser.MoveTo(model.savedOffset, model.savedLineNumber);
                modelResult = model.moveTo(model.savedOffset, model.savedLineNumber);
                break;
        }
        SV::String lookAhead, spaces;
        parser.GetLookAheadToken(lookAhead);
        parser.GetSpacesToken(spaces);
        got = describe(result, text, lookAhead, spaces);
        expected = describe(modelResult, modelText, model.lookAhead, model.spaces);
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }

    static std::string describe(bool result, std::string_view text, std::string_view lookAhead,
                                std::string_view spaces) {
        std::string all = result ? "yes" : "no";
        for (std::string_view part : {text, lookAhead, spaces}) all.append(" | ").append(part);
        return all;
    }

    std::mt19937 m_random;
};

TEST_F(TextParser, DoesWhatTheModelDoes) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        RandomUse use(seed);
        const CharacterLocale locale(seed % 4 < 2 ? "C" : kGerman);
        const std::string text = use.text();
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " +
                     text.substr(text.find_last_of('f') + 1));
        const int flags = seed % 2 ? ZelTextParser::kCommaIsDelimiter : 0;
        const auto parser = parserOf(text, flags);
        ModelParser model(text, flags != 0);
        for (int i = 0; i < 200; ++i) {
            std::string got, expected;
            use.step(*parser, model, got, expected);
            ASSERT_EQ(got, expected) << "step " << i;
            ASSERT_EQ(stateOf(*parser), stateOf(model)) << "step " << i;
        }
    }
}

}  // namespace
