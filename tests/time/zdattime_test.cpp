#include "zbasic/zdattime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// Sets the switch for a test.
class American {
public:
    American() { ZelTimeFunctions::SetAmericanTimeFormat(true); }
    American(const American&) = delete;
    American& operator=(const American&) = delete;
    ~American() { ZelTimeFunctions::SetAmericanTimeFormat(false); }
};

}  // namespace

// The calendar of the C++ library knows the rule, too.
TEST(Calendar, KnowsLeapYearsAndMonths) {
    for (int year = -9999; year <= 9999; ++year) {
        const std::chrono::year calendarYear(year);
        ASSERT_EQ(ZelDate::IsLeapYear(year), calendarYear.is_leap()) << year;
        for (int month = -1; month <= 12; ++month) {
            int days = 0;
            const bool isMonth = month >= 0 && month < 12;
            const std::chrono::month calendarMonth(static_cast<unsigned>(month + 1));
            const std::chrono::year_month_day_last last(calendarYear,
                                                        std::chrono::month_day_last(calendarMonth));
            const int expected = isMonth ? static_cast<int>(unsigned{last.day()}) : 255;
            ASSERT_EQ(ZelDate::GetMaxDayOfMonth(month, days, calendarYear.is_leap()), isMonth);
            ASSERT_EQ(days, expected) << year << " " << month;
        }
    }
}

TEST(Calendar, KnowsItsBounds) {
    struct Case {
        int day;
        int month;
        bool isLeapYear;
        bool expected;
    };
    const Case cases[] = {{29, 1, true, true},  {29, 1, false, false}, {0, 0, false, false},
                          {31, 0, true, true},  {32, 0, true, false},  {31, 3, false, false},
                          {1, 12, true, false}, {1, -1, true, false},  {31, 11, false, true}};
    for (const auto& [day, month, isLeapYear, expected] : cases) {
        EXPECT_EQ(ZelDate::DayIsValidForMonth(day, month, isLeapYear), expected) << day << month;
    }
    for (const int number : {-2147483647, -1, 0, 1, 6, 7, 11, 12, 31, 32, 2147483647}) {
        EXPECT_EQ(ZelDate::DayIsValid(number), number > 0 && number < 32);
        EXPECT_EQ(ZelDate::MonthIsValid(number), number >= 0 && number < 12);
        EXPECT_EQ(ZelDate::WeekdayIsValid(number), number >= 0 && number < 7);
    }
}

TEST(Calendar, NamesMonthsAndWeekdays) {
    const std::vector<const char*> kMonths = {"January",   "February", "March",    "April",
                                              "May",       "June",     "July",     "August",
                                              "September", "October",  "November", "December"};
    const std::vector<const char*> kDays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                            "Friday", "Saturday", "Sunday"};
    SV::String name = "before";
    for (int number = -1; number <= 12; ++number) {
        const bool isMonth = number >= 0 && number < 12, isDay = number >= 0 && number < 7;
        const char* const month = isMonth ? kMonths[static_cast<std::size_t>(number)] : "";
        const char* const day = isDay ? kDays[static_cast<std::size_t>(number)] : "";
        EXPECT_EQ(ZelDate::MonthToStr(number, name), isMonth);
        EXPECT_EQ(name, month);
        EXPECT_EQ(ZelDate::MonthToStr(number), month);
        EXPECT_EQ(ZelDate::WeekdayToStr(number, name), isDay);
        EXPECT_EQ(name, day);
        const auto weekday = static_cast<SV::DayOfWeek>(number);
        name = "before";
        EXPECT_EQ(ZelDate::WeekdayToStr(weekday, name), isDay);
        EXPECT_EQ(name, isDay ? day : "before") << "left as it was, unlike with numbers";
        EXPECT_EQ(ZelDate::WeekdayToStr(weekday), day);
        int found = -2;
        EXPECT_EQ(ZelDate::StrToMonth(month, found), isMonth);
        EXPECT_EQ(found, isMonth ? number : 255);
        EXPECT_EQ(ZelDate::StrToWeekday(day, found), isDay);
        EXPECT_EQ(found, isDay ? number : 255);
    }
    int month = 0;
    for (const char* none : {"march", "MARCH", "March ", "Marc", "Monday"}) {
        EXPECT_FALSE(ZelDate::StrToMonth(none, month)) << none;
    }
    EXPECT_FALSE(ZelDate::StrToMonth(SV::String("March\0", 6), month));
    SV::DayOfWeek day = SV::Friday;
    EXPECT_TRUE(ZelDate::StrToWeekday("Sunday", day));
    EXPECT_FALSE(ZelDate::StrToWeekday("sunday", day));
    EXPECT_EQ(day, SV::Sunday) << "left as it was";
}

