#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

#include "zbasic/ztools.h"

namespace {

using Texts = std::vector<SV::String>;

Texts split(const SV::String& text, const char* separator) {
    ZelVectorSequence<SV::String> tokens;
    tokens.append("from before");
    Zel_SplitIntoTokens(text, separator, tokens);
    return tokens.elements();
}

struct SplitCase {
    const char* why;
    SV::String text;
    const char* separator;
    Texts expected;
};

const SplitCase kSplits[] = {
    {"in the middle", "a;b", ";", {"a", "b"}},
    {"nothing between", "a;;b", ";", {"a", "", "b"}},
    {"at the end", "a;", ";", {"a", ""}},
    {"at the start", ";a", ";", {"", "a"}},
    {"none", "a", ";", {"a"}},
    {"empty text", "", ";", {""}},
    {"empty separator", "a", "", {}},
    {"null separator", "a", nullptr, {}},
    {"several characters", "a::b:c::", "::", {"a", "b:c", ""}},
    {"they do not overlap", ":::", "::", {"", ":"}},
    {"separator longer than the text", "a:", "a:b", {"a:"}},
    {"nothing but the separator", "::", "::", {"", ""}},
    {"NUL bytes are text", SV::String("a\0;b", 4), ";", {SV::String("a\0", 2), "b"}},
    {"bytes above 127", "\xE4\xFF\xE4", "\xFF", {"\xE4", "\xE4"}},
};

TEST(ToolsSplit, SplitsAtASeparator) {
    for (const auto& [why, text, separator, expected] : kSplits) {
        SCOPED_TRACE(why);
        const SV::String copy = text;
        EXPECT_EQ(split(text, separator), expected);
        EXPECT_EQ(text, copy);
        if (!separator || separator[0] == '\0' || separator[1] != '\0') continue;
        ZelVectorSequence<SV::String> tokens;
        Zel_SplitIntoTokens(text, separator[0], tokens);
        EXPECT_EQ(tokens.elements(), expected);
    }
}

TEST(ToolsSplit, KnowsNoNulSeparator) {
    ZelVectorSequence<SV::String> tokens;
    tokens.append("from before");
    Zel_SplitIntoTokens(SV::String("a\0b", 3), '\0', tokens);
    EXPECT_TRUE(tokens.elements().empty());
}

TEST(ToolsSplit, SplitsAnElementOfItsOwnResult) {
    ZelVectorSequence<SV::String> tokens;
    tokens.append("a longer text than fits into the object;b");
    Zel_SplitIntoTokens(tokens.elements()[0], ';', tokens);
    EXPECT_EQ(tokens.elements(), (Texts{"a longer text than fits into the object", "b"}));
}

TEST(ToolsSplit, IsUndoneByJoining) {
    std::mt19937 random(3);
    for (std::size_t size = 0; size < 300; ++size) {
        std::string text(size, '\0');
        for (char& c : text) c = "abcdefg;"[random() % (size % 2 ? 8 : 40) % 8];
        for (const std::string separator : {";", "a", "ab", ";;"}) {
            const Texts tokens = split(SV::String(text), separator.c_str());
            ASSERT_FALSE(tokens.empty());
            std::string joined(tokens[0]);
            for (std::size_t i = 1; i < tokens.size(); ++i) {
                joined += separator + std::string(tokens[i]);
            }
            EXPECT_EQ(joined, text);
            for (const SV::String& token : tokens) EXPECT_EQ(token.find(separator), token.npos);
        }
    }
}

TEST(ToolsSplit, TakesTextUpToACharacter) {
    SV::String out = "before";
    const auto until = [&out](const char* text, char stop) {
        zel_getuntil(text, stop, out);
        return out;
    };
    EXPECT_EQ(until("a;b;c", ';'), "a;");
    EXPECT_EQ(until(";", ';'), ";");
    EXPECT_EQ(until("abc", ';'), "abc");
    EXPECT_EQ(until("", ';'), "");
    EXPECT_EQ(until("abc", '\0'), "abc");
    EXPECT_EQ(until(nullptr, ';'), "");
    out = "its own text, which is longer; than that";
    EXPECT_EQ(until(out.c_str(), ';'), "its own text, which is longer;");
}

TEST(ToolsSplit, CountsACharacter) {
    EXPECT_EQ(zel_charcount("a;b;", ';'), 2);
    EXPECT_EQ(zel_charcount("abc", ';'), 0);
    EXPECT_EQ(zel_charcount("abc", '\0'), 0);
    EXPECT_EQ(zel_charcount("", ';'), 0);
    EXPECT_EQ(zel_charcount(nullptr, ';'), 0);
    EXPECT_EQ(zel_charcount(std::string(10'000, '\xFF').c_str(), '\xFF'), 10'000);
}

TEST(ToolsSplit, ReplacesACharacter) {
    char text[] = "a;b;;";
    zel_charreplace(text, ';', ',');
    EXPECT_STREQ(text, "a,b,,");
    zel_charreplace(text, ',', '\0');
    EXPECT_EQ(std::string_view(text, 5), std::string_view("a\0b\0\0", 5));
    zel_charreplace(nullptr, 'a', 'b');
    char* const constant = const_cast<char*>("not to be written");
    zel_charreplace(constant, 'n', 'n');
    zel_charreplace(constant, 'x', 'y');
}

const std::pair<const char*, const char*> kNextNames[] = {
    {"Model", "Model (2)"},
    {"Model (2)", "Model (3)"},
    {"Plan (9)", "Plan (10)"},
    {"f(x)", "f(1)"},
    {"f()", "f(1)"},
    {"(1)(2)", "(1)(3)"},
    {"f( 7)", "f(8)"},
    {"f(+7x)", "f(8)"},
    {"f(-1)", "f(0)"},
    {"f(2147483647)", "f(2147483648)"},
    {"f(9223372036854775807)", "f(1)"},  // no successor in 64 bits
    {"f(9223372036854775808)", "f(1)"},
    {"Model (2) ", "Model (2)  (2)"},
    {"a)", "a) (2)"},  // a caller's mistake, like the next; other names than before they give
    {"", " (2)"},
};

TEST(ToolsName, GivesTheNextName) {
    for (const auto& [text, expected] : kNextNames) {
        SV::String name = text;
        const SV::String sharing = name;
        Zel_MakeNextName(name);
        EXPECT_EQ(name, expected);
        EXPECT_EQ(sharing, text);
    }
}

const std::pair<const char*, const char*> kParentheses[] = {
    {"(a)", "(a)"},
    {"a+b", "(a+b)"},
    {"(a)(b)", "((a)(b))"},
    {"((a)(b))", "((a)(b))"},
    {" \t\r\n(a)\n ", " \t\r\n(a)\n "},
    {"\v(a)", "(\v(a))"},  // no blank
    {"(a)b", "((a)b)"},
    {"a(b)", "(a(b))"},
    {"", "()"},
    {" ", "( )"},
    {"()", "()"},
    {"(", "(()"},
    {")", "())"},
    {")(", "()()"},
    {"((a)", "((a)"},  // nothing closes the first one before the last
    {"(a))", "((a)))"},
};

TEST(ToolsName, EnclosesWhatIsNotEnclosed) {
    for (const auto& [text, expected] : kParentheses) {
        EXPECT_EQ(Zel_EnsureSurroundingParentheses(text), expected);
    }
}

TEST(ToolsError, GivesTheTextOfACode) {
    ZelStringAcceleratorTable& table = ZelStringAcceleratorTable::GetGlobal();
    const auto textOf = [](int code) -> const SV::String& {
        return Zel_GetErrorString(static_cast<ZelErrorCode>(code));
    };
    EXPECT_EQ(textOf(1), "");  // nobody has set any
    table.SetElement(kUnknownErrorIndex, "unknown");
    for (const int code : {1, 4998}) {
        table.SetElement(Zel_GetErrorStringIndex(static_cast<ZelErrorCode>(code)),
                         SV::String("error ") + std::to_string(code));
    }
    const SV::String& first = textOf(1);
    for (std::size_t index = 10'000; index < 20'000; ++index) table.SetElement(index, "more");
    EXPECT_EQ(first, "error 1");
    EXPECT_EQ(textOf(4998), "error 4998");
    for (const int code : {0, -1, 2, 4999, 64, INT_MAX, INT_MIN}) {
        EXPECT_EQ(&textOf(code), &table.GetElement(64)) << code;
    }
    EXPECT_EQ(textOf(2), "unknown");
    table.SetElement(Zel_GetErrorStringIndex(static_cast<ZelErrorCode>(1)), "changed");
    EXPECT_EQ(first, "changed");
    EXPECT_EQ(table.GetElement(static_cast<std::size_t>(-1)), "");
}

}  // namespace
