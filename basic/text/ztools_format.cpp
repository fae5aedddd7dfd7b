// Writing numbers, whatever the locale.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "sv/ascii.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "ztools.cpp";
constexpr unsigned kBufferNotThere = 1289;

constexpr int kUsualDecimals = 6;   // `printf` takes them for a negative number
constexpr int kMaxDecimals = 1074;  // of any double, exactly
constexpr std::size_t kMaxSize = 511;

// A value times a power of ten, rounded to an integer, half to even.
class ScaledValue {
public:
    ScaledValue(double value, int decimals) {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        const int exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF);
        if (decimals > kMaxPower || exponent > kExponentOfMantissa) return;
        // One that is not there, as in a zero, would count for nothing so far behind the point.
        constexpr std::uint64_t kLeadingBit = std::uint64_t{1} << kMantissaBits;
        const std::uint64_t mantissa = (bits & (kLeadingBit - 1)) | kLeadingBit;
        const Wide product = static_cast<Wide>(mantissa) *
                             kPowers[static_cast<std::size_t>(decimals)];     // below 2^117
        const int shift = std::min(kExponentOfMantissa - exponent + 1, 120);  // at least 1
        const Wide half = Wide{1} << (shift - 1);
        const Wide floor = product >> shift;
        const Wide rest = product - (floor << shift);
        const Wide rounded = floor + (rest > half || (rest == half && floor % 2 != 0) ? 1 : 0);
        m_value = static_cast<std::uint64_t>(rounded);
        m_isValid = rounded == m_value;
    }

    // Whether it can be had with 128 bits, and lies in 64 bits: most do.
    bool isValid() const { return m_isValid; }
    std::uint64_t value() const { return m_value; }

private:
    __extension__ using Wide = unsigned __int128;
    static constexpr int kMantissaBits = 52;
    static constexpr int kExponentOfMantissa = 1023 + kMantissaBits - 1;  // of numbers below 2^52
    static constexpr int kMaxPower = 19;
    static constexpr auto kPowers = [] {
        std::array<std::uint64_t, kMaxPower + 1> powers{1};
        for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
        return powers;
    }();

    std::uint64_t m_value = 0;
    bool m_isValid = false;
};

// With "." and all decimals; up to 309 digits stand before it.
class FixedText {
public:
    FixedText(double value, int decimals) {
        const int precision = decimals < 0 ? kUsualDecimals : std::min(decimals, kMaxDecimals);
        const ScaledValue scaled(value, precision);
        if (scaled.isValid()) {
            writeScaled(std::signbit(value), scaled.value(), static_cast<std::size_t>(precision));
        } else {
            const auto result = std::to_chars(m_buffer, std::end(m_buffer), value,
                                              std::chars_format::fixed, precision);
            m_size = std::min(static_cast<std::size_t>(result.ptr - m_buffer), kMaxSize);
        }
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
    void writeScaled(bool isNegative, std::uint64_t scaled, std::size_t decimals) {
        char digits[20];
        const auto count =
            static_cast<std::size_t>(std::to_chars(digits, std::end(digits), scaled).ptr - digits);
        char* to = m_buffer;
        if (isNegative) *to++ = '-';
        if (count > decimals) {
            to = std::copy_n(digits, count - decimals, to);
        } else {
            *to++ = '0';
        }
        if (decimals > 0) {
            *to++ = '.';
            const std::size_t size = std::min(count, decimals);
            to = std::fill_n(to, decimals - size, '0');
            to = std::copy_n(digits + count - size, size, to);
        }
        m_size = static_cast<std::size_t>(to - m_buffer);
    }

    char m_buffer[1 + 309 + 1 + kMaxDecimals];
    std::size_t m_size;
};

// Behind the conversion of a `long` that may stand at `format`, else null.
const char* behindConversion(const char* format) {
    ++format;  // "%"
    while (*format && std::string_view("-+ #0").find(*format) != std::string_view::npos) ++format;
    while (SV::IsAsciiDigit(*format)) ++format;
    if (*format == '.') ++format;
    while (SV::IsAsciiDigit(*format)) ++format;
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