TEST(Calendar, KnowsTheLengthsOfNames) {
    EXPECT_EQ(ZelDate::GetMaximumMonthLength(), 9);    // September
    EXPECT_EQ(ZelDate::GetMinimumMonthLength(), 3);    // May
    EXPECT_EQ(ZelDate::GetMaximumWeekdayLength(), 9);  // Wednesday
    EXPECT_EQ(ZelDate::GetMinimumWeekdayLength(), 6);  // Monday
}

namespace {

struct PictureCase {
    const char* why;
    SV::String picture;
    SV::String date;  // of Thursday, 7 March 2024
    SV::String time;  // of 25:04:09 and 7 hundredths
};

const PictureCase kPictures[] = {
    {"two digits each", "dd.mm.yy", "07.03.24", "DD.04.YY"},
    {"upper case", "DD.MM.YYYY", "07.03.2024", "DD.04.YYYY"},
    {"mixed case is one run", "dDmMyYyY", "07032024", "DD04YYYY"},
    {"single letters", "Y-M-D", "Y-M-D", "Y-M-D"},
    {"names", "ddd, mmm", "Thursday, March", "DDD, MMM"},
    {"longer runs", "dddd mmmm yyyyy", "DDDD MMMM YYYYY", "DDDD MMMM YYYYY"},
    {"three years' letters", "yyy", "YYY", "YYY"},
    {"hours beyond a day", "hh:mm:ss", "HH:03:SS", "25:04:09"},
    {"runs of other lengths", "h hhh s sss m mmm", "H HHH S SSS M March", "H HHH S SSS M MMM"},
    {"other letters come in upper case", "year yyyy at", "YEAR 2024 AT", "YEAR YYYY AT"},
    {"but no letters of the code page", "\xE4\xC4 dd", "\xE4\xC4 07", "\xE4\xC4 DD"},
    {"a run ends at any other character", "dd0dd%s", "07007%S", "DD0DD%S"},
    {"a NUL is a character", SV::String("mm\0mm", 5), SV::String("03\00003", 5),
     SV::String("04\00004", 5)},
    {"blanks stay", "  mm  ", "  03  ", "  04  "},
};

}  // namespace

TEST(Pictures, ReplaceRuns) {
    for (const auto& [why, picture, date, time] : kPictures) {
        SCOPED_TRACE(why);
        EXPECT_EQ(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), picture), date);
        EXPECT_EQ(ZelDate::GetFormatedTime(SV::Time(25, 4, 9, 7), picture), time);
    }
    for (const char letter : {'d', 'M', 'y', 'h', 's', '.'}) {
        const SV::String letters(10'000, letter);
        EXPECT_EQ(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), letters), letters.Upper());
        EXPECT_EQ(ZelDate::GetFormatedTime(SV::Time(1, 2), letters), letters.Upper());
    }
    SV::String many, expected;
    for (int i = 0; i < 5000; ++i) many += "d.", expected += "D.";
    EXPECT_EQ(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), many), expected);
}

TEST(Pictures, AreWrittenAtAnyPlace) {
    for (std::size_t place = 0; place < 600; ++place) {
        SCOPED_TRACE(place);
        const SV::String before(place, '.');
        EXPECT_EQ(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), before + "yyyy ddd dddd, mmm dd"),
                  before + "2024 Thursday DDDD, March 07");
        EXPECT_EQ(ZelDate::GetFormatedTime(SV::Time(1234567, 2), before + "hh:mm hhh"),
                  before + "1234567:02 HHH");
        EXPECT_EQ(ZelDate::GetFormatedTime(SV::Time(1, 2), before + "hhhhhhhhhhhhhhhhh mm"),
                  before + "HHHHHHHHHHHHHHHHH 02");
    }
}

