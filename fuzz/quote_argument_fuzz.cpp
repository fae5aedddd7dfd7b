// Arguments that are quoted, and split again as the interpreter and the C run time do.

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input.h"
#include "sys/redirection.h"
#include "zbasic/zprocess.h"

namespace {

// The rules of the C run time ("Parsing C++ command-line arguments"): 2n backslashes and a quote
// are n and the quote's meaning, 2n+1 are n and a quote; two quotes inside of quotes are one.
std::vector<std::string> splitAsRunTime(std::string_view line) {
    std::vector<std::string> arguments;
    std::size_t i = 0;
    while (i < line.size()) {
        if (line[i] == ' ' || line[i] == '\t') {
            ++i;
            continue;
        }
        std::string argument;
        bool isQuoted = false;
        for (; i < line.size() && (isQuoted || (line[i] != ' ' && line[i] != '\t')); ++i) {
            std::size_t backslashes = 0;
            for (; i < line.size() && line[i] == '\\'; ++i) ++backslashes;
            const bool isQuote = i < line.size() && line[i] == '"';
            argument.append(isQuote ? backslashes / 2 : backslashes, '\\');
            if (isQuote && backslashes % 2 == 1) {
                argument += '"';
            } else if (isQuote && isQuoted && line.substr(i + 1).starts_with('"')) {
                argument += '"';
                ++i;
            } else if (isQuote) {
                isQuoted = !isQuoted;
            } else {
                if (backslashes > 0) --i;  // this one is looked at again, it may be a blank
                if (backslashes == 0) argument += line[i];
            }
        }
        arguments.push_back(argument);
    }
    return arguments;
}

// What the command interpreter hands on: escapes taken away. Nothing when it would do more than
// that with the line, for a character that means something to it is not escaped, or when a
// variable is named that may exist: one without quotes and carets in its name.
std::optional<std::string> passedByInterpreter(std::string_view line) {
    std::string passed;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (std::string_view("&|<>()\"%!\r\n").find(line[i]) != std::string_view::npos) {
            return std::nullopt;
        }
        if (line[i] == '^' && ++i == line.size()) return std::nullopt;
        passed += line[i];
    }
    for (std::size_t open = passed.find('%'); open != std::string::npos;) {
        const std::size_t close = passed.find('%', open + 1);
        if (close == std::string::npos) break;
        const std::string name = passed.substr(open + 1, close - open - 1);
        if (!name.starts_with('"')) return std::nullopt;
        open = close;
    }
    return passed;
}

bool isSplitInto(std::string_view line, const std::string& argument) {
    const std::vector<std::string> expected = {"first", argument, "last"};
    return splitAsRunTime("first " + std::string(line) + " last") == expected;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string argument(reinterpret_cast<const char*>(data), size);
    const SV::String quoted = Zel_QuoteArgument(SV::String(argument));
    const SV::String escaped = Zel_QuoteArgument(SV::String(argument), true);
    const bool hasNul = argument.find('\0') != std::string::npos;
    const bool hasLineEnd = argument.find_first_of("\r\n") != std::string::npos;
    check(quoted.empty() == hasNul);
    check(escaped.empty() == (hasNul || hasLineEnd));
    for (const SV::String& line : {quoted, escaped}) {
        if (!line.empty()) check(splitRedirections(line).command == std::string_view(line));
    }
    if (!quoted.empty()) check(isSplitInto(quoted, argument));
    if (escaped.empty()) return 0;
    const std::optional<std::string> passed = passedByInterpreter(escaped);
    check(passed && isSplitInto(*passed, argument));
    return 0;
}
