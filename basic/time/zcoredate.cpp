// Dates and date-times as texts.

#include <cstring>
#include <optional>

#include "time/digits.h"
#include "time/localeforms.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zdattime.h"

namespace {

// As long as is of interest: no more than `most` + 1 characters are looked at.
std::size_t lengthOf(const char* text, std::size_t most) {
    const void* const end = text ? std::memchr(text, '\0', most + 1) : text;
    return end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : most + 1;
}

// The day in a text that has at least the 10 characters of one.
std::optional<SV::Date> parseDate(const char* text) {
    if (text[4] != ':' || text[7] != ':') return std::nullopt;
    const int year = readDigits(text, 4);
    const int month = readDigits(text + 5, 2);
    const int day = readDigits(text + 8, 2);
    // The rules below see to 0 and -1 in months and days.
    if (year < 1 || !ZelDate::DayIsValidForMonth(day, month - 1, ZelDate::IsLeapYear(year))) {
        return std::nullopt;
    }
    return SV::Date(day, month, year);
}

struct TimeOfDay {
    int hour;
    int minute;
    int second;
};

// The time in a text that has at least the 8 characters of one.
std::optional<TimeOfDay> parseTime(const char* text) {
    if (text[2] != ':' || text[5] != ':') return std::nullopt;
    const TimeOfDay time = {readDigits(text, 2), readDigits(text + 3, 2), readDigits(text + 6, 2)};
    const auto isWithin = [](int value, int limit) { return value >= 0 && value < limit; };
    if (!isWithin(time.hour, 24) || !isWithin(time.minute, 60) || !isWithin(time.second, 60)) {
        return std::nullopt;
    }
    return time;
}

}  // namespace

ZelCoreDate::ZelCoreDate(const char* text) { _ImpParse(text, &m_date); }

bool ZelCoreDate::IsValidString(const char* text) { return _ImpParse(text, nullptr); }

SV::String ZelCoreDate::GetDisplayString(bool longForm) const {
    return longForm ? localeLongDate(m_date) : localeDate(m_date);
}

bool ZelCoreDate::_ImpParse(const char* text, SV::Date* target) {
    constexpr std::size_t kLength = 10;
    if (lengthOf(text, kLength) != kLength) return false;
    const std::optional<SV::Date> date = parseDate(text);
    if (date && target) *target = *date;
    return date.has_value();
}

ZelCoreDateTime::ZelCoreDateTime(const char* text) { _ImpParse(text, &m_date, &m_time); }

bool ZelCoreDateTime::IsValidString(const char* text) { return _ImpParse(text, nullptr, nullptr); }

SV::String ZelCoreDateTime::GetDisplayString(bool longForm) const {
    return (longForm ? localeLongDate(m_date) : localeDate(m_date)) + " " + localeTime(m_time);
}

bool ZelCoreDateTime::_ImpParse(const char* text, SV::Date* date, SV::Time* time) {
    constexpr std::size_t kLength = 19;
    constexpr std::size_t kBlank = 10;
    if (lengthOf(text, kLength) != kLength || text[kBlank] != ' ') return false;
    const std::optional<SV::Date> day = parseDate(text);
    if (!day) return false;
    const std::optional<TimeOfDay> ofDay = parseTime(text + kBlank + 1);
    if (!ofDay) return false;
    if (date) *date = *day;
    if (time) {
        time->ChangeHour(ofDay->hour);
        time->ChangeMin(ofDay->minute);
        time->ChangeSec(ofDay->second);
    }
    return true;
}
