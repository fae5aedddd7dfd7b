#include "zbasic/ztextparser.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "text/parser_fixture.h"

namespace {

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

}  // namespace
