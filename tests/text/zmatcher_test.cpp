#include "zbasic/zmatcher.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

constexpr int kIgnoreCase = 2;
constexpr int kNoPositions = 4;

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

struct Span {
    int start;
    int end;
    bool operator==(const Span&) const = default;
};
constexpr Span kNowhere = {-1, -1};

void PrintTo(const Span& span, std::ostream* stream) {
    *stream << span.start << " to " << span.end;
}

// With positions and without, by either function.
template <class Matcher>
Span matchOf(const Matcher& matcher, const std::string& text) {
    Span span = {7, 7};
    const int isMatch = matcher.match(text.c_str(), span.start, span.end);
    EXPECT_EQ(matcher.match(text.c_str()), isMatch);
    EXPECT_EQ(isMatch, span.start >= 0 ? 1 : 0);
    return span;
}

struct PositionCase {
    const char* why;
    const char* pattern;
    const char* text;
    Span expected;
};

// Positions of `grep -obE` (GNU grep 3.8, LC_ALL=C), where it has them: the first line that it
// prints; the rest, marked so, by hand.
const PositionCase kPositions[] = {
    {"literal", "ab", "xxaby", {2, 4}},
    {"leftmost, not longest of all", "b+|abbbb", "abbbbbb", {0, 5}},
    {"longest, not first alternative", "a|ab|abc", "abcd", {0, 3}},
    {"longest over two parts", "(a|ab)(c|bcd)", "abcd", {0, 4}},
    {"an optional part that is better left out", "a?(ab)?", "ab", {0, 2}},
    {"star takes all", "xa*", "yxaaab", {1, 5}},
    {"plus needs one", "xa+", "x xaa", {2, 5}},
    {"question mark", "colou?r", "the colour", {4, 10}},
    {"bounds", "a{2,3}", "a aaaa", {2, 5}},
    {"bounds without an end", "(ab){2,}", "ab ababab", {3, 9}},
    {"bounds without a beginning", "xa{,2}y", "xaaay xay", {6, 9}},
    {"exact count of alternatives", "(ab|c){3}", "ababcabx", {0, 5}},
    {"repetition of a repetition", "xa{2}{1,2}y", "xaaay xaaaay", {6, 12}},
    {"start of the text", "^a", "ba", kNowhere},
    {"end of the text", "a$", "aba", {2, 3}},
    {"anchors within", "(^|x)a(y|$)", "bxa", {1, 3}},
    {"an anchor that cannot hold", "a^b", "a^b", kNowhere},
    {"any character", "a.c", "ac abc", {3, 6}},
    {"set", "[xyz]b", "ab zb", {3, 5}},
    {"negated set", "[^a]b", "ab cb", {3, 5}},
    {"range", "[b-d]+", "abcde", {1, 4}},
    {"closing bracket first", "[]a]+", "x]a]", {1, 4}},
    {"closing bracket first, negated", "[^]a]+", "]ax]", {2, 3}},
    {"hyphen last", "[a-]+", "x-a-", {1, 4}},
    {"range that ends in a hyphen", "[+--]+", "a,-+b", {1, 4}},
    {"backslash in a set is no escape", "[\\.]+", "a\\.b", {1, 3}},
    {"class", "[[:digit:]]+", "ab12c", {2, 4}},
    {"printable characters, blanks among them",
     "[[:print:]]+",
     "\t\x01"
     "a b\n",
     {2, 5}},
    {"negated classes", "[^[:alpha:][:space:]]+", "a b12", {3, 5}},
    {"equivalence class", "[[=a=]b]+", "xab", {1, 3}},
    {"collating element", "[[.-.]a]+", "x-a", {1, 3}},
    {"escaped specials", "\\(\\*\\)\\.\\[\\\\", "x(*).[\\", {1, 7}},
    {"braces and brackets that close nothing", "a}b]", "xa}b]", {1, 5}},
    {"back reference", "(a|b)x\\1", "axb bxb", {4, 7}},
    {"back reference to a later group", "(a)(b|c)\\2", "abc acc", {4, 7}},
    {"identifier", "[A-Z][a-z]+_[0-9]+", "x Server_12,", {2, 11}},
    {"ten words",
     "client|server|node|edge|graph|model|label|width|height|color",
     "the modelgraph",
     {4, 9}},
    {"anchored with a star", "^.*\\.txt$", "a.txt.txt", {0, 9}},
    {"anchored with a star, no", "^.*\\.txt$", "a.txt.tx", kNowhere},
    {"gap: first start, last end", "a.*b", "xaabab-", {1, 6}},
    {"nested stars", "(a*)*b", "aaab", {0, 4}},
    // By hand: grep has lines and no empty matches.
    {"empty expression", "", "abc", {0, 0}},
    {"empty alternative", "a|", "ba", {0, 0}},
    {"empty group", "a()b", "xab", {1, 3}},
    {"dot matches a line feed", "a.b", "a\nb", {0, 3}},
    {"negated set matches a line feed", "a[^x]b", "a\nb", {0, 3}},
    {"no ^ behind a line feed", "^b", "a\nb", kNowhere},
    {"no $ before a line feed", "a$", "a\n", kNowhere},
    {"empty text", "^$", "", {0, 0}},
    {"anchors the other way round", "$^", "", {0, 0}},
    {"nothing is in this set", "[^\x01-\xFF]", "a", kNowhere},
};

