// Durations as texts.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "sv/ascii.h"
#include "time/digits.h"
#include "time/saturate.h"
#include "zbasic/zcoretime.h"

namespace {

constexpr std::size_t kMostYearDigits = 300;
constexpr std::size_t kMostYearsLength = std::numeric_limits<double>::max_exponent10 + 2;  // sign
constexpr std::size_t kMostTailLength = 4 * (1 + 11);
constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerMinute = 60;

constexpr double kExactIntegers = 9007199254740992.0;  // 2^53: integers below are exact

// What a duration consists of; whole numbers all of them.
struct Fields {
    double years;
    std::int32_t days;
    std::int32_t hours;
    std::int32_t minutes;
    std::int32_t seconds;
};

// The system's `floor` is a call; numbers as small as durations have a faster way.
double roundedDown(double value) {
    if (!(value >= 0 && value < kExactIntegers)) return std::floor(value);
    return static_cast<double>(static_cast<std::int64_t>(value));
}

bool isExactLength(double seconds) {
    return seconds >= 1 && seconds < kExactIntegers && seconds == roundedDown(seconds);
}

// With whole numbers doubles and integers give the same, and integers are faster.
template <class Integer>
Fields fieldsOfWhole(Integer seconds, Integer perDay, Integer perYear) {
    const Integer years = seconds / perYear;
    seconds -= years * perYear;
    const Integer days = seconds / perDay;
    seconds -= days * perDay;
    const Integer hours = seconds / kSecondsPerHour;
    seconds -= hours * kSecondsPerHour;
    const auto limited = [](Integer value) {
        constexpr Integer kMost = std::numeric_limits<std::int32_t>::max();
        return static_cast<std::int32_t>(std::min(value, kMost));
    };
    const auto rest = static_cast<std::int32_t>(seconds);
    return {static_cast<double>(years), limited(days), limited(hours), rest / kSecondsPerMinute,
            rest % kSecondsPerMinute};
}

// How many times `unit` goes into `rest`, which keeps what is left.
double takeOut(double& rest, double unit) {
    const double count = roundedDown(rest / unit);
    rest -= count * unit;
    return count;
}

Fields fieldsOfAny(double seconds, double perDay, double perYear) {
    const double years = takeOut(seconds, perYear);
    const double days = takeOut(seconds, perDay);
    const double hours = takeOut(seconds, kSecondsPerHour);
    const double minutes = takeOut(seconds, kSecondsPerMinute);
    return {years, saturated<std::int32_t>(days), saturated<std::int32_t>(hours),
            saturated<std::int32_t>(minutes), saturated<std::int32_t>(std::floor(seconds))};
}

Fields fieldsOf(double seconds, double perDay, double perYear) {
    if (!(seconds >= 0 && seconds < kExactIntegers) || !isExactLength(perDay) ||
        !isExactLength(perYear)) {
        return fieldsOfAny(seconds, perDay, perYear);
    }
    return fieldsOfWhole(static_cast<std::int64_t>(seconds), static_cast<std::int64_t>(perDay),
                         static_cast<std::int64_t>(perYear));
}

// As `printf` does with "%02.0f".
char* writeYears(char* out, double years) {
    constexpr double kFewYears = 1e9;
    if (years < kFewYears && years >= 0 && !std::signbit(years)) {
        return writePadded(out, static_cast<std::int32_t>(years), 2);
    }
    if (std::isnan(years)) return std::copy_n("nan", 3, out);  // whatever its sign
    return std::to_chars(out, out + kMostYearsLength, years, std::chars_format::fixed, 0).ptr;
}

char* writeField(char* out, std::int32_t value, int width) {
    *out++ = ':';
    return writePadded(out, value, width);
}

// The years at `text`, which is moved to the colon behind them; -1 without a colon there.
std::int32_t readYears(const char*& text) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    const char* const limit = text + kMostYearDigits;
    std::int64_t years = 0;
    for (; text != limit && SV::IsAsciiDigit(*text); ++text) {
        years = std::min(years * 10 + (*text - '0'), kMost);
    }
    return *text == ':' ? static_cast<std::int32_t>(years) : -1;
}

// Moves `text` behind ":" and a number of `count` digits, at most `most`; -1 without those.
int readField(const char*& text, std::size_t count, int most) {
    if (*text != ':') return -1;
    const int value = readDigits(text + 1, count);
    if (value < 0 || value > most) return -1;
    text += 1 + count;
    return value;
}

// Relied on by callers: the limits do not follow the base of a duration.
std::optional<Fields> parse(const char* text) {
    if (!text) return std::nullopt;
    const std::int32_t years = readYears(text);
    if (years < 0) return std::nullopt;
    const int days = readField(text, 3, 364);
    if (days < 0) return std::nullopt;
    const int hours = readField(text, 2, 23);
    if (hours < 0) return std::nullopt;
    const int minutes = readField(text, 2, 59);
    if (minutes < 0) return std::nullopt;
    const int seconds = readField(text, 2, 59);
    if (seconds < 0 || *text != '\0') return std::nullopt;
    return Fields{static_cast<double>(years), days, hours, minutes, seconds};
}

}  // namespace

bool ZelCoreTime::isTime(const char* text) { return parse(text).has_value(); }

double ZelCoreTime::_s2d(const char* text) const {
    const std::optional<Fields> fields = parse(text);
    if (!fields) return 0;
    const int ofDay =
        fields->seconds + fields->minutes * kSecondsPerMinute + fields->hours * kSecondsPerHour;
    return fields->years * secondsPerYear() + (ofDay + fields->days * secondsPerDay());
}

const SV::String& ZelCoreTime::_d2s(double seconds) const {
    const Fields fields = fieldsOf(seconds + 0.5, secondsPerDay(), secondsPerYear());
    char text[kMostYearsLength + kMostTailLength];
    std::fill_n(text, SV::String::kInlineCapacity, '\0');  // all of which is copied below
    char* end = writeYears(text, fields.years);
    end = writeField(end, fields.days, 3);
    end = writeField(end, fields.hours, 2);
    end = writeField(end, fields.minutes, 2);
    end = writeField(end, fields.seconds, 2);
    return m_text.assignPadded(text, static_cast<std::size_t>(end - text));
}
