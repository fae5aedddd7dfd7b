// Expressions: whatever is made of them, all the ways of searching agree, and with `regexec` where
// it takes the expression.

#include <regex.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "input.h"
#include "text/patternengine.h"

namespace {

struct Answer {
    bool isMatch = false;
    std::size_t start = 0;
    std::size_t end = 0;
    bool operator==(const Answer&) const = default;
};

Answer ofEngine(PatternEngine& engine, const std::string& text) {
    PatternEngine::Match match{};
    const ZelRegExError error = engine.search(text, &match);
    check(engine.search(text, nullptr) == error);
    check(error == 0 || error == REG_NOMATCH);
    return error == 0 ? Answer{true, match.start, match.end} : Answer{};
}

Answer ofAutomaton(const PosixPattern& pattern, const std::string& text) {
    PatternAutomaton forward(pattern, PatternProgram::Direction::kForward);
    PatternAutomaton backward(pattern, PatternProgram::Direction::kBackward);
    PatternAutomaton::Window window{};
    const bool isMatch = forward.contains(text, &window);
    check(forward.contains(text, nullptr) == isMatch);
    if (!isMatch) return {};
    const std::size_t start = backward.leftmostStart(text, window);
    return {true, start, forward.longestEnd(text, start)};
}

// The peer is wrong about repeated anchors and slow with nested bounds, doubles its memory with
// each "+" behind another, and has classes and cases of another code page.
bool isForPeer(const std::string& expression, const std::string& text) {
    const auto isForeign = [](char c) { return static_cast<unsigned char>(c) > 126; };
    return expression.find_first_of("^$\\{[:") == std::string::npos &&
           std::string(expression + text).find_first_of("\n\x7F") == std::string::npos &&
           std::count(expression.begin(), expression.end(), '+') <= 8 &&
           std::find_if(expression.begin(), expression.end(), isForeign) == expression.end();
}

void checkWithPeer(const std::string& expression, const std::string& text, const Answer& ours) {
    regex_t peer;
    if (regcomp(&peer, expression.c_str(), REG_EXTENDED) != 0) return;
    regmatch_t match{};
    Answer expected;
    if (regexec(&peer, text.c_str(), 1, &match, 0) == 0) {
        expected = {true, static_cast<std::size_t>(match.rm_so),
                    static_cast<std::size_t>(match.rm_eo)};
    }
    regfree(&peer);
    check(ours == expected);
}

}  // namespace

// Flags, the expression up to a line feed, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMaxSize = 120;
    if (size == 0 || size > kMaxSize) return 0;
    const std::string input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t border = input.find('\n');
    if (border == std::string::npos || input.find('\0') != std::string::npos) return 0;
    const std::string expression = input.substr(0, border);
    const std::string text = input.substr(border + 1);
    const bool ignoreCase = (data[0] & 1) != 0;
    std::unique_ptr<PatternEngine> engine;
    if (PatternEngine::make(expression, ignoreCase, engine) != 0) return 0;
    PosixPattern pattern;
    check(parsePosixPattern(expression, ignoreCase, pattern) == 0);
    if (pattern.hasBackReferences) {
        engine->search(text, nullptr);
        return 0;
    }
    const Answer ours = ofEngine(*engine, text);
    check(ours == ofAutomaton(pattern, text));
    if (!ignoreCase && isForPeer(expression, text)) checkWithPeer(expression, text, ours);
    return 0;
}