TEST(Matcher, FindsTheLeftmostLongestMatch) {
    for (const auto& [why, pattern, text, expected] : kPositions) {
        SCOPED_TRACE(why);
        for (const int flags : {0, kNoPositions, 1 | 8}) {
            EXPECT_EQ(matchOf(ZelRegEx(pattern, flags), text), expected);
        }
        EXPECT_EQ(matchOf(ZelRegEx2(pattern, 0), text), expected);
    }
}

// The same answers when the text is too long for one engine and goes to another.
TEST(Matcher, FindsTheSameInLongTexts) {
    constexpr int kSize = 200'000;
    for (const auto& [why, pattern, text, expected] : kPositions) {
        const bool isAnchored = std::string(pattern).find_first_of("^$") != std::string::npos;
        if (isAnchored || expected == kNowhere || ZelRegEx(pattern, 0).match("")) continue;
        SCOPED_TRACE(why);
        const std::string longText = std::string(kSize, '\t') + text;
        EXPECT_EQ(matchOf(ZelRegEx(pattern, 0), longText),
                  (Span{expected.start + kSize, expected.end + kSize}));
    }
}

TEST(Matcher, FindsTheFirstHitWhereverItIs) {
    const ZelRegEx expression("ab", 0);
    for (int place = 0; place < 200; ++place) {
        const std::string text = repeated("-", place) + "ab" + repeated("-", 200 - place) + "ab";
        int start = 0;
        int end = 0;
        EXPECT_TRUE(expression.match(text.c_str(), start, end));
        EXPECT_EQ(start, place);
    }
}

struct FlagCase {
    const char* why;
    const char* pattern;
    int flags;
    const char* text;
    Span expected;
};

TEST(Matcher, IgnoresCaseByTheCodePage) {
    const FlagCase kCases[] = {
        {"letters", "SeRvEr", kIgnoreCase, "a sErVeR", {2, 8}},
        {"not without the flag", "Server", 0, "a server", kNowhere},
        {"sets", "[a-c]+", kIgnoreCase, "xAbC", {1, 4}},
        {"negated sets", "[^a]+", kIgnoreCase, "Aab", {2, 3}},
        {"classes", "[[:upper:]]+", kIgnoreCase, "1ab", {1, 3}},
        {"umlauts", "\xC4\xF6\xDC", kIgnoreCase, "x\xE4\xD6\xFC", {1, 4}},
        {"pairs that are not 32 apart", "\x8A\x9E\xFF", kIgnoreCase, "\x9A\x8E\x9F", {0, 3}},
        {"sharp s has no other case", "\xDF", kIgnoreCase, "\xDFS", {0, 1}},
        {"multiplication and division sign are no pair", "\xD7", kIgnoreCase, "\xF7", kNowhere},
        {"back reference", "(a+)x\\1", kIgnoreCase, "aAxAa", {0, 5}},
        {"umlauts are letters", "[[:alpha:]]+", 0, "1\xE4\xDF\x8A!", {1, 4}},
        {"high punctuation", "[[:punct:]]+", 0, "a\x84\xBB", {1, 3}},
        {"no-break space", "[[:space:]]+", 0, "a\xA0", {1, 2}},
        {"ranges go by the byte", "[\xC0-\xC6]+", 0, "A\xC4", {1, 2}},
    };
    for (const char* const locale : {"C", ".1251", "German_Germany.1252", "de_DE.UTF-8"}) {
        if (!std::setlocale(LC_ALL, locale)) continue;  // another machine's
        const std::string before = std::setlocale(LC_ALL, nullptr);
        for (const auto& [why, pattern, flags, text, expected] : kCases) {
            SCOPED_TRACE(std::string(locale) + ": " + why);
            EXPECT_EQ(matchOf(ZelRegEx(pattern, flags), text), expected);
        }
        EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    }
    std::setlocale(LC_ALL, "C");
}

