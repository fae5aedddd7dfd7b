// Durations, dates and date-times as models store them, whatever the user's locale.

#pragma once

#include "sv/datetime.h"
#include "sv/string.h"
#include "zbasic/zexport.h"

namespace SV {
class Window;
}

// A duration in seconds, with fractions, and the lengths of its years and days.
//
// Its text has years (at least two digits), days (three), hours, minutes and seconds
// (two each): "00:001:02:03:04" is a day, two hours, three minutes and four seconds.
// What is written depends on the base: with 8 hours a day, 9 hours give
// "00:001:01:00:00". What is accepted does not, see `isTime`.
//
// Results beyond the range set a flag that no operation ever clears; `tstOverFlow`
// tells the user about it. Null texts count as texts that are no durations.
// Relied on by callers: a text that is no duration counts as 0, without the flag.
// Threads: one object needs the caller's lock, for reading its text as well; the
// defaults and the warning are those of the process, and unguarded.
class ZBASIC_API ZelCoreTime {
public:
    // Zero for an element of the base stands for the default at that time. The flag is
    // set by a value below 0; where both base and value are given, or a text, also by a
    // value that no double holds.
    // Relied on by callers: `ZelCoreTime(value)` does not look at that upper bound.
    ZelCoreTime();
    ZelCoreTime(const ZelCoreTime& other);  // with base and flag
    ZelCoreTime(const char* text);
    ZelCoreTime(const long long& seconds);
    ZelCoreTime(const double& seconds);
    // The base as numbers with "." or ",".
    ZelCoreTime(const char* text, const char* daysPerYear, const char* hoursPerDay);
    ZelCoreTime(const long long& seconds, const double& daysPerYear, const double& hoursPerDay);
    ZelCoreTime(const double& seconds, const double& daysPerYear, const double& hoursPerDay);
    ZelCoreTime(const char* text, const double& daysPerYear, const double& hoursPerDay);

    // The length of a year in days and of a day in hours, for conversions from now on;
    // the seconds stay. Zero stands for the default.
    void setBase(long daysPerYear, long hoursPerDay);
    void setBase(double daysPerYear, double hoursPerDay);

    // The defaults, 365 and 24 at first, for objects made from now on. Nothing is
    // checked; with a base of 0, a negative or a tiny one, texts follow the arithmetic.
    static void SetStaticTimeBase(double daysPerYear, double hoursPerDay);
    static double GetStaticDaysPerYear();
    static double GetStaticHoursPerDay();

    // Whether the text is a duration: any number of digits up to 300 for the years, also
    // none, then ":ddd:hh:mm:ss" from :000:00:00:00 to :364:23:59:59. In a base with
    // longer years or shorter days these limits stay.
    static bool isTime(const char* text);

    // Relied on by callers: never true, for no sum of two 64-bit numbers (it wraps
    // around) exceeds the range of a double.
    static bool WillBeSumOverflow(const long long& a, const long long& b);

    // Seconds, as they are.
    double asDouble() const { return m_value; }
    // The nearest whole number, halves up; negative ones are cut after adding a half.
    // Limited to what 64 bits hold; not a number gives 0.
    long long asSeconds() const;
    // Likewise with 32 bits.
    // Relied on by callers: 0 for what is greater than 2147483647.
    long asLong() const;

    // The text, of the nearest second. It is kept in this object until it is asked for
    // again. Negative durations have negative years ("-1:364:23:59:59" is a second
    // less than nothing); "inf:000:00:00:00" and "nan:000:00:00:00" are what else
    // doubles can be. Fields are limited to what 32 bits hold.
    const SV::String& asString() const;
    const char* asChar() const;

    // Leave the flag as it is and check nothing.
    void setAsChar(const char* text);
    void setTime(const double& seconds);

    // Take the value alone: base and flag stay. A negative one is taken, too.
    ZelCoreTime& operator=(const ZelCoreTime& other);
    ZelCoreTime& operator=(const char* text);
    ZelCoreTime& operator=(long seconds);
    ZelCoreTime& operator=(const long long& seconds);
    ZelCoreTime& operator=(double seconds);

    // Negative numbers, and sums that no double holds, set the flag and change nothing.
    ZelCoreTime& operator+=(const long long& seconds);
    ZelCoreTime& operator+=(double seconds);
    // Relied on by callers: unguarded, unlike the sums with numbers.
    ZelCoreTime& operator+=(const ZelCoreTime& other);
    ZelCoreTime& operator+=(const char* text);
    // Never below 0; the flag is not set.
    ZelCoreTime& operator-=(const char* text);
    // A negative factor sets the flag and changes nothing.
    ZelCoreTime& operator*=(double factor);
    // A divisor of 0 sets the flag and changes nothing.
    // Relied on by callers: a negative one sets the flag and divides, unlike `*=`.
    ZelCoreTime& operator/=(double divisor);

    // The sum, with the base of `a`; the flag as of a new object.
    friend ZBASIC_API ZelCoreTime operator+(const ZelCoreTime& a, const ZelCoreTime& b);

    // The flag.
    bool overFlow() const { return m_overflow; }

    // With the flag set: makes the value the largest one and shows `message` in a warning
    // box, but only once per process until `ResetWarnButtonPressed`. `parent` is on the
    // stack of parent windows as long as the box is open. Main thread only.
    void tstOverFlow(SV::Window* parent, const SV::String& message);
    // The next one shows its box again.
    static void ResetWarnButtonPressed();

protected:
    const SV::String& _d2s(double seconds) const;  // writes into the kept text
    double _s2d(const char* text) const;           // 0 for what is no duration

private:
    double secondsPerDay() const { return m_hoursPerDay * 3600; }
    double secondsPerYear() const { return secondsPerDay() * m_daysPerYear; }
    void addGuarded(double seconds);

    static double g_dDaysPerYear;
    static double g_dHoursPerDay;
    static bool g_bWarned;

    double m_value = 0;
    mutable SV::String m_text;
    double m_maximum;
    double m_daysPerYear = 0;
    double m_hoursPerDay = 0;
    bool m_overflow = false;
};

// A day, from a text with year (four digits), month and day (two each): "2024:02:29".
// Years are 1 to 9999, and the day must exist in the Gregorian calendar.
class ZBASIC_API ZelCoreDate {
public:
    ZelCoreDate(const char* text);  // any other text, or null: today

    // Whether the text is such a day; null is not.
    static bool IsValidString(const char* text);

    // In the long or short form of the user's locale, long years with four digits.
    SV::String GetDisplayString(bool longForm) const;

protected:
    // Whether the text is a day; then, and only then, `target` becomes it. Null: no target.
    static bool _ImpParse(const char* text, SV::Date* target);

private:
    SV::Date m_date;
};

// A day and a time of day from 00:00:00 to 23:59:59: "2024:02:29 12:00:00".
class ZBASIC_API ZelCoreDateTime {
public:
    ZelCoreDateTime(const char* text);  // any other text, or null: now

    // Whether the text is such a day and time; null is not.
    static bool IsValidString(const char* text);

    // The date likewise, a blank, the time with seconds.
    SV::String GetDisplayString(bool longForm) const;

protected:
    // As with dates. The hundredths of the target stay.
    static bool _ImpParse(const char* text, SV::Date* date, SV::Time* time);

private:
    SV::Date m_date;
    SV::Time m_time;
};
