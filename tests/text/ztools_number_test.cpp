#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <random>
#include <string>

#include "zbasic/ztools.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// As bits: a zero has a sign.
std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

struct ParseCase {
    const char* why;
    std::string text;
    double expected;
};

const ParseCase kParses[] = {
    {"point", "1.5", 1.5},
    {"comma", "1,5", 1.5},
    {"no grouping", "1,234.5", 1.234},
    {"nor by points", "1.234,5", 1.234},
    {"empty", "", 0},
    {"no number", "abc", 0},
    {"separator alone", ",", 0},
    {"no digits in front", ",5", 0.5},
    {"none behind", "5,x", 5},
    {"white space", " \t\n\v\f\r1", 1},
    {"plus", "+1", 1},
    {"minus", "-1,5", -1.5},
    {"negative zero", "-0", -0.0},
    {"of a number too small", "-1e-400", -0.0},
    {"a sign alone", "-", 0},
    {"two signs", "+-1", 0},
    {"before many digits", "+-1.23456789012345678", 0},
    {"white space behind the sign", "- 1", 0},
    {"rest is ignored", "1.5x", 1.5},
    {"behind many digits", "0,12345678901234567,5 and more", 0.12345678901234567},
    {"a comma behind the exponent", "123456789012345678e-18,5", 0.123456789012345678},
    {"behind 200 characters", "1,5" + std::string(200, 'x'), 1.5},
    {"exponent", "1,5e3", 1500},
    {"its sign", "15E-1", 1.5},
    {"its plus", "1e+2", 100},
    {"exponent without digits", "1e", 1},
    {"exponent with a sign alone", "1e+", 1},
    {"exponent without number", "e5", 0},
    {"exponent behind the separator", "1.e1", 10},
    {"largest exact integer", "9007199254740992", 9007199254740992.0},
    {"the next is a tie", "9007199254740993", 9007199254740992.0},
    {"above the tie", "9007199254740993,00001", 9007199254740994.0},
    {"largest exact power of ten", "1e22", 1e22},
    {"the next", "1e23", 1e23},
    {"by 19 digits", "1234567890123456789", 1234567890123456789.0},
    {"by 20 digits, beyond 64 bits", "18446744073709551617", 18446744073709551616.0},
    {"largest", "1.7976931348623157e308", 1.7976931348623157e308},
    {"beyond it", "1.7976931348623159e308", kInfinity},
    {"negative beyond it", "-2e308", -kInfinity},
    {"smallest", "4.9e-324", 5e-324},
    {"half of it", "2.4e-324", 0},
    {"huge exponent", "1e99999999999999999999", kInfinity},
    {"tiny exponent", "1e-99999999999999999999", 0},
    {"huge exponent of nothing", "0e99999999999999999999", 0},
    {"10,000 digits", std::string(10'000, '1'), kInfinity},
    {"10,000 zeros, and back", "0," + std::string(10'000, '0') + "1e10001", 1},
    {"10,000 zeros in front", std::string(10'000, '0') + "1,5", 1.5},
    {"10,000 decimals", "0," + std::string(10'000, '3'), 1 / 3.0},
    {"10,000 zeros behind the point", "0." + std::string(10'000, '0') + "1", 0},
    {"hexadecimal", "0x1A", 26},
    {"hexadecimal fraction", "-0X1,8p3", -12},
    {"hexadecimal without digits in front", "0x.8", 0.5},
    {"hexadecimal exponent behind", "0x1p-1074", 5e-324},
    {"hexadecimal beyond", "0x1p1024", kInfinity},
    {"hexadecimal too small", "0x1p-1076", 0},
    {"hexadecimal, rounded", "0x1.00000000000008p0", 1},
    {"hexadecimal without digits", "0x", 0},
    {"no hexadecimal digit", "0xg", 0},
    {"a separator alone in it", "0x,", 0},
    {"infinity", "-Infinity", -kInfinity},
    {"its short form", "INF", kInfinity},
    {"a word that begins like it", "infinite", kInfinity},
    {"no word", "in", 0},
};

TEST(ToolsNumber, ReadsANumber) {
    for (const auto& [why, text, expected] : kParses) {
        SCOPED_TRACE(why);
        EXPECT_EQ(bits(zel_atof(text.c_str())), bits(expected)) << zel_atof(text.c_str());
    }
    EXPECT_EQ(zel_atof(nullptr), 0.0);
    EXPECT_TRUE(std::isnan(zel_atof(" +NaN")));
    EXPECT_TRUE(std::isnan(zel_atof("nan(12)")));
}

std::string printed(const char* format, double value, int decimals) {
    std::string text(2000, '\0');
    const int size = std::snprintf(text.data(), text.size(), format, decimals, value);
    text.resize(static_cast<std::size_t>(size));
    return text;
}

// Doubles of all magnitudes, and of those that people write.
double randomNumber(std::mt19937_64& random) {
    const std::uint64_t number = random();
    if (number % 2) return static_cast<double>(random() % 10'000'000) / 1000 - 5000;
    const auto value = std::bit_cast<double>(random());
    return std::isfinite(value) ? value : 0.1;
}

TEST(ToolsNumber, ReadsWhatTheRuntimeReads) {
    std::mt19937_64 random(4);
    for (int i = 0; i < 20'000; ++i) {
        const auto digits = static_cast<int>(random() % 25);
        std::string text = printed(i % 3 ? "%.*g" : "%.*e", randomNumber(random), digits);
        const double expected = std::strtod(text.c_str(), nullptr);
        if (const auto point = text.find('.'); i % 2 && point != std::string::npos) {
            text[point] = ',';
        }
        ASSERT_EQ(bits(zel_atof(text.c_str())), bits(expected)) << text;
    }
}

struct FormatCase {
    const char* why;
    double value;
    int decimals;
    std::string noLocale;
    std::string period;
};

// 5e-324 as Python 3.11 prints it, its first 511 characters.
const std::string kSmallest = "0." + std::string(323, '0') +
                              "4940656458412465441765687928682213723650598026143247644255856825"
                              "0067550727020875186529983636163599237979656469544571773092665671"
                              "0355939796398774796010781878126300713190311404527845817167";

const FormatCase kFormats[] = {
    {"zeros at the end", 2.5, 3, "2.5", "2.5"},
    {"nothing but zeros", 2.0, 3, "2", "2.0"},
    {"an integer", 3.0, 2, "3", "3.0"},
    {"zeros in front of the point", 100.0, 2, "100", "100.0"},
    {"no decimals", 100.0, 0, "100", "100"},
    {"half to even", 2.5, 0, "2", "2"},
    {"and odd", 3.5, 0, "4", "4"},
    {"half to even behind the point", 3.25, 1, "3.2", "3.2"},
    {"not quite half", 2.675, 2, "2.67", "2.67"},
    {"a carry through all", 9.999, 2, "10", "10.0"},
    {"zero", 0.0, 2, "0", "0.0"},
    {"a zero's sign", -0.0, 2, "-0", "-0.0"},
    {"of a number that rounds to zero", -0.001, 2, "-0", "-0.0"},
    {"negative decimals are six", 1.23456789, -1, "1.234568", "1.234568"},
    {"15 decimals", 0.1, 15, "0.1", "0.1"},
    {"all that it has", 0.1, 55, "0.1000000000000000055511151231257827021181583404541015625",
     "0.1000000000000000055511151231257827021181583404541015625"},
    {"400 decimals", 0.5, 400, "0.5", "0.5"},
    {"more than there are", 0.5, std::numeric_limits<int>::max(), "0.5", "0.5"},
    {"cut after 511 characters", 5e-324, 1074, kSmallest, kSmallest},
    {"infinity", -kInfinity, 2, "-inf", "-inf"},
    {"not a number", std::numeric_limits<double>::quiet_NaN(), 2, "nan", "nan"},
};

TEST(ToolsNumber, WritesANumber) {
    for (const auto& [why, value, decimals, noLocale, period] : kFormats) {
        SCOPED_TRACE(why);
        EXPECT_EQ(zel_ftoa_no_locale(value, decimals), noLocale);
        EXPECT_EQ(zel_ftoa_period(value, decimals), period);
    }
}

// What is left of a text with all its decimals.
std::string trimmed(std::string text, std::size_t kept) {
    text.resize(std::min<std::size_t>(text.size(), 511));
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return text;
    while (text.size() > point + 1 + kept && text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

void checkTexts(double value, int decimals, const std::string& text) {
    ASSERT_EQ(zel_ftoa_no_locale(value, decimals), trimmed(text, 0)) << value << ' ' << decimals;
    ASSERT_EQ(zel_ftoa_period(value, decimals), trimmed(text, 1)) << value << ' ' << decimals;
}

TEST(ToolsNumber, WritesTheDigitsOfAnotherRuntime) {
    std::ifstream file(ZBASIC_FIXTURES "/fixed_numbers.txt");
    std::string line, value, text;
    std::getline(file, line);
    int decimals = 0, count = 0;
    for (; file >> value >> decimals >> text; ++count) {
        checkTexts(std::strtod(value.c_str(), nullptr), decimals, text);
    }
    EXPECT_EQ(count, 60);
}

TEST(ToolsNumber, WritesTheDigitsOfThisRuntime) {
    std::mt19937_64 random(5);
    for (int i = 0; i < 20'000; ++i) {
        const double value = randomNumber(random);
        const int decimals = static_cast<int>(random() % (i % 50 ? 25 : 600));
        checkTexts(value, decimals, printed("%.*f", value, decimals));
    }
    // Exactly between two texts.
    for (int eighths = -4000; eighths < 4000; ++eighths) {
        const double value = eighths / 8.0;
        for (int decimals = 0; decimals < 4; ++decimals) {
            checkTexts(value, decimals, printed("%.*f", value, decimals));
        }
    }
}

struct LongCase {
    const char* why;
    long value;
    const char* format;
    const char* expected;
};

const LongCase kLongs[] = {
    {"plain", -42, "%ld", "-42"},
    {"without an l", -42, "%d", "-42"},
    {"flags and width", 42, "<%+06ld>", "<+00042>"},
    {"precision", 42, "%-8.4li|", "0042    |"},
    {"hexadecimal", 0xABC, "%#lx %%", "0xabc %"},
    {"octal, unsigned", 8, "%lo", "10"},
    {"smallest", -2147483647L - 1, "%ld", "-2147483648"},
    {"no conversion", 42, "100%%", "100%"},
    {"empty", 42, "", ""},
    {"null", 42, nullptr, ""},
    {"a second conversion", 42, "%ld %ld", ""},
    {"a text", 42, "%s", ""},
    {"a count to be written", 42, "%ld%n", ""},
    {"a double", 42, "%f", ""},
    {"a width to be fetched", 42, "%*ld", ""},
    {"a larger integer", 42, "%lld", ""},
    {"cut short", 42, "%ld%", ""},
};

TEST(ToolsNumber, WritesALongByOneConversion) {
    for (const auto& [why, value, format, expected] : kLongs) {
        SCOPED_TRACE(why);
        char buffer[32] = "before";
        EXPECT_EQ(zel_ltoa(value, buffer, format), static_cast<int>(std::strlen(expected)));
        EXPECT_STREQ(buffer, expected);
    }
}

}  // namespace
