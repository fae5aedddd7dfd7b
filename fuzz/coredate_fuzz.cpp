// Texts of dates and date-times, against `sscanf` and the calendar of the C++ library.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "input.h"
#include "zbasic/zcoretime.h"

namespace {

struct OpenDate : ZelCoreDate {
    using ZelCoreDate::_ImpParse;
};
struct OpenDateTime : ZelCoreDateTime {
    using ZelCoreDateTime::_ImpParse;
};

void checkDay(const SV::Date& date) {
    const std::chrono::year_month_day day(
        std::chrono::year(date.GetYear()),
        std::chrono::month(static_cast<unsigned>(date.GetMonth())),
        std::chrono::day(static_cast<unsigned>(date.GetDay())));
    check(day.ok() && date.GetYear() >= 1 && date.GetYear() <= 9999);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const SV::Date before(1, 2, 3);
    const SV::Time timeBefore(4, 5, 6, 7);
    SV::Date date = before;
    SV::Time time = timeBefore;
    const bool isDate = OpenDate::_ImpParse(text.c_str(), &date);
    check(isDate == ZelCoreDate::IsValidString(text.c_str()));
    char written[32];
    if (isDate) {
        checkDay(date);
        std::snprintf(written, sizeof written, "%04d:%02d:%02d", date.GetYear(), date.GetMonth(),
                      date.GetDay());
        check(std::string(text.c_str()) == written);
    } else {
        check(date == before);
    }
    date = before;
    if (OpenDateTime::_ImpParse(text.c_str(), &date, &time)) {
        checkDay(date);
        std::snprintf(written, sizeof written, "%04d:%02d:%02d %02d:%02d:%02d", date.GetYear(),
                      date.GetMonth(), date.GetDay(), time.GetHour(), time.GetMin(), time.GetSec());
        check(std::string(text.c_str()) == written && time < SV::Time(24, 0));
    } else {
        check(date == before && time == timeBefore);
    }
    return 0;
}
