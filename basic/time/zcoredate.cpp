// Dates and date-times as texts.

#include <cstddef>
#include <optional>

#include "time/digits.h"
#include "time/localeforms.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zdattime.h"

namespace {

// Reads `count` digits and the character behind them, which are left behind; -1 without those.
// Nothing is read behind the end of the text.
int take(const char*& text, std::size_t count, char behind) {
    const int number = readDigits(text, count);
    if (number < 0 || text[count] != behind) return -1;
    text += count + 1;
    return number;
}

std::optional<SV::Date> takeDate(const char*& text, char behind) {
    const int year = take(text, 4, ':');
    if (year < 1) return std::nullopt;
    const int month = take(text, 2, ':');
    if (month < 0) return std::nullopt;
    const int day = take(text, 2, behind);
    // Month and day 0 are no more valid than what is no number.
    if (!ZelDate::DayIsValidForMonth(day, month - 1, ZelDate::IsLeapYear(year))) {
        return std::nullopt;
    }
    return SV::Date(day, month, year);
}

struct TimeOfDay {
    int hour;
    int minute;
    int second;
};

std::optional<TimeOfDay> takeTime(const char*& text) {
    const int hour = take(text, 2, ':');
    if (hour < 0 || hour >= 24) return std::nullopt;
    const int minute = take(text, 2, ':');
    if (minute < 0 || minute >= 60) return std::nullopt;
    const int second = take(text, 2, '\0');
    if (second < 0 || second >= 60) return std::nullopt;
    return TimeOfDay{hour, minute, second};
}

// The hundredths stay, and so does the sign.
void change(SV::Time& time, const TimeOfDay& fields) {
    constexpr SV::Time kZero(0, 0);
    const SV::Time changed(fields.hour, fields.minute, fields.second, time.Get100Sec());
    time = time < kZero ? kZero - changed : changed;
}

}  // namespace

ZelCoreDate::ZelCoreDate(const char* text) { _ImpParse(text, &m_date); }

bool ZelCoreDate::IsValidString(const char* text) { return _ImpParse(text, nullptr); }

SV::String ZelCoreDate::GetDisplayString(bool longForm) const {
    return longForm ? localeLongDate(m_date) : localeDate(m_date);
}

bool ZelCoreDate::_ImpParse(const char* text, SV::Date* target) {
    if (!text) return false;
    const std::optional<SV::Date> date = takeDate(text, '\0');
    if (date && target) *target = *date;
    return date.has_value();
}

ZelCoreDateTime::ZelCoreDateTime(const char* text) { _ImpParse(text, &m_date, &m_time); }

bool ZelCoreDateTime::IsValidString(const char* text) { return _ImpParse(text, nullptr, nullptr); }

SV::String ZelCoreDateTime::GetDisplayString(bool longForm) const {
    return (longForm ? localeLongDate(m_date) : localeDate(m_date)) + " " + localeTime(m_time);
}

bool ZelCoreDateTime::_ImpParse(const char* text, SV::Date* date, SV::Time* time) {
    if (!text) return false;
    const std::optional<SV::Date> day = takeDate(text, ' ');
    if (!day) return false;
    const std::optional<TimeOfDay> ofDay = takeTime(text);
    if (!ofDay) return false;
    if (date) *date = *day;
    if (time) change(*time, *ofDay);
    return true;
}
