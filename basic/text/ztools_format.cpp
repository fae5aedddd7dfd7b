// Writing numbers, whatever the locale.

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "ztools.cpp";
constexpr unsigned kBufferNotThere = 1289;

constexpr int kUsualDecimals = 6;   // `printf` takes them for a negative number
constexpr int kMaxDecimals = 1074;  // of any double, exactly
constexpr std::size_t kMaxSize = 511;

// With "." and all decimals; up to 309 digits stand before it.
class FixedText {
public:
    FixedText(double value, int decimals) {
        const int precision = decimals < 0 ? kUsualDecimals : std::min(decimals, kMaxDecimals);
        const auto result =
            std::to_chars(m_buffer, std::end(m_buffer), value, std::chars_format::fixed, precision);
        m_size = std::min(static_cast<std::size_t>(result.ptr - m_buffer), kMaxSize);
    }

    // Without the zeros at the end, but for the first `kept` of the decimals.
    SV::String trimmed(std::size_t kept) const {
        const std::string_view text(m_buffer, m_size);
        const std::size_t point = text.find('.');
        if (point == std::string_view::npos) return SV::String(text);
        const std::size_t size = std::max(text.find_last_not_of('0'), point + kept) + 1;
        return SV::String(text.substr(0, size - (size == point + 1 ? 1 : 0)));
    }

private:
    char m_buffer[1 + 309 + 1 + kMaxDecimals];
    std::size_t m_size;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Behind the conversion of a `long` that may stand at `format`, else null.
const char* behindConversion(const char* format) {
    ++format;  // "%"
    while (*format && std::string_view("-+ #0").find(*format) != std::string_view::npos) ++format;
    while (isDigit(*format)) ++format;
    if (*format == '.') ++format;
    while (isDigit(*format)) ++format;
    if (*format == 'l') ++format;
    return *format && std::string_view("diuoxX").find(*format) != std::string_view::npos
               ? format + 1
               : nullptr;
}

// Whether `printf` takes nothing but one `long` for this format.
bool takesOneLong(const char* format) {
    int conversions = 0;
    while (*format) {
        if (*format != '%') {
            ++format;
        } else if (format[1] == '%') {
            format += 2;
        } else {
            format = behindConversion(format);
            if (!format || ++conversions > 1) return false;
        }
    }
    return true;
}

}  // namespace

SV::String zel_ftoa_no_locale(double value, int decimals) {
    return FixedText(value, decimals).trimmed(0);
}

SV::String zel_ftoa_period(double value, int decimals) {
    return FixedText(value, decimals).trimmed(1);
}

int zel_ltoa(long value, char* buffer, const char* format) {
    if (!format || !takesOneLong(format)) format = "";
    const int size = std::snprintf(nullptr, 0, format, value);
    if (size < 0) return size;
    if (!Zel_MemoryIsWriteable(buffer, static_cast<unsigned>(size) + 1)) {
        displayErrorMessage(kSource, kBufferNotThere);
        return size;
    }
    return std::sprintf(buffer, format, value);
}
