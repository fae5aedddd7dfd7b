#include "sv/datetime.h"

#include <windows.h>

namespace SV {

namespace {

SYSTEMTIME localNow() {
    // Not the run time's clock: that one follows TZ, the system's does not.
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    return now;
}

Date dateOf(const SYSTEMTIME& now) { return {now.wDay, now.wMonth, now.wYear}; }

Time timeOf(const SYSTEMTIME& now) {
    return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds / 10};
}

}  // namespace

Date::Date() : Date(dateOf(localNow())) {}

DayOfWeek Date::GetDayOfWeek() const {
    // Days since a Monday, the year counted from March so that the leap day comes last.
    const int shift = GetMonth() < 3 ? 1 : 0;
    const int year = GetYear() - shift;
    const int month = GetMonth() + 12 * shift - 3;
    const int days = 365 * year + year / 4 - year / 100 + year / 400 + (153 * month + 2) / 5;
    return static_cast<DayOfWeek>((days + GetDay() + 1) % 7);
}

Time::Time() : Time(timeOf(localNow())) {}

}  // namespace SV
