#include "zbasic/zlocale.h"

#include <gtest/gtest.h>

#include <functional>

#include <windows.h>

namespace {

// `cmake/wine-run` sets the locale, while on Windows it is the user's.
bool isUnderWine() {
    return ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

// Expected texts are those of an English (United States) system.
class LocaleEnglish : public ::testing::Test {
protected:
    void SetUp() override {
        const LCID locale = ::GetUserDefaultLCID();
        if (locale == 1033) return;
        if (isUnderWine()) FAIL() << "the runner set the locale to " << locale;
        GTEST_SKIP() << "the user's locale is " << locale;
    }
};

struct TextCase {
    const char* why;
    SV::String (*get)();
    const char* expected;
};

#define LOCALE_TEXT(name) #name, Locale::Zel_Get##name

const TextCase kTexts[] = {
    {LOCALE_TEXT(LanguageName), "English (United States)"},
    {LOCALE_TEXT(LanguageEnglishName), "English"},
    {LOCALE_TEXT(AbbreviatedLanguageName), "ENU"},
    {LOCALE_TEXT(NativeLanguageName), "English"},
    {LOCALE_TEXT(CountryName), "United States"},
    {LOCALE_TEXT(CountryEnglishName), "United States"},
    {LOCALE_TEXT(AbbreviatedCountryName), "USA"},
    {LOCALE_TEXT(NativeCountryName), "United States"},
    {LOCALE_TEXT(ISO639LanguageName), "en"},
    {LOCALE_TEXT(ISO3166CountryName), "US"},
    {LOCALE_TEXT(SortName), "Default"},
    {LOCALE_TEXT(ListSeparator), ","},
    {LOCALE_TEXT(DecimalSeparator), "."},
    {LOCALE_TEXT(ThousandGroupSeparator), ","},
    {LOCALE_TEXT(DecimalGrouping), "3;0"},
    {LOCALE_TEXT(NativeDigits), "0123456789"},
    {LOCALE_TEXT(PositiveSign), ""},
    {LOCALE_TEXT(NegativeSign), "-"},
    {LOCALE_TEXT(CurrencyName), "$"},
    {LOCALE_TEXT(InternationalMonetarySymbol), "USD"},
    {LOCALE_TEXT(CurrencyEnglishName), "US Dollar"},
    {LOCALE_TEXT(NativeCurrencyName), "US Dollar"},
    {LOCALE_TEXT(MonetaryDecimalSeparator), "."},
    {LOCALE_TEXT(MonetaryThousandSeparator), ","},
    {LOCALE_TEXT(MonetaryGrouping), "3;0"},
    {LOCALE_TEXT(DateSeparator), "$"},  // the currency symbol, as callers know it
    {LOCALE_TEXT(TimeSeparator), ":"},
    {LOCALE_TEXT(ShortDateFormat), "M/d/yyyy"},
    {LOCALE_TEXT(LongDateFormat), "dddd, MMMM d, yyyy"},
    {LOCALE_TEXT(TimeFormat), "h:mm:ss tt"},
    {LOCALE_TEXT(YearMonthFormat), "MMMM yyyy"},
    {LOCALE_TEXT(AMDesignator), "AM"},
    {LOCALE_TEXT(PMDesignator), "PM"},
    {LOCALE_TEXT(DayName1), "Monday"},
    {LOCALE_TEXT(DayName2), "Tuesday"},
    {LOCALE_TEXT(DayName3), "Wednesday"},
    {LOCALE_TEXT(DayName4), "Thursday"},
    {LOCALE_TEXT(DayName5), "Friday"},
    {LOCALE_TEXT(DayName6), "Saturday"},
    {LOCALE_TEXT(DayName7), "Sunday"},
    {LOCALE_TEXT(AbbreviatedDayName1), "Mon"},
    {LOCALE_TEXT(AbbreviatedDayName2), "Tue"},
    {LOCALE_TEXT(AbbreviatedDayName3), "Wed"},
    {LOCALE_TEXT(AbbreviatedDayName4), "Thu"},
    {LOCALE_TEXT(AbbreviatedDayName5), "Fri"},
    {LOCALE_TEXT(AbbreviatedDayName6), "Sat"},
    {LOCALE_TEXT(AbbreviatedDayName7), "Sun"},
    {LOCALE_TEXT(MonthName1), "January"},
    {LOCALE_TEXT(MonthName2), "February"},
    {LOCALE_TEXT(MonthName3), "March"},
    {LOCALE_TEXT(MonthName4), "April"},
    {LOCALE_TEXT(MonthName5), "May"},
    {LOCALE_TEXT(MonthName6), "June"},
    {LOCALE_TEXT(MonthName7), "July"},
    {LOCALE_TEXT(MonthName8), "August"},
    {LOCALE_TEXT(MonthName9), "September"},
    {LOCALE_TEXT(MonthName10), "October"},
    {LOCALE_TEXT(MonthName11), "November"},
    {LOCALE_TEXT(MonthName12), "December"},
    {LOCALE_TEXT(MonthName13), ""},
    {LOCALE_TEXT(AbbreviatedMonthName1), "Jan"},
    {LOCALE_TEXT(AbbreviatedMonthName2), "Feb"},
    {LOCALE_TEXT(AbbreviatedMonthName3), "Mar"},
    {LOCALE_TEXT(AbbreviatedMonthName4), "Apr"},
    {LOCALE_TEXT(AbbreviatedMonthName5), "May"},
    {LOCALE_TEXT(AbbreviatedMonthName6), "Jun"},
    {LOCALE_TEXT(AbbreviatedMonthName7), "Jul"},
    {LOCALE_TEXT(AbbreviatedMonthName8), "Aug"},
    {LOCALE_TEXT(AbbreviatedMonthName9), "Sep"},
    {LOCALE_TEXT(AbbreviatedMonthName10), "Oct"},
    {LOCALE_TEXT(AbbreviatedMonthName11), "Nov"},
    {LOCALE_TEXT(AbbreviatedMonthName12), "Dec"},
    {LOCALE_TEXT(AbbreviatedMonthName13), ""},
};

struct NumberCase {
    const char* why;
    std::function<long()> get;
    long expected;
};

#define LOCALE_NUMBER(name) #name, [] { return static_cast<long>(Locale::Zel_Get##name()); }

const NumberCase kNumbers[] = {
    {LOCALE_NUMBER(Language), 409},  // hexadecimal digits, read as decimal ones
    {LOCALE_NUMBER(DefaultLanguage), 409},
    {LOCALE_NUMBER(CountryCode), 1},
    {LOCALE_NUMBER(DefaultCountry), 1},
    {LOCALE_NUMBER(DefaultCodepage), 437},
    {LOCALE_NUMBER(DefaultANSICodepage), 1252},
    {LOCALE_NUMBER(DefaultMacCodepage), 10000},
    {LOCALE_NUMBER(DefaultEBCDICCodepage), 37},
    {LOCALE_NUMBER(MeasureType), 1},
    {LOCALE_NUMBER(PaperSizeType), ZelPaperSize_USLetter},
    {LOCALE_NUMBER(FractionalDigits), 2},
    {LOCALE_NUMBER(DecimalLeadingZeroType), ZelDecimalLeadingZero_Yes},
    {LOCALE_NUMBER(NegativeNumberType), ZelNegativeNumber_MinusBefore},
    {LOCALE_NUMBER(CurrencyFractionalDigits), 2},
    {LOCALE_NUMBER(InternationalCurrencyFractionalDigits), 2},
    {LOCALE_NUMBER(CurrencyType), ZelCurrency_Prefix},
    {LOCALE_NUMBER(NegativeCurrencyType), ZelNegativeCurrency_Parenthesis_SN},
    {LOCALE_NUMBER(PositiveSignInCurrencyType), ZelPositiveSignInCurrency_BeforeSymbol},
    {LOCALE_NUMBER(NegativeSignInCurrencyType), ZelNegativeSignInCurrency_Parenthesis},
    {LOCALE_NUMBER(MonetarySymbolPrecedesPositiveAmount), true},
    {LOCALE_NUMBER(SeparationOfMonetarySymbolInPositiveValue), false},
    {LOCALE_NUMBER(MonetarySymbolPrecedesNegativeAmount), true},
    {LOCALE_NUMBER(SeparationOfNegativeSignInMonetaryValue), false},
    {LOCALE_NUMBER(DateType), ZelDate_MonthDayYear},
    {LOCALE_NUMBER(LongDateType), ZelLongDate_MonthDayYear},
    {LOCALE_NUMBER(DayLeadingZeroType), ZelDayLeadingZero_No},
    {LOCALE_NUMBER(MonthLeadingZeroType), ZelMonthLeadingZero_No},
    {LOCALE_NUMBER(TimeLeadingZeroType), ZelTimeLeadingZero_No},
    {LOCALE_NUMBER(TimeMarkerPositionType), ZelTimeMarkerPosition_Suffix},
    {LOCALE_NUMBER(TimeFormatType), ZelTimeFormat_12Hours},
    {LOCALE_NUMBER(CenturyType), ZelCentury_FourDigits},
    {LOCALE_NUMBER(CalendarType), ZelCalendar_Gregorian},
    {LOCALE_NUMBER(FirstOptionalCalendarType), ZelOptionalCalendar_None},
    {LOCALE_NUMBER(FirstDayOfWeekType), ZelFirstDayOfWeek_Sunday},
    {LOCALE_NUMBER(FirstWeekOfYearType), ZelFirstWeekOfYear_OfFirstOfJanuary},
};

}  // namespace

TEST_F(LocaleEnglish, TextsAreThoseOfTheUser) {
    for (const auto& [why, get, expected] : kTexts) EXPECT_EQ(get(), expected) << why;
}

TEST_F(LocaleEnglish, NumbersAreThoseThatWindowsDocuments) {
    for (const auto& [why, get, expected] : kNumbers) EXPECT_EQ(get(), expected) << why;
}
