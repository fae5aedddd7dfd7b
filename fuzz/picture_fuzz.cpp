// Pictures of dates and times: the first bytes are the moment, the rest is the picture.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "input.h"
#include "zbasic/zdattime.h"

namespace {

struct Moment {
    std::uint8_t day, month, hour, minute;
    std::int16_t year;
};

// What no picture letter is in stays, but for its case.
void checkLiterals(std::string_view picture, std::string_view written, std::string_view letters) {
    if (picture.find_first_of(letters) != std::string_view::npos) return;
    check(picture.size() == written.size());
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const bool isLower = picture[i] >= 'a' && picture[i] <= 'z';
        check(written[i] == (isLower ? picture[i] - 32 : picture[i]));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Moment moment;
    if (size < sizeof moment) return 0;
    std::memcpy(&moment, data, sizeof moment);
    const std::string_view picture(reinterpret_cast<const char*>(data) + sizeof moment,
                                   size - sizeof moment);
    const SV::String format(picture);
    const SV::Date date(moment.day, moment.month, moment.year);
    const SV::Time time(moment.hour, moment.minute, moment.day);
    const SV::String dateText = ZelDate::GetFormatedDate(date, format);
    const SV::String timeText = ZelDate::GetFormatedTime(time, format);
    if (!picture.empty()) {
        checkLiterals(picture, dateText, "dmyDMY");
        checkLiterals(picture, timeText, "hmsHMS");
        // Case does not matter, in the picture.
        check(ZelDate::GetFormatedTime(time, format.Upper()).size() == timeText.size());
    }
    return 0;
}
