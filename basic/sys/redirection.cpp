#include "sys/redirection.h"

#include <algorithm>

namespace {

struct Clause {
    std::size_t begin = 0;  // in the command line; both 0 when there is none
    std::size_t end = 0;
    RedirectTarget target;
};

// A backslash may be doubled; before anything else it stands for itself, as in most paths.
std::string withoutEscapes(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "\\\\") ++i;
        plain += text[i];
    }
    return plain;
}

// Relied on by callers: the operator is found inside any text, and the name begins right behind it.
Clause findClause(std::string_view line, std::string_view op) {
    const std::size_t begin = line.find(op);
    if (begin == std::string_view::npos || begin + op.size() == line.size()) return {};
    Clause clause;
    clause.begin = begin;
    std::size_t place = begin + op.size();
    if (line[place] == '>') {
        clause.target.isAppended = true;
        ++place;
    }
    const bool isQuoted = line.substr(place).starts_with('"');
    if (isQuoted) ++place;
    const std::size_t end = std::min(line.find(isQuoted ? '"' : ' ', place), line.size());
    const std::string_view name = line.substr(place, end - place);
    clause.target.name = isQuoted ? withoutEscapes(name) : std::string(name);
    clause.end = isQuoted && end < line.size() ? end + 1 : end;
    return clause;
}

}  // namespace

SplitCommandLine splitRedirections(std::string_view commandLine) {
    const std::string_view line = commandLine.substr(0, commandLine.find('\0'));
    const Clause output = findClause(line, "1>");
    const Clause error = findClause(line, "2>");
    // One may lie in the name of the other: what either covers goes.
    const Clause& first = output.begin <= error.begin ? output : error;
    const Clause& second = output.begin <= error.begin ? error : output;
    const std::size_t between = std::max(first.end, second.begin);
    std::string command(line.substr(0, first.begin));
    command += line.substr(first.end, between - first.end);
    command += line.substr(std::max(first.end, second.end));
    return {command, output.target, error.target};
}
