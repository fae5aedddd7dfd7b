// Settings of the Windows user locale.

#pragma once

#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"

// The enumerations below have the numbers that Windows documents for the locale
// item. Windows may answer with further numbers; they come as they are.

// The calendar in which dates are shown.
enum ZelCalendarType : std::int32_t {
    ZelCalendar_Gregorian = 1,
    ZelCalendar_GregorianUS = 2,  // English names everywhere
    ZelCalendar_Japan = 3,        // era of the emperor
    ZelCalendar_Taiwan = 4,
    ZelCalendar_Korea = 5,  // Tangun era
    ZelCalendar_Hijri = 6,  // Arabic lunar
    ZelCalendar_Thai = 7,
    ZelCalendar_Hebrew = 8,
    ZelCalendar_GregorianMiddleEastFrench = 9,
    ZelCalendar_GregorianArabic = 10,
    ZelCalendar_GregorianTransliteratedEnglish = 11,
    ZelCalendar_GregorianTransliteratedFrench = 12,
    ZelCalendar_UmAlQura = 23,
};

// The numbers are those of `ZelCalendarType` and 0 for none.
enum ZelOptionalCalendarType : std::int32_t {
    ZelOptionalCalendar_None = 0,
    ZelOptionalCalendar_Gregorian = 1,
    ZelOptionalCalendar_GregorianUS = 2,
    ZelOptionalCalendar_Japan = 3,
    ZelOptionalCalendar_Taiwan = 4,
    ZelOptionalCalendar_Korea = 5,
    ZelOptionalCalendar_Hijri = 6,
    ZelOptionalCalendar_Thai = 7,
    ZelOptionalCalendar_Hebrew = 8,
    ZelOptionalCalendar_GregorianMiddleEastFrench = 9,
    ZelOptionalCalendar_GregorianArabic = 10,
    ZelOptionalCalendar_GregorianTransliteratedEnglish = 11,
    ZelOptionalCalendar_GregorianTransliteratedFrench = 12,
    ZelOptionalCalendar_UmAlQura = 23,
};

// Digits of years in short dates.
enum ZelCenturyType : std::int32_t {
    ZelCentury_TwoDigits = 0,
    ZelCentury_FourDigits = 1,
};

// Where the symbol stands beside a positive amount.
enum ZelCurrencyType : std::int32_t {
    ZelCurrency_Prefix = 0,           // $1.1
    ZelCurrency_Suffix = 1,           // 1.1$
    ZelCurrency_PrefixSeparated = 2,  // $ 1.1
    ZelCurrency_SuffixSeparated = 3,  // 1.1 $
};

// The order of day, month and year in short dates.
enum ZelDateType : std::int32_t {
    ZelDate_MonthDayYear = 0,
    ZelDate_DayMonthYear = 1,
    ZelDate_YearMonthDay = 2,
};

// The same in long dates.
enum ZelLongDateType : std::int32_t {
    ZelLongDate_MonthDayYear = 0,
    ZelLongDate_DayMonthYear = 1,
    ZelLongDate_YearMonthDay = 2,
};

// Days of one digit in short dates.
enum ZelDayLeadingZeroType : std::int32_t {
    ZelDayLeadingZero_No = 0,   // 9
    ZelDayLeadingZero_Yes = 1,  // 09
};

// Months of one digit in short dates.
enum ZelMonthLeadingZeroType : std::int32_t {
    ZelMonthLeadingZero_No = 0,
    ZelMonthLeadingZero_Yes = 1,
};

// Hours of one digit.
enum ZelTimeLeadingZeroType : std::int32_t {
    ZelTimeLeadingZero_No = 0,
    ZelTimeLeadingZero_Yes = 1,
};

// Numbers between -1 and 1.
enum ZelDecimalLeadingZeroType : std::int32_t {
    ZelDecimalLeadingZero_No = 0,   // .7
    ZelDecimalLeadingZero_Yes = 1,  // 0.7
};

// The day with which calendars begin a week.
enum ZelFirstDayOfWeekType : std::int32_t {
    ZelFirstDayOfWeek_Monday = 0,
    ZelFirstDayOfWeek_Tuesday = 1,
    ZelFirstDayOfWeek_Wednesday = 2,
    ZelFirstDayOfWeek_Thursday = 3,
    ZelFirstDayOfWeek_Friday = 4,
    ZelFirstDayOfWeek_Saturday = 5,
    ZelFirstDayOfWeek_Sunday = 6,
};

