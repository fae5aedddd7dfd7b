// Calendar dates and times of day.

#pragma once

#include <compare>
#include <cstdint>

#include "sv/export.h"

namespace SV {

// Days of a week that begins on Monday.
enum DayOfWeek : std::int32_t { Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday };

// A day of the Gregorian calendar, one integer YYYYMMDD. Nothing is checked:
// callers ask before they store a 31 February.
class SV_API Date {
public:
    Date();  // today, by the local clock
    // Day and month count from 1: `Date(29, 2, 2024)`.
    constexpr Date(int day, int month, int year) : m_value(year * 10000 + month * 100 + day) {}

    constexpr int GetYear() const { return m_value / 10000; }       // all digits
    constexpr int GetMonth() const { return m_value / 100 % 100; }  // 1 to 12
    constexpr int GetDay() const { return m_value % 100; }          // 1 to 31
    // The other two stay as they are: 31 January becomes 31 February, which is no day.
    void ChangeYear(int year) { *this = Date(GetDay(), GetMonth(), year); }
    void ChangeMonth(int month) { *this = Date(GetDay(), month, GetYear()); }
    void ChangeDay(int day) { *this = Date(day, GetMonth(), GetYear()); }
    // By the Gregorian calendar, also for years before it was introduced.
    DayOfWeek GetDayOfWeek() const;

    friend constexpr auto operator<=>(const Date&, const Date&) = default;  // earlier is less

private:
    std::int32_t m_value;
};

// A signed time in hundredths of a second. Hours have no upper bound; the
// fields are those of the magnitude.
class SV_API Time {
public:
    Time();  // now, by the local clock
    // The sum of the four, each of any size and sign: `Time(0, 90)` is an hour and a half.
    constexpr Time(int hours, int minutes, int seconds = 0, int hundredths = 0)
        : Time(((std::int64_t{hours} * 60 + minutes) * 60 + seconds) * 100 + hundredths) {}

    // Fields of the magnitude: hours from 0 on, the others 0 to 59 and 0 to 99.
    constexpr int GetHour() const { return static_cast<int>(magnitude() / 360000); }
    constexpr int GetMin() const { return static_cast<int>(magnitude() / 6000 % 60); }
    constexpr int GetSec() const { return static_cast<int>(magnitude() / 100 % 60); }
    constexpr int Get100Sec() const { return static_cast<int>(magnitude() % 100); }
    // The other fields and the sign stay as they are; beyond its range a field adds to the next.
    void ChangeHour(int hours) { change(hours, GetMin(), GetSec(), Get100Sec()); }
    void ChangeMin(int minutes) { change(GetHour(), minutes, GetSec(), Get100Sec()); }
    void ChangeSec(int seconds) { change(GetHour(), GetMin(), seconds, Get100Sec()); }
    void Change100Sec(int hundredths) { change(GetHour(), GetMin(), GetSec(), hundredths); }

    // Negative when `b` is the later one.
    friend constexpr Time operator-(const Time& a, const Time& b) {
        return Time(a.m_hundredths - b.m_hundredths);
    }
    friend constexpr auto operator<=>(const Time&, const Time&) = default;  // the sign counts

private:
    explicit constexpr Time(std::int64_t hundredths) : m_hundredths(hundredths) {}
    constexpr std::int64_t magnitude() const {
        return m_hundredths < 0 ? -m_hundredths : m_hundredths;
    }
    void change(int hours, int minutes, int seconds, int hundredths) {
        const bool isNegative = m_hundredths < 0;
        *this = Time(hours, minutes, seconds, hundredths);
        if (isNegative) m_hundredths = -m_hundredths;
    }

    std::int64_t m_hundredths;
};

}  // namespace SV
