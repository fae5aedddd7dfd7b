// Splitting and escaping any text by any characters: both can be undone.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

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

void checkMask(const char* text, char special, char escape) {
    const SV::String masked = Zel_Mask(text, special, escape);
    if (escape != '\0' && Zel_Unmask(masked.c_str(), escape) != text) std::abort();
    Zel_Unmask(text, escape);
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
    Zel_MaskCSV(SV::String(text));
    return 0;
}
