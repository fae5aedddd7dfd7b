// Times of day in the user interface.

#include <cstdint>
#include <limits>

#include "time/digits.h"
#include "zbasic/zdattime.h"

namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerMinute = 60;
constexpr std::size_t kClockLength = 8;  // "hh:mm:ss"
constexpr std::size_t kAmericanLength = kClockLength + 2;

constexpr SV::Time kEndOfDay(24, 0, 0, 0);

struct Clock {
    int hour;
    int minute;
    int second;
};

bool isWithin(int value, int first, int last) { return value >= first && value <= last; }

// The fields of "hh:mm:ss"; hours are the caller's to check.
bool readClock(const char* text, Clock& clock) {
    if (text[2] != ':' || text[5] != ':') return false;
    clock = {readDigits(text, 2), readDigits(text + 3, 2), readDigits(text + 6, 2)};
    return isWithin(clock.minute, 0, 59) && isWithin(clock.second, 0, 59);
}

bool read24Hours(const SV::String& text, Clock& clock) {
    if (text.size() != kClockLength || !readClock(text.data(), clock)) return false;
    const bool isEndOfDay = clock.hour == 24 && clock.minute == 0 && clock.second == 0;
    return isEndOfDay || isWithin(clock.hour, 0, 23);
}

// Without blanks and with two digits for the hours; empty when that is too long.
SV::String americanCore(const SV::String& text) {
    SV::String core;
    for (const char c : text) {
        if (c == ' ') continue;
        if (core.size() == kAmericanLength) return {};
        core += c;
    }
    return core.size() > 1 && core[1] == ':' ? "0" + core : core;
}

bool readAmerican(const SV::String& text, Clock& clock) {
    const SV::String core = americanCore(text);
    if (core.size() != kAmericanLength || !readClock(core.data(), clock)) return false;
    const char half = core[kClockLength];
    if ((half != 'A' && half != 'P') || core[kClockLength + 1] != 'M') return false;
    if (!isWithin(clock.hour, 1, 12)) return false;
    // Relied on by callers: 12 PM is hour 0, and 12 AM hour 12.
    if (half == 'P') clock.hour = clock.hour == 12 ? 0 : clock.hour + 12;
    return true;
}

SV::String clockText(int hour, const SV::Time& time, const char* suffix) {
    char text[kClockLength];
    char* end = writeTwoDigits(text, hour);
    *end++ = ':';
    end = writeTwoDigits(end, time.GetMin());
    *end++ = ':';
    writeTwoDigits(end, time.GetSec());
    return SV::String(text, sizeof text) += suffix;
}

}  // namespace

bool ZelTimeFunctions::bAmericanTimeFormat = false;

long ZelTimeFunctions::getTimeInSeconds(const SV::Time& time) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::int64_t ofHours = std::int64_t{time.GetHour()} * kSecondsPerHour;
    const std::int64_t seconds = ofHours + time.GetMin() * kSecondsPerMinute + time.GetSec();
    return static_cast<long>(seconds < kMost ? seconds : kMost);
}

SV::Time ZelTimeFunctions::setTimeInSeconds(long seconds) {
    const long ofHour = seconds % kSecondsPerHour;
    return {static_cast<int>(seconds / kSecondsPerHour),
            static_cast<int>(ofHour / kSecondsPerMinute),
            static_cast<int>(ofHour % kSecondsPerMinute)};
}

long ZelTimeFunctions::getDiffTimeInSeconds(const SV::Time& from, const SV::Time& to) {
    return from > to ? 0 : getTimeInSeconds(to - from);
}

SV::String ZelTimeFunctions::getTimeInUIRep(const SV::Time& time) {
    const int hour = time == kEndOfDay ? 24 : time.GetHour() % 24;
    if (!bAmericanTimeFormat) return clockText(hour, time, "");
    // Relied on by callers: hour 0 is 12 PM, and hour 12 is 12 AM.
    if (hour == 0) return clockText(12, time, " PM");
    return hour > 12 ? clockText(hour - 12, time, " PM") : clockText(hour, time, " AM");
}

bool ZelTimeFunctions::setTimeInUIRep(const SV::String& text, SV::Time& time) {
    Clock clock = {};
    if (!(bAmericanTimeFormat ? readAmerican(text, clock) : read24Hours(text, clock))) return false;
    time = SV::Time(clock.hour, clock.minute, clock.second);
    return true;
}

void ZelTimeFunctions::SetAmericanTimeFormat(bool isAmerican) { bAmericanTimeFormat = isAmerican; }

bool ZelTimeFunctions::IsAmericanTimeFormat() { return bAmericanTimeFormat; }
