#include <cstdio>

#include "diag/logclock.h"

#include <windows.h>

namespace {

constexpr std::uint64_t kTicksInSecond = 10'000'000;  // the system counts in 100 ns
constexpr std::uint64_t kTicksInMillisecond = 10'000;

}  // namespace

void LogClock::update() {
    FILETIME now;
    ::GetSystemTimePreciseAsFileTime(&now);  // under Wine the fastest clock as well
    const std::uint64_t ticks = std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    m_millisecond = static_cast<unsigned>(ticks % kTicksInSecond / kTicksInMillisecond);
    if (ticks / kTicksInSecond == m_second) return;
    m_second = ticks / kTicksInSecond;
    toLocal(ticks);
}

void LogClock::toLocal(std::uint64_t ticks) {
    const FILETIME utc = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    FILETIME local = {};
    SYSTEMTIME now = {};
    ::FileTimeToLocalFileTime(&utc, &local);
    ::FileTimeToSystemTime(&local, &now);
    m_date = SV::Date(now.wDay, now.wMonth, now.wYear);
    std::snprintf(m_dateText, sizeof m_dateText, "%04d.%02d.%02d", now.wYear, now.wMonth, now.wDay);
    std::snprintf(m_timeText, sizeof m_timeText, "%02d:%02d:%02d", now.wHour, now.wMinute,
                  now.wSecond);
}
