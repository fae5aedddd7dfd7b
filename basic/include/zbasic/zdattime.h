// Months, weekdays, dates and times of day as users see them.

#pragma once

#include "sv/control.h"
#include "sv/datetime.h"
#include "sv/string.h"
#include "zbasic/zexport.h"

// Rules of the Gregorian calendar, also for years before it was introduced, and the
// names of its months and weekdays.
//
// Months count from 0 (January), weekdays from 0 (Monday). Names are those of the
// resource files that are loaded, else the library's own, and follow a change of the
// user's language. A name is asked for once in each language, then kept.
// Threads: names and what is made of them on the main thread only; the rest anywhere.
class ZBASIC_API ZelDate {
public:
    enum { kNotFound = 255 };  // no month, no day, no name

    // By the rule of 4, 100 and 400, which goes on before year 1: year 0 is one.
    static bool IsLeapYear(int year);

    static bool DayIsValid(int day);          // 1 to 31
    static bool MonthIsValid(int month);      // 0 to 11
    static bool WeekdayIsValid(int weekday);  // 0 to 6

    // The length of a month; false and `kNotFound` for one that does not exist.
    static bool GetMaxDayOfMonth(int month, int& days, bool leapYear);
    // Whether a month has that day; false for a month that does not exist.
    static bool DayIsValidForMonth(int day, int month, bool leapYear);

    // The name, empty for a number that has none; then the first one also gives false.
    static bool MonthToStr(int month, SV::String& name);
    static SV::String MonthToStr(int month);
    static bool WeekdayToStr(int weekday, SV::String& name);
    static SV::String WeekdayToStr(int weekday);
    // Relied on by callers: with a value that is no day `name` is left as it was.
    static bool WeekdayToStr(const SV::DayOfWeek& day, SV::String& name);
    // Empty for a value that is no day.
    static SV::String WeekdayToStr(const SV::DayOfWeek& day);

    // The number of a name, every byte alike; false and `kNotFound` when there is none.
    static bool StrToMonth(const SV::String& name, int& month);
    static bool StrToWeekday(const SV::String& name, int& weekday);
    // Relied on by callers: when there is none `day` is left as it was.
    static bool StrToWeekday(const SV::String& name, SV::DayOfWeek& day);

    // Lengths of the longest and the shortest name in bytes.
    // Relied on by callers: a length is found once per process and stays the same in
    // other languages.
    static int GetMaximumMonthLength();
    static int GetMinimumMonthLength();
    static int GetMaximumWeekdayLength();
    static int GetMinimumWeekdayLength();

    // Replaces what the list holds by the names and selects the first one; false
    // without a list.
    static bool FillListBoxWithMonthNames(SV::ListBox* list);
    static bool FillListBoxWithWeekdayNames(SV::ListBox* list);

    // Writes by a picture. A run of one letter, in whatever case, stands for:
    //
    //     DD    day, two digits          HH    hours, two digits (25 stays 25)
    //     DDD   name of the weekday      MM    minutes, two digits
    //     MM    month, two digits        SS    seconds, two digits
    //     MMM   name of the month
    //     YY    year modulo 100, two digits
    //     YYYY  year, all its digits
    //
    // in dates on the left and in times on the right. Any other run and any other
    // character stands for itself, ASCII letters in upper case. An empty picture gives
    // the short form of the user's locale, for a time with seconds. 7 March 2024:
    // "dd.mm.yy" gives "07.03.24", "y-m-d" gives "Y-M-D".
    static SV::String GetFormatedDate(const SV::Date& date, const SV::String& format);
    static SV::String GetFormatedTime(const SV::Time& time, const SV::String& format);
};

// Times of day as seconds and as texts of the user interface. The fields of a negative
// time are those of its magnitude.
// Threads: any, but for changes of the switch between the forms.
class ZBASIC_API ZelTimeFunctions {
public:
    // Whole seconds, hundredths dropped; limited to what 32 bits hold.
    static long getTimeInSeconds(const SV::Time& time);
    // 90000 gives 25:00:00: nothing is wrapped at 24 hours.
    static SV::Time setTimeInSeconds(long seconds);
    // Whole seconds from the one to the other, subtracted with their hundredths; 0 when
    // `from` is later.
    static long getDiffTimeInSeconds(const SV::Time& from, const SV::Time& to);

    // "13:30:00", or in the American form "01:30:00 PM". Hours are taken modulo 24, but
    // exactly 24 hours, hundredths included, keep their 24 ("12:00:00 PM" in the
    // American form).
    // Relied on by callers: hour 0 is written as 12 PM and hour 12 as 12 AM. Stored
    // times and `setTimeInUIRep` agree with it.
    static SV::String getTimeInUIRep(const SV::Time& time);

    // Reads such a text; false for any other, and then `time` is left as it was.
    // Without the switch: exactly "hh:mm:ss" from 00:00:00 to 23:59:59, and 24:00:00.
    // American: blanks anywhere do not matter, hours 1 to 12 may have one digit, and AM
    // or PM (upper case) must follow.
    static bool setTimeInUIRep(const SV::String& text, SV::Time& time);

    // The switch, one for the process, off at first.
    static void SetAmericanTimeFormat(bool isAmerican);
    static bool IsAmericanTimeFormat();

private:
    static bool bAmericanTimeFormat;
};

// A day of any year: a field for the day with spin buttons, and a list of the months.
//
// It is made from a dialog resource with the style of a child window (`DS_CONTROL`), in which
// lie an edit control 101, the spin buttons 102 that follow it, and a list or combo box 103;
// the library's resource files have one of number `kResource`. Main thread only.
class ZBASIC_API ZelDayMonthControl : public SV::Control {
public:
    enum : std::uint32_t { kResource = 25150 };

    // January 1st, the 29th of February not allowed. The widths, in pixels, are those of the
    // field and of the list; 0 for those of the resource.
    ZelDayMonthControl(SV::Window* parent, const SV::ResId& id, int dayWidth, int monthWidth);

    // The day is kept within the month: at least 1, at most what the month has, also when
    // another one is selected.
    int GetDay() const;
    void SetDay(int day);
    // From 0. One that does not exist is reported as an internal error and not selected.
    int GetMonth() const;
    void SetMonth(int month);
    // By name in the user's language.
    SV::String GetMonthString() const;
    void SetMonthString(const SV::String& name);
    // Whether February has 29 days here or 28; the day is kept within them.
    void AllowFebruary29th(bool isAllowed);

    // Another width makes the control as a whole wider or narrower.
    void SetMFWidth(int width);
    int GetMFWidth() const;
    void SetLBWidth(int width);
    int GetLBWidth() const;

    // When the control gets another size the field keeps its width and the list gets the rest.
    void Resize() override;
    // With the field and the list.
    void SetEnabled(bool isEnabled) override;

protected:
    void Notify(int id, int code) override;

private:
    void setWidths(int dayWidth, int monthWidth);
    void limitDay();  // by the month

    SV::MetricField m_day;
    SV::ListBox m_month;
    bool m_isFebruary29thAllowed = false;
};
