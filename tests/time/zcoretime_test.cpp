#include "zbasic/zcoretime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <regex>
#include <string>

namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
const double kNoNumber = std::nan("");
constexpr long long kMost64 = std::numeric_limits<long long>::max();

constexpr long long kDay = 86'400;
constexpr long long kYear = 31'536'000;  // 365 days
constexpr long kMost32 = 2'147'483'647;

// Sets the default base for a test.
class DefaultBase {
public:
    DefaultBase(double daysPerYear, double hoursPerDay) {
        ZelCoreTime::SetStaticTimeBase(daysPerYear, hoursPerDay);
    }
    DefaultBase(const DefaultBase&) = delete;
    DefaultBase& operator=(const DefaultBase&) = delete;
    ~DefaultBase() { ZelCoreTime::SetStaticTimeBase(365, 24); }
};

struct ReadCase {
    const char* why;
    std::string text;
    bool isTime;
    double seconds;
};

const ReadCase kRead[] = {
    {"nothing", "00:000:00:00:00", true, 0},
    {"one of each", "01:001:01:01:01", true, kYear + 90061},
    {"no years", ":000:00:00:00", true, 0},
    {"one digit for the years", "1:000:00:00:00", true, kYear},
    {"largest fields", "00:364:23:59:59", true, kYear - 1},
    {"days of 36x", "00:360:00:00:00", true, 360 * kDay},
    {"days too large", "00:365:00:00:00", false, 0},
    {"days of 37x", "00:370:00:00:00", false, 0},
    {"days of 4xx", "00:400:00:00:00", false, 0},
    {"hours too large", "00:000:24:00:00", false, 0},
    {"hours of 3x", "00:000:30:00:00", false, 0},
    {"minutes too large", "00:000:00:60:00", false, 0},
    {"seconds too large", "00:000:00:00:60", false, 0},
    {"empty", "", false, 0},
    {"a field more", "00:000:00:00:00:00", false, 0},
    {"a field less", "00:000:00:00", false, 0},
    {"only colons", "::::", false, 0},
    {"two digits for the days", "00:00:000:00:00", false, 0},
    {"a sign", "-1:000:00:00:00", false, 0},
    {"a blank behind", "00:000:00:00:00 ", false, 0},
    {"a blank before", " 0:000:00:00:00", false, 0},
    {"a letter", "00:0o0:00:00:00", false, 0},
    {"a byte above 127", "00:000:00:00:0\xB2", false, 0},
    {"largest years of 32 bits", "2147483647:000:00:00:00", true, 2147483647. * kYear},
    {"larger years count as those", "2147483648:000:00:00:00", true, 2147483647. * kYear},
    {"years of 20 digits", "99999999999999999999:000:00:00:00", true, 2147483647. * kYear},
    {"years of 300 digits", std::string(299, '0') + "7:000:00:00:00", true, 7. * kYear},
    {"years of 301 digits", std::string(300, '0') + "7:000:00:00:00", false, 0},
};

}  // namespace

TEST(CoreTime, ReadsItsTexts) {
    for (const auto& [why, text, isTime, seconds] : kRead) {
        SCOPED_TRACE(why);
        EXPECT_EQ(ZelCoreTime::isTime(text.c_str()), isTime);
        EXPECT_EQ(ZelCoreTime(text.c_str()).asDouble(), seconds);
        EXPECT_FALSE(ZelCoreTime(text.c_str()).overFlow());
    }
    EXPECT_FALSE(ZelCoreTime::isTime(nullptr));
    ZelCoreTime time(static_cast<const char*>(nullptr));
    (time += static_cast<const char*>(nullptr)) -= nullptr;
    EXPECT_EQ(time.asDouble(), 0);
}

namespace {

// The rule once more, for texts without NUL.
bool isTimeByExpression(const std::string& text) {
    static const std::regex rest(
        ":([012][0-9]{2}|3[0-5][0-9]|36[0-4]):([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]");
    const std::size_t years = std::min(text.find_first_not_of("0123456789"), text.size());
    return years <= 300 && std::regex_match(text.substr(years), rest);
}

}  // namespace