// Which week of a year is its first one: that with 1 January, or the first with so many days of
// the year.
enum ZelFirstWeekOfYearType : std::int32_t {
    ZelFirstWeekOfYear_OfFirstOfJanuary = 0,
    ZelFirstWeekOfYear_FirstFullWeek = 1,
    ZelFirstWeekOfYear_FirstFourDayWeek = 2,  // as ISO 8601 has it
};

// Where sign and symbol stand beside a negative amount. Each name spells the example: S the symbol,
// N the number, B a blank.
enum ZelNegativeCurrencyType : std::int32_t {
    ZelNegativeCurrency_Parenthesis_SN = 0,    // ($1.1)
    ZelNegativeCurrency_Minus_SN = 1,          // -$1.1
    ZelNegativeCurrency_S_Minus_N = 2,         // $-1.1
    ZelNegativeCurrency_SN_Minus = 3,          // $1.1-
    ZelNegativeCurrency_Parenthesis_NS = 4,    // (1.1$)
    ZelNegativeCurrency_Minus_NS = 5,          // -1.1$
    ZelNegativeCurrency_N_Minus_S = 6,         // 1.1-$
    ZelNegativeCurrency_NS_Minus = 7,          // 1.1$-
    ZelNegativeCurrency_Minus_NBS = 8,         // -1.1 $
    ZelNegativeCurrency_Minus_SBN = 9,         // -$ 1.1
    ZelNegativeCurrency_NBS_Minus = 10,        // 1.1 $-
    ZelNegativeCurrency_SBN_Minus = 11,        // $ 1.1-
    ZelNegativeCurrency_SB_Minus_N = 12,       // $ -1.1
    ZelNegativeCurrency_N_Minus_BS = 13,       // 1.1- $
    ZelNegativeCurrency_Parenthesis_SBN = 14,  // ($ 1.1)
    ZelNegativeCurrency_Parenthesis_NBS = 15,  // (1.1 $)
};

// How numbers below 0 show that they are.
enum ZelNegativeNumberType : std::int32_t {
    ZelNegativeNumber_Parenthesis = 0,       // (1.1)
    ZelNegativeNumber_MinusBefore = 1,       // -1.1
    ZelNegativeNumber_MinusBlankBefore = 2,  // "- 1.1"
    ZelNegativeNumber_MinusBehind = 3,       // 1.1-
    ZelNegativeNumber_BlankMinusBehind = 4,  // 1.1 -
};

// Where the sign of a positive amount of money stands.
enum ZelPositiveSignInCurrencyType : std::int32_t {
    ZelPositiveSignInCurrency_Parenthesis = 0,  // around amount and symbol
    ZelPositiveSignInCurrency_BeforeAmount = 1,
    ZelPositiveSignInCurrency_BehindAmount = 2,
    ZelPositiveSignInCurrency_BeforeSymbol = 3,
    ZelPositiveSignInCurrency_BehindSymbol = 4,
};

// Where the sign of a negative amount of money stands.
enum ZelNegativeSignInCurrencyType : std::int32_t {
    ZelNegativeSignInCurrency_Parenthesis = 0,  // around amount and symbol
    ZelNegativeSignInCurrency_BeforeAmount = 1,
    ZelNegativeSignInCurrency_BehindAmount = 2,
    ZelNegativeSignInCurrency_BeforeSymbol = 3,
    ZelNegativeSignInCurrency_BehindSymbol = 4,
};

// The paper that printers are expected to hold.
enum ZelPaperSizeType : std::int32_t {
    ZelPaperSize_USLetter = 1,
    ZelPaperSize_USLegal = 5,
    ZelPaperSize_A3 = 8,
    ZelPaperSize_A4 = 9,
};

// How many hours are counted before they begin anew.
enum ZelTimeFormatType : std::int32_t {
    ZelTimeFormat_12Hours = 0,
    ZelTimeFormat_24Hours = 1,
};

// Where AM or PM stands.
enum ZelTimeMarkerPositionType : std::int32_t {
    ZelTimeMarkerPosition_Suffix = 0,
    ZelTimeMarkerPosition_Prefix = 1,
};