TEST(Matcher, RefusesWhatIsNoExpression) {
    const struct {
        const char* pattern;
        int code;
    } kCases[] = {
        {nullptr, REG_BADPAT},
        {"[[.ab.]]", REG_ECOLLATE},
        {"[[=ab=]]", REG_ECOLLATE},
        {"[[:foo:]]", REG_ECTYPE},
        {"[[::]]", REG_ECTYPE},
        {"a\\", REG_EESCAPE},
        {"\\1", REG_ESUBREG},
        {"(a)\\2", REG_ESUBREG},
        {"(a\\1)", REG_ESUBREG},
        {"[", REG_EBRACK},
        {"[]", REG_EBRACK},
        {"[^]", REG_EBRACK},
        {"[a", REG_EBRACK},
        {"[a-", REG_EBRACK},
        {"[[:alpha:]", REG_EBRACK},
        {"[[:alpha]", REG_EBRACK},
        {"(", REG_EPAREN},
        {"(a", REG_EPAREN},
        {")", REG_EPAREN},
        {"a)", REG_EPAREN},
        {"((a)", REG_EPAREN},
        {"a{", REG_EBRACE},
        {"a{1", REG_EBRACE},
        {"a{1,", REG_EBRACE},
        {"a{1,2", REG_EBRACE},
        {"a{}", REG_BADBR},
        {"a{x}", REG_BADBR},
        {"a{1x}", REG_BADBR},
        {"a{2,1}", REG_BADBR},
        {"a{256}", REG_BADBR},
        {"a{99999999999}", REG_BADBR},
        {"[b-a]", REG_ERANGE},
        {"[a-c-e]", REG_ERANGE},
        {"[a-[:digit:]]", REG_ERANGE},
        {"*a", REG_BADRPT},
        {"a|*b", REG_BADRPT},
        {"(+a)", REG_BADRPT},
        {"?", REG_BADRPT},
        {"^*", REG_BADRPT},
        {"{1}", REG_BADRPT},
    };
    for (const auto& [pattern, code] : kCases) {
        SCOPED_TRACE(pattern ? pattern : "null");
        ZelRegEx expression;
        ASSERT_EQ(expression.regComp("a", 0, false), 0);
        EXPECT_EQ(expression.regComp(pattern, 0, false), code);
        EXPECT_TRUE(!expression);
        EXPECT_EQ(static_cast<void*>(expression), nullptr);
        EXPECT_EQ(expression.regExec("a", false), REG_NOMATCH);
        EXPECT_EQ(expression.match("a"), 0);
    }
}

