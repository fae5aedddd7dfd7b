#include "diag/logtext.h"

#include <algorithm>
#include <iterator>

#include "diag/format.h"

namespace {

constexpr std::string_view kFlags = "-+ #0'";
constexpr std::string_view kDigitsOrStar = "0123456789*";
constexpr std::string_view kConversions = "diouxXfFeEgGaAcCsSpnm";
// The longer ones first; the last three are the platform's own.
constexpr std::string_view kLengths[] = {"hh", "h", "ll", "l",   "L",   "j",
                                         "z",  "t", "w",  "I64", "I32", "I"};

std::size_t behind(std::string_view characters, std::string_view text, std::size_t pos) {
    return std::min(text.find_first_not_of(characters, pos), text.size());
}

std::size_t lengthOfModifier(std::string_view text) {
    const auto found = std::ranges::find_if(
        kLengths, [text](std::string_view length) { return text.starts_with(length); });
    return found == std::end(kLengths) ? 0 : found->size();
}

// Of the conversion at the start of `text`, which begins with "%"; 0 when there is none.
std::size_t lengthOfConversion(std::string_view text) {
    std::size_t pos = behind(kFlags, text, 1);
    pos = behind(kDigitsOrStar, text, pos);
    if (pos < text.size() && text[pos] == '.') pos = behind(kDigitsOrStar, text, pos + 1);
    pos += lengthOfModifier(text.substr(pos));
    const bool isComplete = pos < text.size() && kConversions.find(text[pos]) != text.npos;
    return isComplete ? pos + 1 : 0;
}

}  // namespace

void appendWithoutArguments(std::string& text, std::string_view format) {
    while (!format.empty()) {
        const std::size_t plain = std::min(format.find('%'), format.size());
        text += format.substr(0, plain);
        format.remove_prefix(plain);
        if (format.starts_with("%%")) {
            text += '%';
            format.remove_prefix(2);
        } else if (const std::size_t length = lengthOfConversion(format)) {
            format.remove_prefix(length);
        } else if (!format.empty()) {
            text += '%';
            format.remove_prefix(1);
        }
    }
}

SV::DirEntry backupOf(const SV::DirEntry& log, const SV::Date& day) {
    return SV::DirEntry(log.GetPath() + formatted("%s_%04d.%02d.%02d%s", log.GetBase().c_str(),
                                                  day.GetYear(), day.GetMonth(), day.GetDay(),
                                                  log.GetExtension().c_str()));
}

SV::DirEntry backupPattern(const SV::DirEntry& log) {
    return SV::DirEntry(log.GetPath() + log.GetBase() + "_*" + log.GetExtension());
}
