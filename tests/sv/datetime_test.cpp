#include "sv/datetime.h"

#include <gtest/gtest.h>

#include "sv/international.h"

using SV::Date;
using SV::Time;

TEST(SvDate, KnowsTheDayOfTheWeek) {
    struct Case {
        Date date;
        SV::DayOfWeek day;
    };
    const Case cases[] = {
        {Date(1, 1, 1900), SV::Monday},     {Date(29, 2, 2000), SV::Tuesday},
        {Date(28, 2, 1900), SV::Wednesday}, {Date(1, 3, 1900), SV::Thursday},
        {Date(31, 12, 1999), SV::Friday},   {Date(29, 2, 2024), SV::Thursday},
        {Date(15, 10, 1582), SV::Friday},
    };
    for (const auto& [date, day] : cases) {
        EXPECT_EQ(date.GetDayOfWeek(), day)
            << date.GetYear() << "-" << date.GetMonth() << "-" << date.GetDay();
    }
}

TEST(SvDate, ChangesOneFieldAtATime) {
    Date date(29, 2, 2024);
    date.ChangeYear(1999);
    date.ChangeMonth(12);
    date.ChangeDay(31);
    EXPECT_EQ(date, Date(31, 12, 1999));
    EXPECT_LT(Date(31, 12, 1999), Date(1, 1, 2000));
}

TEST(SvTime, FieldsAreThoseOfTheMagnitude) {
    const Time negative = Time(9, 0) - Time(10, 30, 5, 25);
    EXPECT_EQ(negative.GetHour(), 1);
    EXPECT_EQ(negative.GetMin(), 30);
    EXPECT_EQ(negative.GetSec(), 5);
    EXPECT_EQ(negative.Get100Sec(), 25);
    EXPECT_LT(negative, Time(0, 0));
    EXPECT_EQ(Time(25, 0).GetHour(), 25);
    EXPECT_EQ(Time(100'000, 0, 59).GetSec(), 59);
    Time changed = negative;
    changed.ChangeMin(0);
    EXPECT_EQ(changed, Time(0, 0) - Time(1, 0, 5, 25));
}

TEST(SvInternational, WritesDatesAndTimesAsTheUserLocaleDoes) {
    const SV::International settings;  // English in tests
    EXPECT_EQ(settings.GetDate(Date(7, 3, 2024)), "3/7/2024");
    EXPECT_EQ(settings.GetTime(Time(13, 5, 9)), "1:05:09 PM");
    EXPECT_EQ(settings.GetTime(Time(0, 5, 9, 7), false), "12:05 AM");
    EXPECT_EQ(settings.GetTime(Time(12, 0, 1, 7), true, true), "12:00:01.07 PM");
    SV::International twoDigits;
    twoDigits.ChangeLongDateCentury(false);
    EXPECT_NE(settings.GetLongDate(Date(7, 3, 2024)).find("2024"), SV::String::npos);
    EXPECT_EQ(twoDigits.GetLongDate(Date(7, 3, 2024)).find("2024"), SV::String::npos);
    EXPECT_EQ(settings.GetDate(Date(31, 2, 2024)), "");
    // Before the calendar of the system begins.
    EXPECT_EQ(settings.GetDate(Date(7, 3, 1500)), "3/7/1500");
    EXPECT_EQ(settings.GetLongDate(Date(15, 10, 1582)), "Friday, October 15, 1582");
}
