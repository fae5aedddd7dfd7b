// The date at the start of a log file: found as `sscanf` finds it, whatever blocks the file comes
// in.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "diag/logdate.h"

namespace {

std::optional<SV::Date> dateIn(std::string_view text, std::size_t block) {
    LogDateScan scan;
    for (std::size_t at = 0; at < text.size(); at += block) {
        if (!scan.take(text.substr(at, block))) break;
    }
    return scan.date();
}

// The C library ends at a NUL and leaves open what becomes of numbers that it cannot hold; what is
// negative is no date to us.
bool isForBoth(const std::string& text) {
    constexpr std::size_t kMostDigits = 9;
    std::size_t digits = 0;
    for (const char c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > kMostDigits || c == '-' || c == '\0') return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::optional<SV::Date> date = dateIn(text, size + 1);
    if (dateIn(text, 1) != date || dateIn(text, 3) != date) std::abort();
    if (!isForBoth(text)) return 0;
    int year = 0, month = 0, day = 0;
    const bool isDate =
        std::sscanf(text.c_str(), "%d.%d.%d", &year, &month, &day) == 3 && month <= 99 && day <= 99;
    if (date.has_value() != isDate) std::abort();
    if (isDate && *date != SV::Date(day, month, year % 10'000)) std::abort();
    return 0;
}