// Each function asks the system anew for one item of the user's default locale.
// Examples in comments are those of English (United States). Texts are in the
// process code page. An item that the system does not supply is an empty text, 0
// or false. Any thread may ask.
namespace Locale {

// -- Language and country

ZBASIC_API unsigned long
Zel_GetLanguage();  // the id's hexadecimal digits read as decimal ones: 409
ZBASIC_API SV::String
Zel_GetLanguageName();  // "English (United States)", in the language of the system
ZBASIC_API SV::String Zel_GetLanguageEnglishName();       // "English"
ZBASIC_API SV::String Zel_GetAbbreviatedLanguageName();   // "ENU"
ZBASIC_API SV::String Zel_GetNativeLanguageName();        // "English"
ZBASIC_API unsigned long Zel_GetCountryCode();            // 1, as telephones dial
ZBASIC_API SV::String Zel_GetCountryName();               // in the language of the system
ZBASIC_API SV::String Zel_GetCountryEnglishName();        // "United States"
ZBASIC_API SV::String Zel_GetAbbreviatedCountryName();    // "USA"
ZBASIC_API SV::String Zel_GetNativeCountryName();         // "United States"
ZBASIC_API unsigned long Zel_GetDefaultLanguage();        // read like `Zel_GetLanguage`
ZBASIC_API unsigned long Zel_GetDefaultCountry();         // of the default language: 1
ZBASIC_API unsigned long Zel_GetDefaultCodepage();        // of consoles: 437
ZBASIC_API unsigned long Zel_GetDefaultANSICodepage();    // 1252
ZBASIC_API unsigned long Zel_GetDefaultMacCodepage();     // 10000
ZBASIC_API unsigned long Zel_GetDefaultEBCDICCodepage();  // 37
ZBASIC_API SV::String Zel_GetISO639LanguageName();        // "en"
ZBASIC_API SV::String Zel_GetISO3166CountryName();        // "US"
ZBASIC_API SV::String Zel_GetSortName();                  // of the order of texts: "Default"
ZBASIC_API SV::String Zel_GetListSeparator();             // ","
ZBASIC_API unsigned long Zel_GetMeasureType();            // 0 metric, 1 US
ZBASIC_API ZelPaperSizeType Zel_GetPaperSizeType();       // `ZelPaperSize_USLetter`

// -- Numbers

ZBASIC_API SV::String Zel_GetDecimalSeparator();                       // "."
ZBASIC_API SV::String Zel_GetThousandGroupSeparator();                 // ","
ZBASIC_API SV::String Zel_GetDecimalGrouping();                        // "3;0"
ZBASIC_API unsigned long Zel_GetFractionalDigits();                    // of numbers: 2
ZBASIC_API ZelDecimalLeadingZeroType Zel_GetDecimalLeadingZeroType();  // yes
ZBASIC_API SV::String Zel_GetNativeDigits();                           // "0123456789"
ZBASIC_API ZelNegativeNumberType Zel_GetNegativeNumberType();  // `ZelNegativeNumber_MinusBefore`
ZBASIC_API SV::String Zel_GetPositiveSign();                   // often empty
ZBASIC_API SV::String Zel_GetNegativeSign();                   // "-"

// -- Money

ZBASIC_API SV::String Zel_GetCurrencyName();                 // the symbol: "$"
ZBASIC_API SV::String Zel_GetInternationalMonetarySymbol();  // "USD"
ZBASIC_API SV::String Zel_GetCurrencyEnglishName();          // "US Dollar"
ZBASIC_API SV::String Zel_GetNativeCurrencyName();           // "US Dollar"
ZBASIC_API SV::String Zel_GetMonetaryDecimalSeparator();     // "."
ZBASIC_API SV::String Zel_GetMonetaryThousandSeparator();    // ","
ZBASIC_API SV::String Zel_GetMonetaryGrouping();             // "3;0"
ZBASIC_API unsigned long Zel_GetCurrencyFractionalDigits();  // of amounts with the symbol: 2
ZBASIC_API unsigned long
Zel_GetInternationalCurrencyFractionalDigits();  // of amounts with "USD": 2

// Where symbol and sign of an amount stand.
ZBASIC_API ZelCurrencyType Zel_GetCurrencyType();
ZBASIC_API ZelNegativeCurrencyType Zel_GetNegativeCurrencyType();
ZBASIC_API ZelPositiveSignInCurrencyType Zel_GetPositiveSignInCurrencyType();
ZBASIC_API ZelNegativeSignInCurrencyType Zel_GetNegativeSignInCurrencyType();

// Whether the symbol stands before an amount, and whether a blank is between the two.
ZBASIC_API bool Zel_GetMonetarySymbolPrecedesPositiveAmount();
ZBASIC_API bool Zel_GetSeparationOfMonetarySymbolInPositiveValue();
ZBASIC_API bool Zel_GetMonetarySymbolPrecedesNegativeAmount();
ZBASIC_API bool Zel_GetSeparationOfNegativeSignInMonetaryValue();

// -- Date and time

// Relied on by callers: the currency symbol, not the separator of dates.
ZBASIC_API SV::String Zel_GetDateSeparator();

ZBASIC_API SV::String Zel_GetTimeSeparator();    // ":"
ZBASIC_API SV::String Zel_GetShortDateFormat();  // "M/d/yyyy"
ZBASIC_API SV::String Zel_GetLongDateFormat();   // "dddd, MMMM d, yyyy"
ZBASIC_API SV::String Zel_GetTimeFormat();       // "h:mm:ss tt"
ZBASIC_API SV::String Zel_GetYearMonthFormat();  // "MMMM yyyy"

// What the formats of dates and times are made of.
ZBASIC_API ZelDateType Zel_GetDateType();
ZBASIC_API ZelLongDateType Zel_GetLongDateType();
ZBASIC_API ZelTimeFormatType Zel_GetTimeFormatType();
ZBASIC_API ZelCenturyType Zel_GetCenturyType();
ZBASIC_API ZelTimeLeadingZeroType Zel_GetTimeLeadingZeroType();
ZBASIC_API ZelDayLeadingZeroType Zel_GetDayLeadingZeroType();
ZBASIC_API ZelMonthLeadingZeroType Zel_GetMonthLeadingZeroType();
ZBASIC_API ZelTimeMarkerPositionType Zel_GetTimeMarkerPositionType();

ZBASIC_API SV::String Zel_GetAMDesignator();  // "AM"
ZBASIC_API SV::String Zel_GetPMDesignator();  // "PM"

// The calendar in use, the one that may be used beside it, and how both count weeks.
ZBASIC_API ZelCalendarType Zel_GetCalendarType();
ZBASIC_API ZelOptionalCalendarType Zel_GetFirstOptionalCalendarType();
ZBASIC_API ZelFirstDayOfWeekType Zel_GetFirstDayOfWeekType();
ZBASIC_API ZelFirstWeekOfYearType Zel_GetFirstWeekOfYearType();

// -- Names of days and months

// The name of a day of the week, from Monday to Sunday: "Monday".
ZBASIC_API SV::String Zel_GetDayName1();
ZBASIC_API SV::String Zel_GetDayName2();
ZBASIC_API SV::String Zel_GetDayName3();
ZBASIC_API SV::String Zel_GetDayName4();
ZBASIC_API SV::String Zel_GetDayName5();
ZBASIC_API SV::String Zel_GetDayName6();
ZBASIC_API SV::String Zel_GetDayName7();

// The short name of a day of the week, from Monday to Sunday: "Mon".
ZBASIC_API SV::String Zel_GetAbbreviatedDayName1();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName2();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName3();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName4();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName5();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName6();
ZBASIC_API SV::String Zel_GetAbbreviatedDayName7();

// The name of a month, from the first of the year: "January". The 13th is empty in calendars of
// twelve.
ZBASIC_API SV::String Zel_GetMonthName1();
ZBASIC_API SV::String Zel_GetMonthName2();
ZBASIC_API SV::String Zel_GetMonthName3();
ZBASIC_API SV::String Zel_GetMonthName4();
ZBASIC_API SV::String Zel_GetMonthName5();
ZBASIC_API SV::String Zel_GetMonthName6();
ZBASIC_API SV::String Zel_GetMonthName7();
ZBASIC_API SV::String Zel_GetMonthName8();
ZBASIC_API SV::String Zel_GetMonthName9();
ZBASIC_API SV::String Zel_GetMonthName10();
ZBASIC_API SV::String Zel_GetMonthName11();
ZBASIC_API SV::String Zel_GetMonthName12();
ZBASIC_API SV::String Zel_GetMonthName13();

// The short name of a month, likewise: "Jan".
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName1();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName2();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName3();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName4();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName5();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName6();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName7();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName8();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName9();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName10();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName11();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName12();
ZBASIC_API SV::String Zel_GetAbbreviatedMonthName13();

}  // namespace Locale
