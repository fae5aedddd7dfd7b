#include "zbasic/zlocale.h"

#include <gtest/gtest.h>

#include <functional>

#include <windows.h>

namespace {

// Expected texts are those of an English (United States) system.
class LocaleEnglish : public ::testing::Test {
protected:
    void SetUp() override {
        if (::GetUserDefaultLCID() != 1033) GTEST_SKIP() << "the user's locale is another one";
    }
};

struct TextCase {
    SV::String (*get)();
    const char* expected;
};

const TextCase kTexts[] = {
    {Locale::Zel_GetLanguageName, "English (United States)"},
    {Locale::Zel_GetLanguageEnglishName, "English"},
    {Locale::Zel_GetAbbreviatedLanguageName, "ENU"},
    {Locale::Zel_GetNativeCountryName, "United States"},
    {Locale::Zel_GetAbbreviatedCountryName, "USA"},
    {Locale::Zel_GetISO639LanguageName, "en"},
    {Locale::Zel_GetISO3166CountryName, "US"},
    {Locale::Zel_GetListSeparator, ","},
    {Locale::Zel_GetDecimalSeparator, "."},
    {Locale::Zel_GetThousandGroupSeparator, ","},
    {Locale::Zel_GetDecimalGrouping, "3;0"},
    {Locale::Zel_GetNativeDigits, "0123456789"},
    {Locale::Zel_GetPositiveSign, ""},
    {Locale::Zel_GetNegativeSign, "-"},
    {Locale::Zel_GetCurrencyName, "$"},
    {Locale::Zel_GetInternationalMonetarySymbol, "USD"},
    {Locale::Zel_GetCurrencyEnglishName, "US Dollar"},
    {Locale::Zel_GetMonetaryDecimalSeparator, "."},
    {Locale::Zel_GetMonetaryThousandSeparator, ","},
    {Locale::Zel_GetDateSeparator, "$"},  // the currency symbol, as callers know it
    {Locale::Zel_GetTimeSeparator, ":"},
    {Locale::Zel_GetShortDateFormat, "M/d/yyyy"},
    {Locale::Zel_GetLongDateFormat, "dddd, MMMM d, yyyy"},
    {Locale::Zel_GetTimeFormat, "h:mm:ss tt"},
    {Locale::Zel_GetYearMonthFormat, "MMMM yyyy"},
    {Locale::Zel_GetAMDesignator, "AM"},
    {Locale::Zel_GetPMDesignator, "PM"},
    {Locale::Zel_GetDayName1, "Monday"},
    {Locale::Zel_GetDayName7, "Sunday"},
    {Locale::Zel_GetAbbreviatedDayName1, "Mon"},
    {Locale::Zel_GetAbbreviatedDayName7, "Sun"},
    {Locale::Zel_GetMonthName1, "January"},
    {Locale::Zel_GetMonthName12, "December"},
    {Locale::Zel_GetMonthName13, ""},
    {Locale::Zel_GetAbbreviatedMonthName1, "Jan"},
    {Locale::Zel_GetAbbreviatedMonthName12, "Dec"},
    {Locale::Zel_GetAbbreviatedMonthName13, ""},
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
    {LOCALE_NUMBER(DefaultCodepage), 437},
    {LOCALE_NUMBER(DefaultANSICodepage), 1252},
    {LOCALE_NUMBER(DefaultMacCodepage), 10000},
    {LOCALE_NUMBER(DefaultEBCDICCodepage), 37},
    {LOCALE_NUMBER(MeasureType), 1},
    {LOCALE_NUMBER(PaperSizeType), ZelPaperSize_USLetter},
    {LOCALE_NUMBER(FractionalDigits), 2},
    {LOCALE_NUMBER(DecimalLeadingZeroType), ZelDecimalLeadingZero_Yes},
    {LOCALE_NUMBER(NegativeNumberType), ZelNegativeNumber_MinusBefore},
    {LOCALE_NUMBER(CurrencyType), ZelCurrency_Prefix},
    {LOCALE_NUMBER(NegativeCurrencyType), ZelNegativeCurrency_Parenthesis_SN},
    {LOCALE_NUMBER(NegativeSignInCurrencyType), ZelNegativeSignInCurrency_Parenthesis},
    {LOCALE_NUMBER(MonetarySymbolPrecedesPositiveAmount), true},
    {LOCALE_NUMBER(SeparationOfMonetarySymbolInPositiveValue), false},
    {LOCALE_NUMBER(DateType), ZelDate_MonthDayYear},
    {LOCALE_NUMBER(TimeFormatType), ZelTimeFormat_12Hours},
    {LOCALE_NUMBER(CenturyType), ZelCentury_FourDigits},
    {LOCALE_NUMBER(CalendarType), ZelCalendar_Gregorian},
    {LOCALE_NUMBER(FirstOptionalCalendarType), ZelOptionalCalendar_None},
    {LOCALE_NUMBER(FirstDayOfWeekType), ZelFirstDayOfWeek_Sunday},
    {LOCALE_NUMBER(FirstWeekOfYearType), ZelFirstWeekOfYear_OfFirstOfJanuary},
};

}  // namespace

TEST_F(LocaleEnglish, TextsAreThoseOfTheUser) {
    for (const auto& [get, expected] : kTexts) {
        SCOPED_TRACE(&get - &kTexts[0].get);
        EXPECT_EQ(get(), expected);
    }
}

TEST_F(LocaleEnglish, NumbersAreThoseThatWindowsDocuments) {
    for (const auto& [why, get, expected] : kNumbers) {
        EXPECT_EQ(get(), expected) << why;
    }
}