TEST(Pictures, ShowWhateverIsInDatesAndTimes) {
    const auto date = [](const SV::Date& value) {
        return ZelDate::GetFormatedDate(value, "dd mm mmm yy yyyy");
    };
    EXPECT_EQ(date(SV::Date(1, 1, 7)), "01 01 January 07 7");
    EXPECT_EQ(date(SV::Date(0, 0, 0)), "00 00  00 0");
    EXPECT_EQ(date(SV::Date(99, 99, 12345)), "99 99  45 12345");
    const auto numbers = [](const SV::Date& value) {
        return ZelDate::GetFormatedDate(value, "dd.mm.yy yyyy");
    };
    EXPECT_EQ(numbers(SV::Date(1, 1, 7)), "01.01.07 7");
    EXPECT_EQ(numbers(SV::Date(99, 99, 12345)), "99.99.45 12345");
    EXPECT_EQ(numbers(SV::Date(0, 0, -24)), "00.00.-24 -24");
    const SV::Time negative = SV::Time(0, 0) - SV::Time(123, 4, 5);
    EXPECT_EQ(ZelDate::GetFormatedTime(negative, "hh:mm:ss"), "123:04:05");
}

TEST(TimeSeconds, AreCountedAndSetBack) {
    struct Case {
        SV::Time time;
        long seconds;
    };
    const Case cases[] = {{SV::Time(0, 0), 0},
                          {SV::Time(25, 0), 90'000},
                          {SV::Time(23, 59, 59), 86'399},
                          {SV::Time(596'523, 14, 7), 2'147'483'647}};
    for (const auto& [time, seconds] : cases) {
        EXPECT_EQ(ZelTimeFunctions::getTimeInSeconds(time), seconds);
        EXPECT_EQ(ZelTimeFunctions::setTimeInSeconds(seconds), time);
        const SV::Time negative = SV::Time(0, 0) - time;
        EXPECT_EQ(ZelTimeFunctions::getTimeInSeconds(negative), seconds);
        EXPECT_EQ(ZelTimeFunctions::setTimeInSeconds(-seconds), negative);
    }
    EXPECT_EQ(ZelTimeFunctions::getTimeInSeconds(SV::Time(0, 0, 1, 99)), 1);
    EXPECT_EQ(ZelTimeFunctions::getTimeInSeconds(SV::Time(2'000'000, 0)), 2'147'483'647);
}

TEST(TimeSeconds, OfDifferences) {
    const auto between = ZelTimeFunctions::getDiffTimeInSeconds;
    EXPECT_EQ(between(SV::Time(10, 0), SV::Time(9, 0)), 0);
    EXPECT_EQ(between(SV::Time(9, 0), SV::Time(10, 0, 1)), 3601);
    EXPECT_EQ(between(SV::Time(9, 0), SV::Time(9, 0)), 0);
    // Subtracted first: 0.02 s less than two seconds is one.
    EXPECT_EQ(between(SV::Time(9, 0, 0, 51), SV::Time(9, 0, 2, 49)), 1);
    EXPECT_EQ(between(SV::Time(9, 0, 0, 99), SV::Time(9, 0, 1, 0)), 0);
}

// Each second of a day and the end of it, there and back.
TEST(UiTime, GoesThereAndBack) {
    for (const bool isAmerican : {false, true}) {
        ZelTimeFunctions::SetAmericanTimeFormat(isAmerican);
        EXPECT_EQ(ZelTimeFunctions::IsAmericanTimeFormat(), isAmerican);
        for (int second = 0; second <= 86'400; ++second) {
            const SV::Time time(second / 3600, second / 60 % 60, second % 60);
            const SV::String text = ZelTimeFunctions::getTimeInUIRep(time);
            const int hour = time.GetHour();
            char expected[16];
            std::snprintf(expected, sizeof expected, "%02d:%02d:%02d%s",
                          isAmerican ? (hour + 11) % 12 + 1 : hour, time.GetMin(), time.GetSec(),
                          !isAmerican               ? ""
                          : hour >= 1 && hour <= 12 ? " AM"
                                                    : " PM");
            ASSERT_EQ(text, expected);
            SV::Time back(1, 2, 3, 4);
            ASSERT_TRUE(ZelTimeFunctions::setTimeInUIRep(text, back)) << text.c_str();
            const bool isEndOfDay = second == 86'400;  // the same text as for its start
            ASSERT_EQ(back, isAmerican && isEndOfDay ? SV::Time(0, 0) : time) << text.c_str();
        }
    }
    ZelTimeFunctions::SetAmericanTimeFormat(false);
}

TEST(UiTime, ShowsHoursOfADay) {
    const SV::Time none(0, 0);
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(24, 0, 0, 1)), "00:00:00");
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(49, 30)), "01:30:00");
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(none - SV::Time(24, 0)), "00:00:00");
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(none - SV::Time(7, 8, 9)), "07:08:09");
    const American american;
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(24, 0, 0, 1)), "12:00:00 PM");
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(0, 5, 9)), "12:05:09 PM");
    EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(13, 30)), "01:30:00 PM");
}

