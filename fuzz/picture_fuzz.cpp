// Pictures of dates and times: the first bytes are the moment, the rest is the picture.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "input.h"
#include "zbasic/zdattime.h"

namespace {

struct Moment {
    std::uint8_t day, month, hour, minute;
    std::int16_t year;
};

std::string printed(const char* format, int number) {
    char text[16];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

std::string run(const SV::Date& date, char letter, std::size_t length) {
    if (length == 2 && letter == 'D') return printed("%02d", date.GetDay());
    if (length == 2 && letter == 'M') return printed("%02d", date.GetMonth());
    if (length == 2 && letter == 'Y') return printed("%02d", date.GetYear() % 100);
    if (length == 4 && letter == 'Y') return printed("%d", date.GetYear());
    if (length == 3 && letter == 'M') {
        return ZelDate::MonthToStr(date.GetMonth() - 1).c_str();
    }
    if (length == 3 && letter == 'D') return ZelDate::WeekdayToStr(date.GetDayOfWeek()).c_str();
    return std::string(length, letter);
}

std::string run(const SV::Time& time, char letter, std::size_t length) {
    if (length == 2 && letter == 'H') return printed("%02d", time.GetHour());
    if (length == 2 && letter == 'M') return printed("%02d", time.GetMin());
    if (length == 2 && letter == 'S') return printed("%02d", time.GetSec());
    return std::string(length, letter);
}

// Run after run; every character is one of a run.
template <class Moment>
std::string byPicture(const Moment& moment, std::string picture) {
    for (char& c : picture) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    std::string written;
    for (std::size_t start = 0; start < picture.size();) {
        const std::size_t end =
            std::min(picture.find_first_not_of(picture[start], start), picture.size());
        written += run(moment, picture[start], end - start);
        start = end;
    }
    return written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Moment moment;
    if (size < sizeof moment) return 0;
    std::memcpy(&moment, data, sizeof moment);
    const std::string_view picture(reinterpret_cast<const char*>(data) + sizeof moment,
                                   size - sizeof moment);
    if (picture.empty()) return 0;
    const SV::String format(picture);
    const SV::Date date(moment.day, moment.month, moment.year);
    const SV::Time time(moment.hour, moment.minute, moment.day);
    check(ZelDate::GetFormatedDate(date, format) == byPicture(date, std::string(picture)));
    check(ZelDate::GetFormatedTime(time, format) == byPicture(time, std::string(picture)));
    return 0;
}
