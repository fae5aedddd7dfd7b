// Splitting and escaping any text by any characters: both can be undone.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "zbasic/ztools.h"

namespace {

void checkSplit(const std::string& text, const std::string& separator) {
    ZelVectorSequence<SV::String> tokens;
    Zel_SplitIntoTokens(SV::String(text), separator.c_str(), tokens);
    if (std::strlen(separator.c_str()) == 0) {
        if (!tokens.elements().empty()) std::abort();
        return;
    }
    std::string joined;
    for (const SV::String& token : tokens.elements()) {
        if (&token != &tokens.elements().front()) joined += separator.c_str();
        joined += std::string_view(token);
    }
    if (joined != text) std::abort();
}

std::string unmasked(std::string_view text, char escape) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != escape || ++i < text.size()) result += text[i];
    }
    return result;
}

void checkMask(const char* text, char special, char escape) {
    const SV::String masked = Zel_Mask(text, special, escape);
    if (escape != '\0' && Zel_Unmask(masked.c_str(), escape) != text) std::abort();
    if (Zel_Unmask(text, escape) != unmasked(text, escape)) std::abort();
    const std::size_t specials = static_cast<std::size_t>(
        zel_charcount(text, special) + (special == escape ? 0 : zel_charcount(text, escape)));
    if (masked.size() != std::strlen(text) + specials) std::abort();
}

void checkExport(const char* text) {
    for (const auto mask : {Zel_Mask_Export_Name, Zel_Mask_Export_Value, Zel_Mask_Export_Path}) {
        const char delimiter = mask == Zel_Mask_Export_Name    ? '>'
                               : mask == Zel_Mask_Export_Value ? '"'
                                                               : '/';
        const int extra = zel_charcount(text, delimiter) + zel_charcount(text, '\\');
        std::string target(std::strlen(text) + static_cast<std::size_t>(extra), '#');
        mask(text, target.data());
        if (std::strlen(target.c_str()) != target.size()) std::abort();
    }
}

// What a spreadsheet reads of a line: its fields.
std::vector<std::string> fieldsOf(std::string_view line) {
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"' && isQuoted && line.substr(i + 1).starts_with('"')) {
            fields.back() += line[i++];
        } else if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == ';' && !isQuoted) {
            fields.emplace_back();
        } else {
            fields.back() += line[i];
        }
    }
    return fields;
}

void checkCsv(const std::string& text) {
    const SV::String field = Zel_MaskCSV(SV::String(text));
    const std::vector<std::string> expected = {"first", text, "last"};
    if (fieldsOf(std::string_view("first;" + field + ";last")) != expected) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const auto* const characters = reinterpret_cast<const char*>(data);
    const std::string text(characters + 3, size - 3);
    checkSplit(text, std::string(characters, 1 + data[2] % 2U));
    checkMask(text.c_str(), characters[0], characters[1]);
    checkExport(text.c_str());
    SV::String name(text);
    Zel_MakeNextName(name);
    const SV::String enclosed = Zel_EnsureSurroundingParentheses(SV::String(text));
    if (Zel_EnsureSurroundingParentheses(enclosed).size() > enclosed.size() + 2) std::abort();
    checkCsv(text);
    return 0;
}
