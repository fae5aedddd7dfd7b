// Reading numbers, whatever the locale.

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "sv/ascii.h"
#include "text/powersoffive.h"
#include "zbasic/ztools.h"

namespace {

bool isSeparator(char c) { return c == '.' || c == ','; }

struct Decimal {
    static constexpr std::uint64_t kBase = 10;
    static constexpr std::int64_t kDigitExponent = 1;  // of a digit's place
    static constexpr char kExponentMark = 'e';
    static constexpr std::chars_format kFormat = std::chars_format::general;

    static unsigned digitOf(char c) { return static_cast<unsigned>(c) - '0'; }
};

struct Hexadecimal {
    static constexpr std::uint64_t kBase = 16;
    static constexpr std::int64_t kDigitExponent = 4;
    static constexpr char kExponentMark = 'p';
    static constexpr std::chars_format kFormat = std::chars_format::hex;

    static unsigned digitOf(char c) {
        const unsigned digit = static_cast<unsigned>(c) - '0';
        const unsigned letter = static_cast<unsigned>(SV::ToAsciiLower(c)) - 'a';
        return digit < 10 ? digit : letter < 6 ? letter + 10 : 16;
    }
};

// The double nearest to `digits` (not 0) times 10^`exponent`, for exponents that `PowersOfFive`
// has; none when 64 bits of the power do not tell which of two it is (after D. Lemire, "Number
// Parsing at a Gigabyte per Second").
std::optional<double> nearest(std::uint64_t digits, int exponent) {
    static constexpr PowersOfFive kPowers;
    __extension__ using Wide = unsigned __int128;
    constexpr int kExponentBias = 1023;
    constexpr int kMantissaBits = 52;  // without the leading one
    const int zeros = std::countl_zero(digits);
    // What was cut off the power adds less than one to `top`.
    const Wide product = Wide{digits << zeros} * kPowers[exponent];
    const auto top = static_cast<std::uint64_t>(product >> 64);
    const int carry = static_cast<int>(top >> 63);
    const int dropped = 63 - kMantissaBits - 1 + carry;
    const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
    const std::uint64_t rest = top & (2 * half - 1);
    if (rest == half - 1 || rest == half) return std::nullopt;
    // A leading one that rounding or the mantissa itself carries over counts the exponent up.
    const std::uint64_t mantissa = (top >> dropped) + (rest > half ? 1 : 0);
    const int power = PowersOfFive::binaryExponent(exponent) + exponent + 63 - zeros + carry;
    const auto biased = static_cast<std::uint64_t>(power + kExponentBias - 1);
    return std::bit_cast<double>((biased << kMantissaBits) + mantissa);
}

// The text of a number, read once. Its value is `digits` times the base to the power of `exponent`.
template <typename Notation>
class Number {
public:
    explicit Number(const char* text) : m_begin(text), m_end(text) {
        readDigits();
        if (isSeparator(*m_end)) {
            m_separator = m_end++;
            const char* const fraction = m_end;
            readDigits();
            m_exponent = (fraction - m_end) * Notation::kDigitExponent;
        }
        if (m_digitCount != 0) readExponent();
    }

    double value() const;

private:
    std::optional<double> quickValue() const;
    void readDigits();
    void readExponent();
    bool isHuge() const { return m_significantCount * Notation::kDigitExponent + m_exponent > 0; }
    double valueOf(const char* begin) const;

