// Wildcards against a matcher that tries everything, and through the expression that they become.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "core/wildcard.h"
#include "input.h"
#include "text/bytekinds.h"
#include "text/wildcard.h"
#include "zbasic/zmatcher.h"

namespace {

bool isSame(char a, char b, bool ignoreCase) {
    if (a == b) return true;
    return ignoreCase &&
           byteKinds().otherCase[static_cast<unsigned char>(a)] == static_cast<unsigned char>(b);
}

// Which ends in `text` a match of `pattern` from its start can have.
std::vector<bool> endsOf(std::string_view pattern, std::string_view text, bool ignoreCase) {
    std::vector<bool> ends(text.size() + 1, false);
    ends[0] = true;
    for (const char c : pattern) {
        std::vector<bool> next(text.size() + 1, false);
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (c == '*')
                next[i] = ends[i] || (i > 0 && next[i - 1]);
            else if (i > 0)
                next[i] = ends[i - 1] && (c == '?' || isSame(c, text[i - 1], ignoreCase));
        }
        ends = next;
    }
    return ends;
}

void checkWhole(const std::string& pattern, const std::string& text, bool ignoreCase) {
    const ZelJokerz wildcard(pattern.c_str(), ignoreCase ? kWildcardIgnoreCase : 0);
    check(!!wildcard);
    const bool expected = endsOf(pattern, text, ignoreCase).back();
    if (!ignoreCase) check(SV::matchesWildcard(pattern, text) == expected);
    check((wildcard.match(text.c_str()) != 0) == expected);
    int start = 0;
    int end = 0;
    check((wildcard.match(text.c_str(), start, end) != 0) == expected);
    check(expected ? start == 0 && end == static_cast<int>(text.size()) : start == -1 && end == -1);
}

void checkAnywhere(const std::string& pattern, const std::string& text, bool ignoreCase) {
    const int flags = kWildcardAnywhere | (ignoreCase ? kWildcardIgnoreCase : 0);
    const ZelJokerz wildcard(pattern.c_str(), flags);
    int start = 0;
    int end = 0;
    const bool isMatch = wildcard.match(text.c_str(), start, end) != 0;
    check((wildcard.match(text.c_str()) != 0) == isMatch);
    for (std::size_t from = 0; from <= text.size(); ++from) {
        const std::vector<bool> ends =
            endsOf(pattern, std::string_view(text).substr(from), ignoreCase);
        for (std::size_t size = ends.size(); size-- > 0;) {
            if (!ends[size]) continue;
            check(isMatch && start == static_cast<int>(from));
            check(end == static_cast<int>(from + size));
            return;
        }
    }
    check(!isMatch);
}

void checkWholeWords(const std::string& pattern, const std::string& text, bool ignoreCase) {
    const int flags = kWildcardWholeWords | (ignoreCase ? kWildcardIgnoreCase : 0);
    const ZelJokerz wildcard(pattern.c_str(), flags);
    int start = 0;
    int end = 0;
    const bool isMatch = wildcard.match(text.c_str(), start, end) != 0;
    check((wildcard.match(text.c_str()) != 0) == isMatch);
    check(isMatch == (start >= 0 && start <= end && end <= static_cast<int>(text.size())));
}

}  // namespace

// Flags, the pattern up to a line feed, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMaxSize = 300;
    if (size == 0 || size > kMaxSize) return 0;
    const std::string input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t border = input.find('\n');
    if (border == std::string::npos || input.find('\0') != std::string::npos) return 0;
    const std::string pattern = input.substr(0, border);
    const std::string text = input.substr(border + 1);
    const bool ignoreCase = (data[0] & 1) != 0;
    checkWhole(pattern, text, ignoreCase);
    checkAnywhere(pattern, text, ignoreCase);
    checkWholeWords(pattern, text, ignoreCase);
    return 0;
}
