#include "time/languagelist.h"

#include "sv/string.h"

namespace {

constexpr std::size_t kLineSize = 100;

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

void readLanguageList(std::FILE* list, const std::function<void(int id)>& onEntry) {
    char line[kLineSize + 1];
    while (std::fgets(line, sizeof line, list)) {
        const char* start = line;
        while (isBlank(*start)) ++start;
        if (*start != '\0' && *start != ';') onEntry(SV::h_atoi(start));
    }
}