// Texts of every length, with each of the last characters replaced.
TEST(CoreTime, AcceptsNothingElse) {
    int accepted = 0;
    for (std::size_t length = 0; length <= 400; ++length) {
        const std::string tail = std::string(":364:23:59:59").substr(0, length);
        const std::string text = std::string(length - tail.size(), '9') + tail;
        for (std::size_t place = length - std::min<std::size_t>(length, 15); place < length;
             ++place) {
            std::string changed = text;
            for (const char c : {':', '0', '3', '4', '6', '9', '/', ' ', '-', '\0', '\xFF'}) {
                changed[place] = c;
                const std::string seen = changed.substr(0, changed.find('\0'));
                const bool expected = isTimeByExpression(seen);
                if (ZelCoreTime::isTime(seen.c_str()) != expected) FAIL() << seen;
                accepted += expected;
            }
        }
    }
    EXPECT_GT(accepted, 10'000);
}

struct WriteCase {
    const char* why;
    double seconds;
    double daysPerYear;
    double hoursPerDay;
    std::string text;
};

const WriteCase kWritten[] = {
    {"nothing", 0, 0, 0, "00:000:00:00:00"},
    {"a day and one of each", 90061, 0, 0, "00:001:01:01:01"},
    {"a year", kYear, 0, 0, "01:000:00:00:00"},
    {"a second less than a year", kYear - 1, 0, 0, "00:364:23:59:59"},
    {"halves are rounded up, once", 59.5, 0, 0, "00:000:00:01:00"},
    {"less than a half", 59.4999, 0, 0, "00:000:00:00:59"},
    {"rounded up into the next year", kYear - 0.25, 0, 0, "01:000:00:00:00"},
    {"ninety-nine years", 99. * kYear, 0, 0, "99:000:00:00:00"},
    {"a hundred years", 100. * kYear, 0, 0, "100:000:00:00:00"},
    {"a working day of 8 hours", 9 * 3600, 0, 8, "00:001:01:00:00"},
    {"years of 200 working days", 201 * 8 * 3600 + 59, 200, 8, "01:001:00:00:59"},
    {"a day of 100 hours", 99 * 3600, 0, 100, "00:000:99:00:00"},
    {"days of four digits", 1500. * kDay, 2000, 24, "00:1500:00:00:00"},
    {"hours of three digits", 150 * 3600, 0, 200, "00:000:150:00:00"},
    {"half an hour a day: hours stay 0", 4000, 365, 0.5, "00:002:00:06:40"},
    {"a base with fractions", 365.25 * kDay + 61, 365.25, 24, "01:000:00:01:01"},
    {"negative", -1, 0, 0, "-1:364:23:59:59"},
    {"more negative", -10. * kYear - 3600, 0, 0, "-11:364:23:00:00"},
    {"more than 64 bits hold", std::ldexp(31'536'000., 64), 0, 0,
     "18446744073709551616:000:00:00:00"},
    {"infinite", kInfinite, 0, 0, "inf:000:00:00:00"},
    {"infinite, negative", -kInfinite, 0, 0, "-inf:000:00:00:00"},
    {"not a number", kNoNumber, 0, 0, "nan:000:00:00:00"},
    {"not a number, negative", -kNoNumber, 0, 0, "nan:000:00:00:00"},
    {"a negative length of the year", 1, -365, 24, "-1:-365:00:00:01"},
    {"more days than 32 bits hold", 1e15, 1e100, 24, "00:2147483647:01:46:40"},
    {"more hours than 32 bits hold", 1e15, 1e100, 1e12, "00:000:2147483647:46:40"},
};

TEST(CoreTime, WritesByItsBase) {
    for (const auto& [why, seconds, daysPerYear, hoursPerDay, text] : kWritten) {
        SCOPED_TRACE(why);
        const ZelCoreTime time(seconds, daysPerYear, hoursPerDay);
        EXPECT_EQ(time.asString(), text);
        EXPECT_STREQ(time.asChar(), text.c_str());
    }
    // A double has up to 309 digits, all of which count.
    const SV::String largest = ZelCoreTime(kMost, 1.0 / 3600, 1.0).asString();
    EXPECT_EQ(largest.size(), 309u + 13);
    const SV::String tiny = ZelCoreTime(1e300, 1e-300, 1e-300).asString();
    EXPECT_TRUE(std::string_view(tiny).starts_with("inf:")) << tiny.c_str();
}

// Against integer arithmetic, in bases of whole numbers.
TEST(CoreTime, WritesAndReadsWhatIntegersGive) {
    constexpr long long kBases[][2] = {{365, 24}, {220, 8}, {400, 24}, {1, 1}, {360, 30}};
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 100'000; ++i) {
        const auto& [daysPerYear, hoursPerDay] = kBases[i % 5];
        const long long seconds = static_cast<long long>(random() >> (12 + random() % 40));
        const ZelCoreTime time(seconds, static_cast<double>(daysPerYear),
                               static_cast<double>(hoursPerDay));
        const long long perDay = hoursPerDay * 3600, ofYear = seconds % (perDay * daysPerYear);
        const int ofDay = static_cast<int>(ofYear % perDay);
        char expected[64];
        std::snprintf(expected, sizeof expected, "%02lld:%03lld:%02d:%02d:%02d",
                      seconds / (perDay * daysPerYear), ofYear / perDay, ofDay / 3600,
                      ofDay / 60 % 60, ofDay % 60);
        ASSERT_EQ(time.asString(), expected) << seconds;
        const bool isAccepted = ofYear / perDay < 365 && ofDay / 3600 < 24;
        ASSERT_EQ(ZelCoreTime::isTime(expected), isAccepted) << expected;
        if (isAccepted && seconds / (perDay * daysPerYear) <= kMost32) {
            ZelCoreTime back(time);
            back = expected;
            ASSERT_EQ(back.asDouble(), static_cast<double>(seconds));
        }
    }
}

