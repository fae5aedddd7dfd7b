// Matchers that are used again: whatever a matcher, or a copy of it, has searched before, it
// answers as a new one does. A byte of flags, the pattern up to a line feed, texts line by line.

#include <vector>

#include "input.h"
#include "zbasic/zmatcher.h"

namespace {

constexpr std::size_t kMostBytes = 200;

struct Answer {
    int result = 0;
    int start = -2;
    int end = -2;
    bool operator==(const Answer&) const = default;
};

template <class Matcher>
Answer answerOf(const Matcher& matcher, const std::string& text) {
    Answer answer;
    answer.result = matcher.match(text.c_str(), answer.start, answer.end);
    check(matcher.match(text.c_str()) == answer.result);
    const bool isMatch = answer.result == 1;
    check(isMatch || (answer.result == 0 && answer.start == -1 && answer.end == -1));
    const int size = static_cast<int>(text.size());
    if (isMatch) check(answer.start >= 0 && answer.start <= answer.end && answer.end <= size);
    return answer;
}

template <class Matcher>
void checkReuse(const std::string& pattern, int flags, const std::vector<std::string>& texts) {
    const Matcher matcher(pattern.c_str(), flags);
    if (!matcher) return;
    const Matcher copy(matcher);
    std::vector<Answer> answers;
    for (const std::string& text : texts) {
        answers.push_back(answerOf(matcher, text));
        const Matcher fresh(pattern.c_str(), flags);
        check(answerOf(fresh, text) == answers.back());
    }
    for (std::size_t i = texts.size(); i-- > 0;) check(answerOf(copy, texts[i]) == answers[i]);
}

// An expression with back references may give up, and then opens a box.
bool isForExpression(const std::string& pattern, int flags) {
    ZelRegEx matcher;
    return pattern.find('\\') == pattern.npos && matcher.regComp(pattern.c_str(), flags, 0) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > kMostBytes || std::find(data, data + size, 0) != data + size) return 0;
    Bytes input(data, size);
    const int flags = static_cast<int>(input.next() % 8);
    const std::string pattern(input.until('\n'));
    std::vector<std::string> texts;
    while (!input.isEmpty()) texts.emplace_back(input.until('\n'));
    if (isForExpression(pattern, flags)) checkReuse<ZelRegEx>(pattern, flags, texts);
    checkReuse<ZelJokerz>(pattern, flags, texts);
    return 0;
}
