#include <string_view>

#include "zbasic/zprocess.h"

namespace {

// What must not follow the character before inside of quotes: the redirection operators of
// `ZelSynchronousProcess`, and the percent signs of the interpreter, which names a variable up to
// the next one and leaves the text alone when there is no variable of that name, as with the
// quotes in it.
bool standsOutside(char before, char c, bool forInterpreter) {
    return (c == '>' && (before == '1' || before == '2')) || (c == '%' && forInterpreter);
}

// By the C run time's rules: backslashes count as escapes only in front of a quote.
SV::String quotedForProgram(std::string_view argument, bool forInterpreter) {
    SV::String quoted("\"");
    std::size_t backslashes = 0;
    char before = '\0';
    for (const char c : argument) {
        const bool isOutside = standsOutside(before, c, forInterpreter);
        if (c == '"' || isOutside) quoted.append(backslashes, '\\');
        if (c == '"') quoted += '\\';
        if (isOutside) quoted += '"';
        quoted += c;
        if (isOutside) quoted += '"';
        backslashes = c == '\\' ? backslashes + 1 : 0;
        before = c;
    }
    return quoted.append(backslashes, '\\') += '"';
}

bool isAsciiLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// A caret takes the meaning from whatever follows it, quotes included: quoted text would not be
// safe, as the two disagree on where it ends. Letters beyond ASCII have no meaning.
SV::String escapedForInterpreter(std::string_view text) {
    SV::String escaped;
    for (const char c : text) {
        if (!isAsciiLetterOrDigit(c) && static_cast<unsigned char>(c) < 0x80) escaped += '^';
        escaped += c;
    }
    return escaped;
}

}  // namespace

SV::String Zel_QuoteArgument(const SV::String& argument, bool forInterpreter) {
    const std::string_view text = argument;
    const std::string_view forbidden =
        forInterpreter ? std::string_view("\0\r\n", 3) : std::string_view("\0", 1);
    if (text.find_first_of(forbidden) != std::string_view::npos) return {};
    const SV::String quoted = quotedForProgram(text, forInterpreter);
    return forInterpreter ? escapedForInterpreter(quoted) : quoted;
}
