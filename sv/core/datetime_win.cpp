// The local clock.

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

Time::Time() : Time(timeOf(localNow())) {}

}  // namespace SV
