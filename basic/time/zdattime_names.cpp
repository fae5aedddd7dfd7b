// Names of months and weekdays.

#include <algorithm>
#include <array>
#include <cstdint>

#include "diag/librarytext.h"
#include "time/names.h"
#include "zbasic/zdattime.h"

namespace {

// The names of one kind in the user's language: each is looked up when it is first asked
// for, and again after the texts have changed.
template <std::uint32_t kFirstText, int kCount>
class Names {
public:
    const SV::String& get(int index) {
        const std::uint64_t generation = libraryTextGeneration();
        if (generation != m_generation) {
            m_isLoaded.fill(false);
            m_generation = generation;
        }
        const auto place = static_cast<std::size_t>(index);
        if (!m_isLoaded[place]) {
            m_names[place] = libraryText(kFirstText + static_cast<std::uint32_t>(index));
            m_isLoaded[place] = true;
        }
        return m_names[place];
    }
    static bool has(int index) { return index >= 0 && index < kCount; }
    const SV::String& getOrNone(int index) {
        static const SV::String none;
        return has(index) ? get(index) : none;
    }
    // The first one with that name, or `kCount`.
    int find(const SV::String& name) {
        int index = 0;
        while (index < kCount && get(index) != name) ++index;
        return index;
    }

    struct Lengths {
        int least = 999;
        int most = 0;
    };
    Lengths lengths() {
        Lengths lengths;
        for (int index = 0; index < kCount; ++index) {
            const int length = static_cast<int>(get(index).size());
            lengths = {std::min(lengths.least, length), std::max(lengths.most, length)};
        }
        return lengths;
    }

private:
    std::array<SV::String, kCount> m_names;
    std::array<bool, kCount> m_isLoaded{};
    std::uint64_t m_generation = 0;
};

using MonthNames = Names<25100, 12>;
using WeekdayNames = Names<25112, 7>;

// Never destroyed: work at process exit may still ask.
MonthNames& months() {
    static MonthNames& names = *new MonthNames;
    return names;
}

WeekdayNames& weekdays() {
    static WeekdayNames& names = *new WeekdayNames;
    return names;
}

}  // namespace

const SV::String& monthName(int month) { return months().getOrNone(month); }

const SV::String& weekdayName(int weekday) { return weekdays().getOrNone(weekday); }

bool ZelDate::MonthToStr(int month, SV::String& name) {
    name = monthName(month);
    return MonthIsValid(month);
}

SV::String ZelDate::MonthToStr(int month) { return monthName(month); }

bool ZelDate::WeekdayToStr(int weekday, SV::String& name) {
    name = weekdayName(weekday);
    return WeekdayIsValid(weekday);
}

SV::String ZelDate::WeekdayToStr(int weekday) { return weekdayName(weekday); }

bool ZelDate::WeekdayToStr(const SV::DayOfWeek& day, SV::String& name) {
    // Relied on by callers: what is no day leaves the name as it was.
    return WeekdayIsValid(day) && WeekdayToStr(static_cast<int>(day), name);
}

SV::String ZelDate::WeekdayToStr(const SV::DayOfWeek& day) {
    return WeekdayToStr(static_cast<int>(day));
}

bool ZelDate::StrToMonth(const SV::String& name, int& month) {
    const int found = months().find(name);
    month = MonthIsValid(found) ? found : kNotFound;
    return month != kNotFound;
}

bool ZelDate::StrToWeekday(const SV::String& name, int& weekday) {
    const int found = weekdays().find(name);
    weekday = WeekdayIsValid(found) ? found : kNotFound;
    return weekday != kNotFound;
}

bool ZelDate::StrToWeekday(const SV::String& name, SV::DayOfWeek& day) {
    int weekday = 0;
    if (!StrToWeekday(name, weekday)) return false;  // Relied on by callers: `day` stays
    day = static_cast<SV::DayOfWeek>(weekday);
    return true;
}

// Relied on by callers: a length stays what it was when it was first asked for.

int ZelDate::GetMaximumMonthLength() {
    static const int length = months().lengths().most;
    return length;
}

int ZelDate::GetMinimumMonthLength() {
    static const int length = months().lengths().least;
    return length;
}

int ZelDate::GetMaximumWeekdayLength() {
    static const int length = weekdays().lengths().most;
    return length;
}

int ZelDate::GetMinimumWeekdayLength() {
    static const int length = weekdays().lengths().least;
    return length;
}
