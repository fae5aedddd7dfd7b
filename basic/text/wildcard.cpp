#include "text/wildcard.h"

namespace {

struct Pieces {
    std::string_view prefix;
    std::string_view anyCharacter;
    std::string_view suffix;
};

Pieces piecesFor(int flags) {
    if (flags & kWildcardWholeWords) {
        return {"(^|[ [:punct:]])", "[^ [:cntrl:][:punct:]]", "([ [:punct:]]|$)"};
    }
    if (flags & kWildcardAnywhere) return {"", ".", ""};
    return {"^", ".", "$"};
}

}  // namespace

std::string expressionOfWildcard(std::string_view pattern, int flags) {
    // Relied on by callers: "]" and "}" are no special characters outside brackets and braces.
    constexpr std::string_view kEscaped = "$()+.[\\^{|";
    const Pieces pieces = piecesFor(flags);
    std::string expression(pieces.prefix);
    for (const char c : pattern) {
        if (c == '?' || c == '*') {
            expression += pieces.anyCharacter;
            if (c == '*') expression += c;
        } else {
            if (kEscaped.find(c) != std::string_view::npos) expression += '\\';
            expression += c;
        }
    }
    expression += pieces.suffix;
    return expression;
}
