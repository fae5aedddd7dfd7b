// Rewriting names and expressions.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <limits>

#include "zbasic/ztools.h"

namespace {

constexpr std::string_view kBlanks = "\t\n\r ";

// The number plus one at the start of a text as `atoi` reads it: behind white space and a sign;
// 0 when there is none, and also when it has no successor: names then begin anew instead of ending.
SV::String successor(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    if (number == std::numeric_limits<std::int64_t>::max()) number = 0;
    char digits[24];
    return {digits, static_cast<std::size_t>(
                        std::to_chars(digits, std::end(digits), number + 1).ptr - digits)};
}

// Whether the parenthesis in front is closed by the one at the end.
bool isEnclosed(std::string_view text) {
    if (text.size() < 2 || text.front() != '(' || text.back() != ')') return false;
    std::ptrdiff_t depth = 0;
    for (const char c : text.substr(0, text.size() - 1)) {
        if (c == '(') ++depth;
        if (c == ')' && --depth == 0) return false;
    }
    return true;
}

}  // namespace

void Zel_MakeNextName(SV::String& name) {
    const std::size_t open = name.rfind('(');
    if (!std::string_view(name).ends_with(')') || open == SV::String::npos) {
        name += " (2)";
        return;
    }
    const std::size_t first = open + 1;
    const std::size_t size = name.size() - 1 - first;
    name.replace(first, size, successor(std::string_view(name).substr(first, size)));
}

SV::String Zel_EnsureSurroundingParentheses(const SV::String& expression) {
    const std::string_view text = expression;
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first != std::string_view::npos) {
        const std::size_t last = text.find_last_not_of(kBlanks);
        if (isEnclosed(text.substr(first, last + 1 - first))) return expression;
    }
    return "(" + expression + ")";
}
