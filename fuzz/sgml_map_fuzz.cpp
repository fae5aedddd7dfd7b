// Mapping files of SGML, against a second reading of their rules. Bytes: whether warnings are on,
// how many entities are put behind the rest, the file.

#include <array>
#include <sstream>

#include "input.h"
#include "zbasic/zsgml.h"

namespace {

struct Map {
    bool isAccepted = false;
    std::string language;
    std::array<std::string, 256> entities;  // empty: the byte is copied
};

// Without blanks and comment, and of what is not too far behind.
std::string meaningOf(const std::string& line) {
    constexpr std::size_t kLookedAt = 1000;
    std::string meaning;
    for (const char c : line.substr(0, kLookedAt)) {
        if (c != ' ' && c != '\r') meaning += c;
        if (meaning.ends_with("//")) return meaning.substr(0, meaning.size() - 2);
    }
    return meaning;
}

Map read(const std::string& file, bool isWarning) {
    Map map;
    std::size_t first = 128;
    bool hasLanguage = false;
    std::size_t next = 0;
    std::istringstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const std::string meaning = meaningOf(line);
        if (meaning.empty()) continue;
        if (!hasLanguage && (meaning == "MAP128" || meaning == "MAP256")) {
            first = meaning == "MAP128" ? 128 : 0;
        } else if (!hasLanguage) {
            hasLanguage = true;
            map.language = meaning;
        } else {
            const std::size_t byte = first + next++;
            if (byte < 256 && meaning != "0") map.entities[byte] = meaning;
        }
    }
    const bool isComplete = hasLanguage && next == 256 - first;
    map.isAccepted = isComplete || (first == 0 && !isWarning);
    if (first == 128) {
        map.entities['"'] = "&#34;";
        map.entities['&'] = "&amp;";
        map.entities['<'] = "&lt;";
        map.entities['>'] = "&gt;";
    }
    return map;
}

std::string converted(const Map& map, std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\r') continue;
        const std::string& entity = map.entities[static_cast<unsigned char>(c)];
        result += entity.empty() ? std::string(1, c) : entity;
    }
    return result;
}

std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const bool isWarning = input.next() % 2 != 0;
    const unsigned entities = input.next();
    std::string file(input.rest());
    for (unsigned i = 0; i < entities; ++i) file += "&e" + std::to_string(i) + ";\n";

    const Map expected = read(file, isWarning);
    ZelSGMLString::EnableWarning(isWarning);
    std::istringstream stream(file);
    check(ZelSGMLString::SetCharacterMap(&stream) == expected.isAccepted);
    if (!expected.isAccepted) {
        check(std::string_view(ZelSGMLString::GetLanguage()) == "DEFAULT");
        return 0;
    }
    check(ZelSGMLString::GetLanguage() == std::string_view(expected.language.c_str()));
    for (const std::string& text : {everyByte(), file}) {
        const SV::String result = ZelSGMLString::GetSGMLString(SV::String(text));
        check(std::string_view(result) == converted(expected, text));
    }
    return 0;
}
