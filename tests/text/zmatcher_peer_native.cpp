// Generated expressions against the C library's `regexec`. A `TEST` of the suite that also runs
// under Windows, where there is no such library.

#include <gtest/gtest.h>
#include <regex.h>

#include <memory>
#include <random>
#include <string>

#include "text/patternengine.h"

namespace {

class Generator {
public:
    // A fixed seed: the same expressions every time.
    std::string expression() {
        const std::string core = part(4);
        return (one(8) ? "^" : "") + core + (one(8) ? "$" : "");
    }
    std::string text() {
        std::string text(pick(14), ' ');
        for (char& c : text) c = letter();
        return text;
    }

private:
    std::size_t pick(std::size_t count) { return m_random() % count; }
    bool one(std::size_t of) { return pick(of) == 0; }
    char letter() { return static_cast<char>('a' + pick(3)); }

    // No anchors within: the peer lets a repeated ^ match behind the start ("(^a)*" on "aa").
    std::string part(int depth) {
        static constexpr const char* kAtoms[] = {"a", "b", "c", ".", "[ab]", "[^a]", "[b-c]"};
        static constexpr const char* kRepeats[] = {"*",     "+",    "?",    "{2}", "{0,1}",
                                                   "{1,3}", "{2,}", "{,2}", "{0}", "{2}{1,2}"};
        switch (depth > 0 ? pick(7) : 0) {
            case 0:
                return kAtoms[pick(std::size(kAtoms))];
            case 1:
            case 2:
                return part(depth - 1) + part(depth - 1);
            case 3:
                return "(" + part(depth - 1) + "|" + part(depth - 1) + ")";
            case 4:
                return kAtoms[pick(std::size(kAtoms))] +
                       std::string(kRepeats[pick(std::size(kRepeats))]);
            default:
                return "(" + part(depth - 1) + ")" + kRepeats[pick(std::size(kRepeats))];
        }
    }

    std::mt19937 m_random{20261125};
};

struct Answer {
    bool isMatch;
    std::size_t start;
    std::size_t end;
    bool operator==(const Answer&) const = default;
};

void PrintTo(const Answer& answer, std::ostream* stream) {
    *stream << (answer.isMatch ? "match " : "no match ") << answer.start << " to " << answer.end;
}

Answer ofPeer(const regex_t& expression, const std::string& text) {
    regmatch_t match{};
    if (regexec(&expression, text.c_str(), 1, &match, 0) != 0) return {false, 0, 0};
    return {true, static_cast<std::size_t>(match.rm_so), static_cast<std::size_t>(match.rm_eo)};
}

Answer ofEngine(PatternEngine& engine, const std::string& text) {
    PatternEngine::Match match{};
    const bool isMatch = engine.search(text, &match) == 0;
    EXPECT_EQ(engine.search(text, nullptr) == 0, isMatch);
    return {isMatch, match.start, match.end};
}

Answer ofAutomaton(PatternAutomaton& forward, PatternAutomaton& backward, const std::string& text) {
    PatternAutomaton::Window window{};
    const bool isMatch = forward.contains(text, &window);
    EXPECT_EQ(forward.contains(text, nullptr), isMatch);
    if (!isMatch) return {false, 0, 0};
    const std::size_t start = backward.leftmostStart(text, window);
    return {true, start, forward.longestEnd(text, start)};
}

TEST(Matcher, AgreesWithAnotherEngine) {
    constexpr int kExpressions = 700;
    constexpr int kTexts = 12;
    Generator generator;
    int matches = 0;
    for (int i = 0; i < kExpressions; ++i) {
        const std::string expression = generator.expression();
        SCOPED_TRACE(expression);
        regex_t peer;
        ASSERT_EQ(regcomp(&peer, expression.c_str(), REG_EXTENDED), 0);
        std::unique_ptr<PatternEngine> engine;
        ASSERT_EQ(PatternEngine::make(expression, false, engine), 0);
        PosixPattern pattern;
        ASSERT_EQ(parsePosixPattern(expression, false, pattern), 0);
        PatternAutomaton forward(pattern, PatternProgram::Direction::kForward);
        PatternAutomaton backward(pattern, PatternProgram::Direction::kBackward);
        for (int k = 0; k < kTexts; ++k) {
            const std::string text = generator.text();
            SCOPED_TRACE(text);
            const Answer expected = ofPeer(peer, text);
            EXPECT_EQ(ofEngine(*engine, text), expected);
            EXPECT_EQ(ofAutomaton(forward, backward, text), expected);
            matches += expected.isMatch;
        }
        regfree(&peer);
    }
    EXPECT_GT(matches, kExpressions);  // the texts are not all beside the point
}

TEST(Matcher, KeepsItsAnswersWhenItForgetsStates) {
    // 2^14 states: which of the last bytes were an "a".
    std::unique_ptr<PatternEngine> engine;
    ASSERT_EQ(PatternEngine::make("(a|b)*a(a|b){13}c", false, engine), 0);
    std::mt19937 random(7);
    std::string text(20'000, 'a');
    for (char& c : text) c = random() % 2 ? 'a' : 'b';
    const std::string match = text + "abbbbbbbbbbbbbc";
    EXPECT_EQ(ofEngine(*engine, match + "b"), (Answer{true, 0, match.size()}));
    EXPECT_EQ(ofEngine(*engine, text + "bbbbbbbbbbbbbbc"), (Answer{false, 0, 0}));
}

}  // namespace
