// Any double to any number of decimals: what the run-time library prints, less zeros at the end;
// and any format of a `long`.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zbasic/ztools.h"

namespace {

std::string trimmed(std::string text, std::size_t kept) {
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return text;
    while (text.size() > point + 1 + kept && text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

void check(double value, int decimals) {
    char printed[512];  // 511 characters
    std::snprintf(printed, sizeof printed, "%.*f", decimals, value);
    if (zel_ftoa_no_locale(value, decimals) != trimmed(printed, 0)) std::abort();
    if (zel_ftoa_period(value, decimals) != trimmed(printed, 1)) std::abort();
}

// Widths and precisions of at most three digits: room is the caller's to know.
bool isLarge(const std::string& format) {
    std::size_t digits = 0;
    return std::ranges::any_of(format, [&digits](char c) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        return digits > 3;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    double value = 0;
    int decimals = 0;
    if (size < sizeof value + sizeof decimals) return 0;
    std::memcpy(&value, data, sizeof value);
    std::memcpy(&decimals, data + sizeof value, sizeof decimals);
    check(value, decimals % 1100);
    check(value, decimals % 25);
    const std::string format(reinterpret_cast<const char*>(data) + 12, size - 12);
    if (size > 200 || isLarge(format)) return 0;
    std::string buffer(4000, '#');
    const int count = zel_ltoa(decimals, buffer.data(), format.c_str());
    if (count < 0 || buffer[static_cast<std::size_t>(count)] != '\0') std::abort();
    if (std::strlen(buffer.c_str()) != static_cast<std::size_t>(count)) std::abort();
    return 0;
}