TEST(Matcher, EndsOnHostilePatternsAndTexts) {
    const std::string many(100'000, 'a');
    const struct {
        const char* why;
        std::string pattern;
        int code;
        int result;
    } kCases[] = {
        {"nested stars", "(a*)*b", 0, 1},
        {"alternatives that overlap", "(a|aa)*b", 0, 1},
        {"stars in a row", repeated(".*", 20) + "[xy]", 0, 1},
        {"optional before the same", repeated("a?", 9'000) + "b", 0, 1},
        {"product of bounds", "a{1,255}{1,255}", REG_ESPACE, 1},
        {"product of bounds, nested", "((a{1,255}x?){1,255}y?){1,255}", REG_ESPACE, 1},
        {"product within limits", "(a{1,9}x?){1,99}b", 0, 1},
        {"repetition without end", "a" + std::string(100'000, '*'), 0, 0},
        {"repetition that doubles", "a" + repeated("{2}", 30'000), REG_ESPACE, 1},
        {"repetitions with gaps", "(a{3}){1,2}{3}{1,2}{3}{1,2}{3}", 0, 0},
        {"depth", repeated("(", 50'000) + repeated(")", 50'000), REG_ESPACE, 1},
        {"depth within limits", repeated("(", 250) + "a" + repeated(")*", 250), 0, 0},
        {"literal", many, 0, 0},
        {"literal that is longer than the text", many + "a", 0, 1},
        {"many alternatives", repeated("ab|", 9'000) + "x", 0, 1},
        {"a set often", repeated("[ab]", 25'000), 0, 0},
        {"back references", "(a*)(a*)(a*)\\1\\2\\3[bc]", 0, REG_ESPACE},
    };
    for (const auto& [why, pattern, code, result] : kCases) {
        SCOPED_TRACE(why);
        ZelRegEx expression;
        EXPECT_EQ(expression.regComp(pattern.c_str(), 0, false), code);
        EXPECT_EQ(expression.regExec(many.c_str(), false), result);
        int start = 0;
        int end = 0;
        EXPECT_EQ(expression.regExec(many.c_str(), start, end, false), result);
    }
}

TEST(Matcher, GivesNoPositionsWithoutAMatch) {
    ZelRegEx expression;
    Span span = {7, 7};
    EXPECT_EQ(expression.regExec("a", span.start, span.end, false), REG_NOMATCH);
    EXPECT_EQ(span, kNowhere);
    expression.regComp("a", 0, false);
    span = {7, 7};
    EXPECT_EQ(expression.regExec(nullptr, span.start, span.end, false), REG_NOMATCH);
    EXPECT_EQ(span, kNowhere);
    EXPECT_EQ(expression.match(nullptr), 0);
}

TEST(Matcher, CopiesShareWhatWasCompiled) {
    ZelRegEx first("a+", 0);
    ZelRegEx second(first);
    EXPECT_EQ(static_cast<void*>(first), static_cast<void*>(second));
    first.regComp("b+", 0, false);
    EXPECT_EQ(matchOf(second, "xaab"), (Span{1, 3}));
    EXPECT_EQ(matchOf(first, "xaab"), (Span{3, 4}));
    ZelRegEx& self = second;
    second = self;
    EXPECT_EQ(matchOf(second, "xaab"), (Span{1, 3}));
    second = first;
    EXPECT_EQ(static_cast<void*>(first), static_cast<void*>(second));
    second = "a.c";
    EXPECT_EQ(matchOf(second, "xabc"), (Span{1, 4}));
    EXPECT_EQ(matchOf(first, "b"), (Span{0, 1}));
}

class Counted : public __ZelRefCounted {
public:
    explicit Counted(bool& isDeleted) : m_isDeleted(isDeleted) {}
    int count() const { return m_count; }

protected:
    ~Counted() override { m_isDeleted = true; }

private:
    bool& m_isDeleted;
};

TEST(Matcher, SharedObjectsGoWithTheirLastReference) {
    bool isDeleted = false;
    auto* const object = new Counted(isDeleted);
    EXPECT_EQ(object->count(), 1);
    EXPECT_EQ(object->addRef(), object);
    // Relied on by callers: the count is copied.
    auto* const copy = new Counted(*object);
    EXPECT_EQ(copy->count(), 2);
    object->removeRef();
    EXPECT_FALSE(isDeleted);
    object->removeRef();
    EXPECT_TRUE(isDeleted);
    copy->removeRef();
    copy->removeRef();
}

constexpr int kAnyCase = 1;
constexpr int kAnywhere = 2;
constexpr int kWholeWords = 4;

TEST(Matcher, TakesWildcards) {
    const FlagCase kCases[] = {
        {"star", "*.txt", 0, "a.txt", {0, 5}},
        {"star for nothing", "*.txt", 0, ".txt", {0, 4}},
        {"all of the text", "*.txt", 0, "a.txt.bak", kNowhere},
        {"anywhere", "*.txt", kAnywhere, "a.txt.bak", {0, 5}},
        {"anywhere: longest", "a*b", kAnywhere, "xabcb-", {1, 5}},
        {"stars at both ends", "*server*", kAnyCase, "My Server 1", {0, 11}},
        {"question mark", "a?q", kAnyCase, "ABQ", {0, 3}},
        {"question mark for one", "a?q", 0, "aq", kNowhere},
        {"question mark for a line feed", "a?q", 0, "a\nq", {0, 3}},
        {"specials of expressions", "$(a)+.[\\^{|", 0, "$(a)+.[\\^{|", {0, 11}},
        {"plus is no repetition", "a+b", 0, "aab", kNowhere},
        {"plus is a plus", "a+b", 0, "a+b", {0, 3}},
        {"no escape with a backslash", "a\\*", 0, "a\\bc", {0, 4}},
        {"closing ones stand for themselves", "a]}", 0, "a]}", {0, 3}},
        {"several stars", "a*b**c", 0, "a-b-c-c", {0, 7}},
        {"pieces must not overlap", "ab*ba", 0, "aba", kNowhere},
        {"umlauts", "*\xC4*", kAnyCase, "x\xE4y", {0, 3}},
        {"empty: only the empty text", "", 0, "a", kNowhere},
        {"empty: the empty text", "", 0, "", {0, 0}},
        {"empty: anywhere", "", kAnywhere, "abc", {0, 0}},
        // Words; a match has what stands beside it, up to the ends of the text.
        {"word at the end", "cat", kWholeWords, "my cat", {2, 6}},
        {"word at the start", "cat", kWholeWords, "cat and", {0, 4}},
        {"word before punctuation", "cat", kWholeWords, "here and cat.", {8, 13}},
        {"part of a word", "cat", kWholeWords, "concatenate", kNowhere},
        {"star ends with the word", "con*", kWholeWords, "a concat b", {1, 9}},
        {"star does not cross words", "c*t", kWholeWords, "c t", kNowhere},
        {"question mark is no punctuation", "c?t", kWholeWords, "c.t", kNowhere},
        {"umlauts are no boundary", "cat", kWholeWords,
         "\xE4"
         "cat",
         kNowhere},
        {"a tab is no boundary", "cat", kWholeWords, "\tcat", kNowhere},
        {"words in any case", "CAT", kWholeWords | kAnyCase, "my cat", {2, 6}},
        {"whole words go before anywhere", "cat", kWholeWords | kAnywhere, "cats", kNowhere},
    };
    for (const auto& [why, pattern, flags, text, expected] : kCases) {
        SCOPED_TRACE(why);
        EXPECT_EQ(matchOf(ZelJokerz(pattern, flags), text), expected);
        EXPECT_EQ(matchOf(ZelJokerz2(pattern, flags), text), expected);
    }
}

TEST(Matcher, TakesHostileWildcards) {
    const std::string many(100'000, 'a');
    const std::string manyPairs = repeated("*a", 50'000);
    const struct {
        std::string pattern;
        int flags;
    } kCases[] = {
        {std::string(100'000, '*'), 0},
        {std::string(20'000, '*'), kWholeWords},
        {std::string(100'000, '?'), 0},
        {std::string(100'000, '?'), kAnyCase | kAnywhere},
        {manyPairs, 0},
        {manyPairs, kAnyCase | kAnywhere},
    };
    for (const auto& [pattern, flags] : kCases) {
        const ZelJokerz wildcard(pattern.c_str(), flags);
        ASSERT_FALSE(!wildcard);
        EXPECT_EQ(wildcard.match(many.c_str()), 1);
    }
    EXPECT_TRUE(!ZelJokerz(nullptr, 0));
    EXPECT_TRUE(!ZelJokerz());
    EXPECT_EQ(ZelJokerz().match("a"), 0);
}

// Relied on by callers: an assigned text is an expression.
TEST(Matcher, WildcardsBecomeExpressionsByAssignment) {
    ZelJokerz wildcard("a*", 0);
    const ZelJokerz copy = wildcard;
    wildcard = "b+$";
    EXPECT_EQ(matchOf(wildcard, "abb"), (Span{1, 3}));
    EXPECT_EQ(matchOf(copy, "abb"), (Span{0, 3}));
}

TEST(Matcher, EitherKindIsUsedThroughTheInterface) {
    const ZelRegEx2 expression("^a+$", 0);
    const ZelJokerz2 wildcard("a*", 0);
    const ZelJokerz2 unusable(nullptr, 0);
    for (const ZelMatcherI* matcher : {static_cast<const ZelMatcherI*>(&expression),
                                       static_cast<const ZelMatcherI*>(&wildcard)}) {
        EXPECT_NE(static_cast<void*>(*matcher), nullptr);
        EXPECT_FALSE(!*matcher);
        EXPECT_EQ(matcher->match("aaa"), 1);
        EXPECT_EQ(matcher->match("ba"), 0);
    }
    const ZelMatcherI& useless = unusable;
    EXPECT_TRUE(!useless);
    EXPECT_EQ(static_cast<void*>(useless), nullptr);
    EXPECT_EQ(useless.match(""), 0);
}

static_assert(sizeof(ZelRegEx) == sizeof(void*) && sizeof(ZelJokerz) == sizeof(void*));
static_assert(sizeof(ZelRegEx2) == 2 * sizeof(void*) && sizeof(ZelJokerz2) == 2 * sizeof(void*));

}  // namespace