namespace {

struct UiCase {
    const char* why;
    SV::String text;
    const char* american;  // what it means then, in the other form; null: nothing
    const char* plain;
};

const UiCase kUiTexts[] = {
    {"24 hours", "13:30:00", nullptr, "13:30:00"},
    {"the end of the day", "24:00:00", nullptr, "24:00:00"},
    {"later", "24:00:01", nullptr, nullptr},
    {"later by a minute", "24:01:00", nullptr, nullptr},
    {"an hour more", "25:00:00", nullptr, nullptr},
    {"one digit", "7:00:00", nullptr, nullptr},
    {"60 minutes", "07:60:00", nullptr, nullptr},
    {"60 seconds", "07:00:60", nullptr, nullptr},
    {"a blank", "07:00:00 ", nullptr, nullptr},
    {"another separator", "07.00.00", nullptr, nullptr},
    {"a sign", "+7:00:00", nullptr, nullptr},
    {"empty", "", nullptr, nullptr},
    {"blanks only", "            ", nullptr, nullptr},
    {"a colon only", " :", nullptr, nullptr},
    {"American", "01:30:00 PM", "13:30:00", nullptr},
    {"one digit, American", "1:30:00 PM", "13:30:00", nullptr},
    {"without a blank", "1:30:00PM", "13:30:00", nullptr},
    {"blanks anywhere", "  0 1 :3 0: 00 P  M  ", "13:30:00", nullptr},
    {"lower case", "1:30:00 pm", nullptr, nullptr},
    {"half lower case", "1:30:00 Pm", nullptr, nullptr},
    {"12 AM is noon", "12:00:00 AM", "12:00:00", nullptr},
    {"12 PM is midnight", "12:05:09 PM", "00:05:09", nullptr},
    {"hour 0", "00:00:00 AM", nullptr, nullptr},
    {"hour 13", "13:00:00 PM", nullptr, nullptr},
    {"another half", "01:00:00 XM", nullptr, nullptr},
    {"no half", "01:00:00   ", nullptr, nullptr},
    {"60 minutes, American", "01:60:00 AM", nullptr, nullptr},
    {"more behind", "01:00:00 AM0", nullptr, nullptr},
    {"more behind one digit", "1:00:00 AM0", nullptr, nullptr},
    {"a tab is no blank", "01:00:00\tAM", nullptr, nullptr},
    {"a NUL", SV::String("01:00:00 A\0", 11), nullptr, nullptr},
    {"long", SV::String(100'000, '1'), nullptr, nullptr},
};

void expectRead(const SV::String& text, const char* meaning) {
    const SV::Time before(1, 2, 3, 4);
    SV::Time time = before;
    EXPECT_EQ(ZelTimeFunctions::setTimeInUIRep(text, time), meaning != nullptr);
    if (meaning) {
        EXPECT_EQ(ZelDate::GetFormatedTime(time, "hh:mm:ss"), meaning);
        EXPECT_EQ(time.Get100Sec(), 0);
    } else {
        EXPECT_EQ(time, before);
    }
}

}  // namespace

TEST(UiTime, IsReadInOneForm) {
    for (const auto& [why, text, american, plain] : kUiTexts) {
        SCOPED_TRACE(why);
        expectRead(text, plain);
        const American switched;
        expectRead(text, american);
    }
}