// With fractions anywhere, against the same steps in longer numbers.
TEST(CoreTime, WritesWhatLongerNumbersGive) {
    std::mt19937_64 random(1582);
    std::uniform_real_distribution<double> part(0, 1);
    for (int i = 0; i < 100'000; ++i) {
        const double daysPerYear = 1 + std::floor(part(random) * 4000) / 8;
        const double hoursPerDay = 1 + std::floor(part(random) * 240) / 8;
        const double seconds = std::floor(part(random) * std::ldexp(1, i % 50) * 4) / 4;
        long double rest = static_cast<long double>(seconds) + 0.5L;
        const auto take = [&rest](long double unit) {
            const long double count = std::floor(rest / unit);
            rest -= count * unit;
            return static_cast<long long>(count);
        };
        const long long years = take(daysPerYear * hoursPerDay * 3600),
                        days = take(hoursPerDay * 3600);
        const long long hours = take(3600), minutes = take(60), left = take(1);
        char expected[64];
        std::snprintf(expected, sizeof expected, "%02lld:%03lld:%02lld:%02lld:%02lld", years, days,
                      hours, minutes, left);
        ASSERT_EQ(ZelCoreTime(seconds, daysPerYear, hoursPerDay).asString(), expected) << seconds;
    }
}

struct ConstructorCase {
    const char* why;
    ZelCoreTime time;
    double seconds;
    bool overflow;
    const char* fourDays;  // what 4 * 24 hours are in its base
};

