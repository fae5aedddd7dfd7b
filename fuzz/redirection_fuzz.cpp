// Command lines with redirection clauses, against a second reading of the rules.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "input.h"
#include "sys/redirection.h"

namespace {

// Character by character, marking what belongs to a clause.
RedirectTarget read(std::string_view line, char stream, std::string& isClause) {
    RedirectTarget target;
    for (std::size_t i = 0; i + 2 < line.size(); ++i) {
        if (line[i] != stream || line[i + 1] != '>') continue;
        isClause[i] = isClause[i + 1] = 'x';
        std::size_t at = i + 2;
        target.isAppended = line[at] == '>';
        if (target.isAppended) isClause[at++] = 'x';
        const bool isQuoted = at < line.size() && line[at] == '"';
        if (isQuoted) isClause[at++] = 'x';
        bool isEscaped = false;
        for (; at < line.size() && line[at] != (isQuoted ? '"' : ' '); ++at) {
            isClause[at] = 'x';
            const bool isSecond = isQuoted && isEscaped && line[at] == '\\';
            if (!isSecond) target.name += line[at];
            isEscaped = line[at] == '\\' && !isSecond;
        }
        if (isQuoted && at < line.size()) isClause[at] = 'x';
        break;
    }
    return target;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string line = text.substr(0, text.find('\0'));
    std::string isClause(line.size(), ' ');
    const RedirectTarget output = read(line, '1', isClause);
    const RedirectTarget error = read(line, '2', isClause);
    std::string command;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (isClause[i] == ' ') command += line[i];
    }
    const SplitCommandLine split = splitRedirections(text);
    check(split.command == command);
    check(split.output.name == output.name && split.output.isAppended == output.isAppended);
    check(split.error.name == error.name && split.error.isAppended == error.isAppended);
    return 0;
}
