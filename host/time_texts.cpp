#include "time_texts.h"

#include <charconv>

#include "texts.h"
#include "zbasic/zdattime.h"

namespace zelhost {

namespace {

// The library shows dates only in the locale's form; the host has one for each of its languages.
struct Moment : ZelCoreDateTime {
    static void read(const std::string& text, SV::Date& date, SV::Time& time) {
        _ImpParse(text.c_str(), &date, &time);
    }
};

// "1 day " or "5 days ", nothing for none.
SV::String counted(std::string_view digits, Text one, Text several) {
    long count = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (count == 0) return {};
    return SV::String(std::to_string(count)) + " " + textOf(count == 1 ? one : several) + " ";
}

}  // namespace

SV::String shownDuration(const ZelCoreTime& duration) {
    const std::string_view text = duration.asString();  // years, ":ddd:", and "hh:mm:ss" behind
    const std::size_t colon = text.find(':');
    return counted(text.substr(0, colon), Text::kYear, Text::kYears) +
           counted(text.substr(colon + 1, 3), Text::kDay, Text::kDays) + text.substr(colon + 5);
}

SV::String shownDay(const SV::Date& day) {
    return ZelDate::GetFormatedDate(day, textOf(Text::kDayPicture));
}

SV::Date dayOf(const std::string& changed) {
    SV::Date date(1, 1, 1);
    SV::Time time(0, 0);
    Moment::read(changed, date, time);
    return date;
}

SV::String shownChange(const std::string& changed) {
    SV::Date date(1, 1, 1);
    SV::Time time(0, 0);
    Moment::read(changed, date, time);
    return shownDay(date) + ", " + ZelDate::GetFormatedTime(time, "hh:mm");
}

}  // namespace zelhost