TEST(CoreTime, IsMadeInManyWays) {
    const DefaultBase base(3, 12);
    const char* const kNone = nullptr;
    const ZelCoreTime original(-7LL, 2.0, 24.0);
    const ConstructorCase cases[] = {
        {"nothing", ZelCoreTime(), 0, false, "02:002:00:00:00"},
        {"copy, with base and flag", original, -7, true, "02:000:00:00:00"},
        {"text", ZelCoreTime("01:000:00:00:01"), 129'601, false, "02:002:00:00:00"},
        {"no text", ZelCoreTime(kNone), 0, false, "02:002:00:00:00"},
        {"integer", ZelCoreTime(5LL), 5, false, "02:002:00:00:00"},
        {"negative integer", ZelCoreTime(-5LL), -5, true, "02:002:00:00:00"},
        {"number", ZelCoreTime(5.5), 5.5, false, "02:002:00:00:00"},
        {"negative number", ZelCoreTime(-0.5), -0.5, true, "02:002:00:00:00"},
        {"a number alone may be infinite", ZelCoreTime(kInfinite), kInfinite, false,
         "02:002:00:00:00"},
        {"infinite, with a base", ZelCoreTime(kInfinite, 1.0, 1.0), kInfinite, true,
         "96:000:00:00:00"},
        {"three texts", ZelCoreTime("01:000:00:00:00", "2,5", "24.0"), 216'000, false,
         "01:001:12:00:00"},
        {"texts that are no numbers stand for the defaults", ZelCoreTime("", "", "x"), 0, false,
         "02:002:00:00:00"},
        {"null texts, too", ZelCoreTime(kNone, kNone, kNone), 0, false, "02:002:00:00:00"},
        {"integer and base", ZelCoreTime(9LL, 0.0, 24.0), 9, false, "01:001:00:00:00"},
        {"text and base", ZelCoreTime("01:000:00:00:00", 1.0, 0.0), 43'200, false,
         "08:000:00:00:00"},
        {"text of more than doubles hold", ZelCoreTime("9:000:00:00:00", 1e303, 24.0), kInfinite,
         true, "00:004:00:00:00"},
    };
    for (const auto& [why, time, seconds, overflow, fourDays] : cases) {
        SCOPED_TRACE(why);
        EXPECT_EQ(time.asDouble(), seconds);
        EXPECT_EQ(time.overFlow(), overflow);
        ZelCoreTime other(time);
        other = static_cast<double>(4 * kDay);
        EXPECT_EQ(other.asString(), fourDays);
    }
}

TEST(CoreTime, KeepsItsBaseWhenTheDefaultsChange) {
    ZelCoreTime time(static_cast<double>(2 * kDay));
    {
        const DefaultBase base(100, 8);
        EXPECT_EQ(ZelCoreTime::GetStaticDaysPerYear(), 100);
        EXPECT_EQ(ZelCoreTime::GetStaticHoursPerDay(), 8);
        EXPECT_EQ(time.asString(), "00:002:00:00:00");
        time.setBase(0L, 12L);
        EXPECT_EQ(time.asString(), "00:004:00:00:00");
        time.setBase(0.0, 0.0);
        EXPECT_EQ(time.asString(), "00:006:00:00:00");
        EXPECT_EQ(time.asDouble(), 2 * kDay);
        // Nothing is checked: a base of nothing gives what the arithmetic gives.
        ZelCoreTime::SetStaticTimeBase(0, -1);
        EXPECT_EQ(ZelCoreTime(1.0).asString(), "-inf:000:00:00:00");
    }
    EXPECT_EQ(ZelCoreTime(1.0).asString(), "00:000:00:00:01");
}

struct OperatorCase {
    const char* why;
    double before;
    void (*apply)(ZelCoreTime&);
    double after;
    bool overflow;
};

const OperatorCase kOperators[] = {
    {"sum with an integer", 1, [](ZelCoreTime& t) { t += 2LL; }, 3, false},
    {"sum with a number", 1, [](ZelCoreTime& t) { t += 0.5; }, 1.5, false},
    {"negative integer", 1, [](ZelCoreTime& t) { t += -1LL; }, 1, true},
    {"negative number", 1, [](ZelCoreTime& t) { t += -1.0; }, 1, true},
    {"not a number", 1, [](ZelCoreTime& t) { t += kNoNumber; }, 1, true},
    {"a sum that is too large", kMost, [](ZelCoreTime& t) { t += kMost; }, kMost, true},
    {"sums of durations are not guarded", kMost, [](ZelCoreTime& t) { t += ZelCoreTime(kMost); },
     kInfinite, false},
    {"sum with a text", 1, [](ZelCoreTime& t) { t += "00:001:00:00:00"; }, 86'401, false},
    {"sum with another text", 1, [](ZelCoreTime& t) { t += "x"; }, 1, false},
    {"difference with a text", 86'401, [](ZelCoreTime& t) { t -= "00:001:00:00:00"; }, 1, false},
    {"never below 0", 10, [](ZelCoreTime& t) { t -= "00:001:00:00:00"; }, 0, false},
    {"also with a text that is none", -2, [](ZelCoreTime& t) { t -= ""; }, 0, false},
    {"product", 3, [](ZelCoreTime& t) { t *= 1.5; }, 4.5, false},
    {"product with 0", 3, [](ZelCoreTime& t) { t *= 0.0; }, 0, false},
    {"negative factor", 3, [](ZelCoreTime& t) { t *= -1.0; }, 3, true},
    {"a product that is too large", kMost, [](ZelCoreTime& t) { t *= 2.0; }, kInfinite, true},
    {"quotient", 3, [](ZelCoreTime& t) { t /= 2.0; }, 1.5, false},
    {"quotient with 0", 3, [](ZelCoreTime& t) { t /= 0.0; }, 3, true},
    {"a negative divisor divides", 3, [](ZelCoreTime& t) { t /= -2.0; }, -1.5, true},
    {"text", 3, [](ZelCoreTime& t) { t = "00:000:00:01:00"; }, 60, false},
    {"another text", 3, [](ZelCoreTime& t) { t.setAsChar("later"); }, 0, false},
    {"a long", 3, [](ZelCoreTime& t) { t = -4L; }, -4, false},
    {"64 bits", 3, [](ZelCoreTime& t) { t = kMost64; }, 9223372036854775808.0, false},
    {"a negative number", 3, [](ZelCoreTime& t) { t = -0.25; }, -0.25, false},
    {"setTime checks nothing", 3, [](ZelCoreTime& t) { t.setTime(-kInfinite); }, -kInfinite, false},
};

TEST(CoreTime, ComputesAndKeepsTheFlag) {
    for (const auto& [why, before, apply, after, overflow] : kOperators) {
        SCOPED_TRACE(why);
        ZelCoreTime time(before < 0 ? 0 : before);
        time = before;
        apply(time);
        EXPECT_EQ(time.asDouble(), after);
        EXPECT_EQ(time.overFlow(), overflow);
        ZelCoreTime flagged(-1.0);
        flagged = before;
        apply(flagged);
        EXPECT_TRUE(flagged.overFlow()) << "nothing clears the flag";
    }
}

TEST(CoreTime, AssignmentTakesTheValueAlone) {
    const ZelCoreTime source(-5.0, 100.0, 8.0);
    ZelCoreTime target(1.0, 10.0, 24.0);
    target = source;
    EXPECT_EQ(target.asDouble(), -5);
    EXPECT_FALSE(target.overFlow());
    target = 11.0 * kDay;
    EXPECT_EQ(target.asString(), "01:001:00:00:00");
    const ZelCoreTime sum = target + ZelCoreTime(9.0 * kDay, 365.0, 1.0);
    EXPECT_EQ(sum.asString(), "02:000:00:00:00");
    EXPECT_FALSE((target + ZelCoreTime(1.0)).overFlow());
    EXPECT_TRUE((source + ZelCoreTime()).overFlow());
}

struct IntegerCase {
    const char* why;
    double value;
    long long seconds;
    long asLong;
};

const IntegerCase kIntegers[] = {
    {"rounds up", 1.5, 2, 2},
    {"rounds down", 1.4999, 1, 1},
    {"negative: a half is added, then it is cut", -1.2, 0, 0},
    {"more negative", -3.7, -3, -3},
    {"the largest of 32 bits", 2147483647.0, kMost32, kMost32},
    {"a little more", 2147483647.25, kMost32, 0},
    {"three billions", 3e9, 3'000'000'000, 0},
    {"below 32 bits", -3e9, -2'999'999'999, -kMost32 - 1},
    {"above 64 bits", 1e19, kMost64, 0},
    {"exactly 2^63", 9223372036854775808.0, kMost64, 0},
    {"below 64 bits", -1e19, -kMost64 - 1, -kMost32 - 1},
    {"infinite", kInfinite, kMost64, 0},
    {"infinite, negative", -kInfinite, -kMost64 - 1, -kMost32 - 1},
    {"not a number", kNoNumber, 0, 0},
};

TEST(CoreTime, IsAnIntegerWithinItsLimits) {
    for (const auto& [why, value, seconds, asLong] : kIntegers) {
        SCOPED_TRACE(why);
        const ZelCoreTime time(value);
        EXPECT_EQ(time.asSeconds(), seconds);
        EXPECT_EQ(time.asLong(), asLong);
    }
    EXPECT_FALSE(ZelCoreTime::WillBeSumOverflow(kMost64, kMost64));
    EXPECT_FALSE(ZelCoreTime::WillBeSumOverflow(-kMost64 - 1, -1));
}

namespace {

// Shows what is in dates, for callers only in their display.
struct OpenDate : ZelCoreDate {
    using ZelCoreDate::_ImpParse;
};
struct OpenDateTime : ZelCoreDateTime {
    using ZelCoreDateTime::_ImpParse;
};

}  // namespace

// Against the calendar of the C++ library, every day that there is and some that there are not.
TEST(CoreDate, AcceptsTheDaysThatThereAre) {
    const auto put = [](char* text, unsigned number) {
        text[0] = static_cast<char>('0' + number / 10);
        text[1] = static_cast<char>('0' + number % 10);
    };
    for (int year = 0; year <= 9999; ++year) {
        const std::chrono::year calendarYear(year);
        char text[] = "yyyy:mm:dd";
        put(text, static_cast<unsigned>(year / 100));
        put(text + 2, static_cast<unsigned>(year % 100));
        for (unsigned month = 0; month <= 13; ++month) {
            for (unsigned day = 0; day <= 32; ++day) {
                const std::chrono::year_month_day expected(calendarYear, std::chrono::month(month),
                                                           std::chrono::day(day));
                put(text + 5, month);
                put(text + 8, day);
                SV::Date date(1, 2, 3);
                const bool isDay = year > 0 && expected.ok();
                if (OpenDate::_ImpParse(text, &date) != isDay) FAIL() << text;
                const int asInt = static_cast<int>(day), monthAsInt = static_cast<int>(month);
                const SV::Date after =
                    isDay ? SV::Date(asInt, monthAsInt, year) : SV::Date(1, 2, 3);
                if (date != after) FAIL() << text;
                if (!isDay) continue;
                const std::chrono::weekday weekday{std::chrono::sys_days(expected)};
                const auto number = static_cast<unsigned>(date.GetDayOfWeek());
                if (number + 1 != weekday.iso_encoding()) FAIL() << text;
            }
        }
    }
}

struct DateCase {
    const char* why;
    std::string text;
    bool isDate;
    bool isDateTime;
};

const DateCase kDates[] = {
    {"a leap day", "2024:02:29", true, false},
    {"in other years there is none", "2023:02:29", false, false},
    {"nor in most centuries", "1900:02:29", false, false},
    {"but in some", "2000:02:29", true, false},
    {"hyphens", "2024-02-29", false, false},
    {"one digit", "2024:2:29", false, false},
    {"one digit, and the length is right", "02024:2:29", false, false},
    {"a sign", "2024:+2:29", false, false},
    {"a blank for a digit", "2024: 2:29", false, false},
    {"a blank behind", "2024:02:29 ", false, false},
    {"a letter", "2O24:02:29", false, false},
    {"a time behind", "2024:02:29 23:59:59", false, true},
    {"midnight", "0001:01:01 00:00:00", false, true},
    {"24 o'clock", "2024:02:29 24:00:00", false, false},
    {"a leap second", "2016:12:31 23:59:60", false, false},
    {"60 minutes", "2024:02:29 12:60:00", false, false},
    {"the day does not exist", "2024:02:30 12:00:00", false, false},
    {"two blanks", "2024:02:29  2:00:00", false, false},
    {"another separator", "2024:02:29T12:00:00", false, false},
    {"a time with points", "2024:02:29 12.00.00", false, false},
    {"without seconds", "2024:02:29 12:00", false, false},
    {"a character more", "2024:02:29 12:00:000", false, false},
    {"empty", "", false, false},
    {"long", std::string(100'000, '2'), false, false},
};

TEST(CoreDate, KnowsItsTexts) {
    const SV::Date kDate(1, 2, 3);
    const SV::Time kTime(4, 5, 6, 7);
    for (const auto& [why, text, isDate, isDateTime] : kDates) {
        SCOPED_TRACE(why);
        EXPECT_EQ(ZelCoreDate::IsValidString(text.c_str()), isDate);
        EXPECT_EQ(ZelCoreDateTime::IsValidString(text.c_str()), isDateTime);
        SV::Date date = kDate;
        SV::Time time = kTime;
        EXPECT_EQ(OpenDateTime::_ImpParse(text.c_str(), &date, &time), isDateTime);
        EXPECT_EQ(date == kDate && time == kTime, !isDateTime);
        EXPECT_EQ(OpenDateTime::_ImpParse(text.c_str(), nullptr, &time), isDateTime);
    }
    EXPECT_FALSE(ZelCoreDate::IsValidString(nullptr));
    EXPECT_FALSE(ZelCoreDateTime::IsValidString(nullptr));
    SV::Date date = kDate;
    SV::Time time = kTime;
    EXPECT_TRUE(OpenDateTime::_ImpParse("2024:02:29 23:58:59", &date, &time));
    EXPECT_EQ(date, SV::Date(29, 2, 2024));
    EXPECT_EQ(time, SV::Time(23, 58, 59, 7)) << "the hundredths stay";
    time = SV::Time(0, 0) - kTime;
    EXPECT_TRUE(OpenDateTime::_ImpParse("2024:02:29 00:00:01", nullptr, &time));
    EXPECT_EQ(time, SV::Time(0, 0) - SV::Time(0, 0, 1, 7)) << "and the sign";
}
