// The local clock without Windows.

#include <ctime>

#include "sv/datetime.h"

namespace SV {

namespace {

std::tm localNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);  // unlike `std::localtime`, for several threads
    return local;
}

Date dateOf(const std::tm& now) { return {now.tm_mday, now.tm_mon + 1, now.tm_year + 1900}; }
Time timeOf(const std::tm& now) { return {now.tm_hour, now.tm_min, now.tm_sec}; }

}  // namespace

Date::Date() : Date(dateOf(localNow())) {}
Time::Time() : Time(timeOf(localNow())) {}

}  // namespace SV
