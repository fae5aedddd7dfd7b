// Lists of languages, against a second reading of their rules.

#include <vector>

#include "input.h"
#include "time/languagelist.h"

namespace {

// The lines, cut where they are too long.
std::vector<std::string> linesOf(std::string_view text) {
    constexpr std::size_t kMostBytes = 100;
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.emplace_back(text.substr(0, std::min(end, kMostBytes)));
        text.remove_prefix(lines.back().size());
    }
    return lines;
}

// As `strtol` reads it, within 32 bits.
int numberOf(const char* text) {
    const long long number = std::strtoll(text, nullptr, 10);
    return static_cast<int>(std::clamp(number, -0x80000000LL, 0x7FFFFFFFLL));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (text.empty() || text.find('\0') != text.npos) return 0;
    std::vector<int> expected;
    for (const std::string& line : linesOf(text)) {
        const std::size_t start = line.find_first_not_of(" \t\n\v\f\r");
        if (start != line.npos && line[start] != ';') {
            expected.push_back(numberOf(line.c_str() + start));
        }
    }
    std::vector<int> ids;
    std::FILE* const list = ::fmemopen(const_cast<char*>(text.data()), text.size(), "r");
    check(list != nullptr);
    readLanguageList(list, [&ids](int id) { ids.push_back(id); });
    std::fclose(list);
    check(ids == expected);
    return 0;
}
