// Rules of the calendar.

#include "zbasic/zdattime.h"

namespace {

constexpr int kMonths = 12;
constexpr int kWeekdays = 7;
constexpr int kFebruary = 1;
constexpr int kMonthLengths[kMonths] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

constexpr bool isWithin(int value, int count) { return value >= 0 && value < count; }

}  // namespace

bool ZelDate::IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

bool ZelDate::DayIsValid(int day) { return day >= 1 && day <= 31; }

bool ZelDate::MonthIsValid(int month) { return isWithin(month, kMonths); }

bool ZelDate::WeekdayIsValid(int weekday) { return isWithin(weekday, kWeekdays); }

bool ZelDate::GetMaxDayOfMonth(int month, int& days, bool leapYear) {
    days = kNotFound;
    if (!MonthIsValid(month)) return false;
    days = kMonthLengths[month] + (leapYear && month == kFebruary ? 1 : 0);
    return true;
}

bool ZelDate::DayIsValidForMonth(int day, int month, bool leapYear) {
    int days = 0;
    return GetMaxDayOfMonth(month, days, leapYear) && day >= 1 && day <= days;
}