    const char* const m_begin;
    const char* m_end;
    const char* m_separator = nullptr;
    std::uint64_t m_digits = 0;  // meaningless when there are many
    std::int64_t m_digitCount = 0;
    std::int64_t m_significantCount = 0;  // from the first that is not 0
    std::int64_t m_exponent = 0;
};

template <typename Notation>
inline void Number<Notation>::readDigits() {
    const char* const begin = m_end;
    if (m_significantCount == 0) {
        while (*m_end == '0') ++m_end;
    }
    const char* const significant = m_end;
    // In groups, because the next digit need not wait for a multiplication then.
    constexpr int kGroup = 4;
    for (int count = kGroup; count == kGroup;) {
        std::uint64_t group = 0;
        std::uint64_t scale = 1;
        unsigned digit;
        for (count = 0; count < kGroup && (digit = Notation::digitOf(*m_end)) < Notation::kBase;
             ++count, ++m_end) {
            group = group * Notation::kBase + digit;
            scale *= Notation::kBase;
        }
        m_digits = m_digits * scale + group;
    }
    m_significantCount += m_end - significant;
    m_digitCount += m_end - begin;
}

template <typename Notation>
inline void Number<Notation>::readExponent() {
    if (SV::ToAsciiLower(*m_end) != Notation::kExponentMark) return;
    const char* at = m_end + 1;
    const bool isNegative = *at == '-';
    if (isNegative || *at == '+') ++at;
    if (Decimal::digitOf(*at) > 9) return;
    constexpr std::int64_t kLimit = std::int64_t{1} << 50;  // beyond what digits could make up for
    std::int64_t exponent = 0;
    for (unsigned digit; (digit = Decimal::digitOf(*at)) <= 9; ++at) {
        if (exponent < kLimit) exponent = exponent * 10 + digit;
    }
    m_exponent += isNegative ? -exponent : exponent;
    m_end = at;
}

template <typename Notation>
double Number<Notation>::valueOf(const char* begin) const {
    double value = 0;
    const auto [end, error] =
        std::from_chars(begin, begin + (m_end - m_begin), value, Notation::kFormat);
    if (error == std::errc::result_out_of_range) {
        return isHuge() ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

// Integers of 15 digits and powers of ten up to 10^22 are exact in a double, so that one operation
// on them rounds as the value itself does (W. Clinger, "How to Read Floating Point Numbers
// Accurately"). Asking for the digits' count and not their value lets the processor go on before it
// has that. 19 digits always fit into 64 bits.
template <>
std::optional<double> Number<Decimal>::quickValue() const {
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::int64_t kMaxExponent = std::size(kPowers) - 1;
    if (m_significantCount <= 15 && m_exponent <= kMaxExponent && m_exponent >= -kMaxExponent) {
        const auto digits = static_cast<double>(m_digits);
        return m_exponent < 0 ? digits / kPowers[-m_exponent] : digits * kPowers[m_exponent];
    }
    if (m_significantCount > 19) return std::nullopt;
    if (m_exponent < PowersOfFive::kMin || m_exponent > PowersOfFive::kMax) return std::nullopt;
    return nearest(m_digits, static_cast<int>(m_exponent));
}

template <>
std::optional<double> Number<Hexadecimal>::quickValue() const {
    return std::nullopt;
}

template <typename Notation>
double Number<Notation>::value() const {
    if (m_significantCount == 0) return 0.0;
    if (const auto quick = quickValue()) return *quick;
    if (!m_separator || *m_separator == '.') return valueOf(m_begin);
    const auto size = static_cast<std::size_t>(m_end - m_begin);
    const auto valueWithPoint = [&](char* copy) {
        std::memcpy(copy, m_begin, size);
        copy[m_separator - m_begin] = '.';
        return valueOf(copy);
    };
    char buffer[128];
    return size <= sizeof buffer ? valueWithPoint(buffer)
                                 : valueWithPoint(std::string(size, '\0').data());
}

bool isHexadecimal(const char* text) {
    if (text[0] != '0' || SV::ToAsciiLower(text[1]) != 'x') return false;
    const char* const digits = text + (isSeparator(text[2]) ? 3 : 2);
    return Hexadecimal::digitOf(*digits) < 16;
}

bool beginsWith(const char* text, const char* word) {
    while (*word && SV::ToAsciiLower(*text) == *word) ++text, ++word;
    return *word == '\0';
}

// Whether there is a number at all, which a sign alone is not.
bool beginsWithDigits(const char* text) {
    return Decimal::digitOf(text[isSeparator(*text) ? 1 : 0]) <= 9;
}

double magnitude(const char* text) {
    if (isHexadecimal(text)) return Number<Hexadecimal>(text + 2).value();
    if (beginsWithDigits(text)) return Number<Decimal>(text).value();
    if (beginsWith(text, "inf")) return std::numeric_limits<double>::infinity();
    return beginsWith(text, "nan") ? std::numeric_limits<double>::quiet_NaN() : 0.0;
}

}  // namespace

double zel_atof(const char* text) {
    if (!text) return 0.0;
    while (SV::IsAsciiSpace(*text)) ++text;
    const bool isNegative = *text == '-';
    if (isNegative || *text == '+') ++text;
    const double value = magnitude(text);
    if (!isNegative || (value == 0.0 && !beginsWithDigits(text))) return value;
    return -value;
}
