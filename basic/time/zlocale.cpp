#include "zbasic/zlocale.h"

#include "time/localeitem.h"

#include <windows.h>

namespace Locale {

namespace {

SV::String text(LCTYPE item) { return localeItem(LOCALE_USER_DEFAULT, item); }

unsigned long number(LCTYPE item) { return static_cast<unsigned long>(SV::h_atol(text(item))); }

template <typename Enumeration>
Enumeration numberOf(LCTYPE item) {
    return static_cast<Enumeration>(number(item));
}

bool flag(LCTYPE item) { return number(item) != 0; }

}  // namespace

unsigned long Zel_GetLanguage() { return number(LOCALE_ILANGUAGE); }
SV::String Zel_GetLanguageName() { return text(LOCALE_SLANGUAGE); }
SV::String Zel_GetLanguageEnglishName() { return text(LOCALE_SENGLANGUAGE); }
SV::String Zel_GetAbbreviatedLanguageName() { return text(LOCALE_SABBREVLANGNAME); }
SV::String Zel_GetNativeLanguageName() { return text(LOCALE_SNATIVELANGNAME); }
unsigned long Zel_GetCountryCode() { return number(LOCALE_ICOUNTRY); }
SV::String Zel_GetCountryName() { return text(LOCALE_SCOUNTRY); }
SV::String Zel_GetCountryEnglishName() { return text(LOCALE_SENGCOUNTRY); }
SV::String Zel_GetAbbreviatedCountryName() { return text(LOCALE_SABBREVCTRYNAME); }
SV::String Zel_GetNativeCountryName() { return text(LOCALE_SNATIVECTRYNAME); }
unsigned long Zel_GetDefaultLanguage() { return number(LOCALE_IDEFAULTLANGUAGE); }
unsigned long Zel_GetDefaultCountry() { return number(LOCALE_IDEFAULTCOUNTRY); }
unsigned long Zel_GetDefaultCodepage() { return number(LOCALE_IDEFAULTCODEPAGE); }
unsigned long Zel_GetDefaultANSICodepage() { return number(LOCALE_IDEFAULTANSICODEPAGE); }
unsigned long Zel_GetDefaultMacCodepage() { return number(LOCALE_IDEFAULTMACCODEPAGE); }
unsigned long Zel_GetDefaultEBCDICCodepage() { return number(LOCALE_IDEFAULTEBCDICCODEPAGE); }
SV::String Zel_GetISO639LanguageName() { return text(LOCALE_SISO639LANGNAME); }
SV::String Zel_GetISO3166CountryName() { return text(LOCALE_SISO3166CTRYNAME); }
SV::String Zel_GetSortName() { return text(LOCALE_SSORTNAME); }
SV::String Zel_GetListSeparator() { return text(LOCALE_SLIST); }
unsigned long Zel_GetMeasureType() { return number(LOCALE_IMEASURE); }
ZelPaperSizeType Zel_GetPaperSizeType() { return numberOf<ZelPaperSizeType>(LOCALE_IPAPERSIZE); }

SV::String Zel_GetDecimalSeparator() { return text(LOCALE_SDECIMAL); }
SV::String Zel_GetThousandGroupSeparator() { return text(LOCALE_STHOUSAND); }
SV::String Zel_GetDecimalGrouping() { return text(LOCALE_SGROUPING); }
unsigned long Zel_GetFractionalDigits() { return number(LOCALE_IDIGITS); }
ZelDecimalLeadingZeroType Zel_GetDecimalLeadingZeroType() {
    return numberOf<ZelDecimalLeadingZeroType>(LOCALE_ILZERO);
}
SV::String Zel_GetNativeDigits() { return text(LOCALE_SNATIVEDIGITS); }
ZelNegativeNumberType Zel_GetNegativeNumberType() {
    return numberOf<ZelNegativeNumberType>(LOCALE_INEGNUMBER);
}
SV::String Zel_GetPositiveSign() { return text(LOCALE_SPOSITIVESIGN); }
SV::String Zel_GetNegativeSign() { return text(LOCALE_SNEGATIVESIGN); }

SV::String Zel_GetCurrencyName() { return text(LOCALE_SCURRENCY); }
SV::String Zel_GetInternationalMonetarySymbol() { return text(LOCALE_SINTLSYMBOL); }
SV::String Zel_GetCurrencyEnglishName() { return text(LOCALE_SENGCURRNAME); }
SV::String Zel_GetNativeCurrencyName() { return text(LOCALE_SNATIVECURRNAME); }
SV::String Zel_GetMonetaryDecimalSeparator() { return text(LOCALE_SMONDECIMALSEP); }
SV::String Zel_GetMonetaryThousandSeparator() { return text(LOCALE_SMONTHOUSANDSEP); }
SV::String Zel_GetMonetaryGrouping() { return text(LOCALE_SMONGROUPING); }
unsigned long Zel_GetCurrencyFractionalDigits() { return number(LOCALE_ICURRDIGITS); }
unsigned long Zel_GetInternationalCurrencyFractionalDigits() {
    return number(LOCALE_IINTLCURRDIGITS);
}
ZelCurrencyType Zel_GetCurrencyType() { return numberOf<ZelCurrencyType>(LOCALE_ICURRENCY); }
ZelNegativeCurrencyType Zel_GetNegativeCurrencyType() {
    return numberOf<ZelNegativeCurrencyType>(LOCALE_INEGCURR);
}
ZelPositiveSignInCurrencyType Zel_GetPositiveSignInCurrencyType() {
    return numberOf<ZelPositiveSignInCurrencyType>(LOCALE_IPOSSIGNPOSN);
}
ZelNegativeSignInCurrencyType Zel_GetNegativeSignInCurrencyType() {
    return numberOf<ZelNegativeSignInCurrencyType>(LOCALE_INEGSIGNPOSN);
}
bool Zel_GetMonetarySymbolPrecedesPositiveAmount() { return flag(LOCALE_IPOSSYMPRECEDES); }
bool Zel_GetSeparationOfMonetarySymbolInPositiveValue() { return flag(LOCALE_IPOSSEPBYSPACE); }
bool Zel_GetMonetarySymbolPrecedesNegativeAmount() { return flag(LOCALE_INEGSYMPRECEDES); }
bool Zel_GetSeparationOfNegativeSignInMonetaryValue() { return flag(LOCALE_INEGSEPBYSPACE); }

// Relied on by callers: the currency symbol, not the separator of dates.
SV::String Zel_GetDateSeparator() { return text(LOCALE_SCURRENCY); }
SV::String Zel_GetTimeSeparator() { return text(LOCALE_STIME); }
SV::String Zel_GetShortDateFormat() { return text(LOCALE_SSHORTDATE); }
SV::String Zel_GetLongDateFormat() { return text(LOCALE_SLONGDATE); }
SV::String Zel_GetTimeFormat() { return text(LOCALE_STIMEFORMAT); }
SV::String Zel_GetYearMonthFormat() { return text(LOCALE_SYEARMONTH); }
ZelDateType Zel_GetDateType() { return numberOf<ZelDateType>(LOCALE_IDATE); }
ZelLongDateType Zel_GetLongDateType() { return numberOf<ZelLongDateType>(LOCALE_ILDATE); }
ZelTimeFormatType Zel_GetTimeFormatType() { return numberOf<ZelTimeFormatType>(LOCALE_ITIME); }
ZelCenturyType Zel_GetCenturyType() { return numberOf<ZelCenturyType>(LOCALE_ICENTURY); }
ZelTimeLeadingZeroType Zel_GetTimeLeadingZeroType() {
    return numberOf<ZelTimeLeadingZeroType>(LOCALE_ITLZERO);
}
ZelDayLeadingZeroType Zel_GetDayLeadingZeroType() {
    return numberOf<ZelDayLeadingZeroType>(LOCALE_IDAYLZERO);
}
ZelMonthLeadingZeroType Zel_GetMonthLeadingZeroType() {
    return numberOf<ZelMonthLeadingZeroType>(LOCALE_IMONLZERO);
}
ZelTimeMarkerPositionType Zel_GetTimeMarkerPositionType() {
    return numberOf<ZelTimeMarkerPositionType>(LOCALE_ITIMEMARKPOSN);
}
SV::String Zel_GetAMDesignator() { return text(LOCALE_S1159); }
SV::String Zel_GetPMDesignator() { return text(LOCALE_S2359); }
ZelCalendarType Zel_GetCalendarType() { return numberOf<ZelCalendarType>(LOCALE_ICALENDARTYPE); }
ZelOptionalCalendarType Zel_GetFirstOptionalCalendarType() {
    return numberOf<ZelOptionalCalendarType>(LOCALE_IOPTIONALCALENDAR);
}
ZelFirstDayOfWeekType Zel_GetFirstDayOfWeekType() {
    return numberOf<ZelFirstDayOfWeekType>(LOCALE_IFIRSTDAYOFWEEK);
}
ZelFirstWeekOfYearType Zel_GetFirstWeekOfYearType() {
    return numberOf<ZelFirstWeekOfYearType>(LOCALE_IFIRSTWEEKOFYEAR);
}

SV::String Zel_GetDayName1() { return text(LOCALE_SDAYNAME1); }
SV::String Zel_GetDayName2() { return text(LOCALE_SDAYNAME2); }
SV::String Zel_GetDayName3() { return text(LOCALE_SDAYNAME3); }
SV::String Zel_GetDayName4() { return text(LOCALE_SDAYNAME4); }
SV::String Zel_GetDayName5() { return text(LOCALE_SDAYNAME5); }
SV::String Zel_GetDayName6() { return text(LOCALE_SDAYNAME6); }
SV::String Zel_GetDayName7() { return text(LOCALE_SDAYNAME7); }
SV::String Zel_GetAbbreviatedDayName1() { return text(LOCALE_SABBREVDAYNAME1); }
SV::String Zel_GetAbbreviatedDayName2() { return text(LOCALE_SABBREVDAYNAME2); }
SV::String Zel_GetAbbreviatedDayName3() { return text(LOCALE_SABBREVDAYNAME3); }
SV::String Zel_GetAbbreviatedDayName4() { return text(LOCALE_SABBREVDAYNAME4); }
SV::String Zel_GetAbbreviatedDayName5() { return text(LOCALE_SABBREVDAYNAME5); }
SV::String Zel_GetAbbreviatedDayName6() { return text(LOCALE_SABBREVDAYNAME6); }
SV::String Zel_GetAbbreviatedDayName7() { return text(LOCALE_SABBREVDAYNAME7); }
SV::String Zel_GetMonthName1() { return text(LOCALE_SMONTHNAME1); }
SV::String Zel_GetMonthName2() { return text(LOCALE_SMONTHNAME2); }
SV::String Zel_GetMonthName3() { return text(LOCALE_SMONTHNAME3); }
SV::String Zel_GetMonthName4() { return text(LOCALE_SMONTHNAME4); }
SV::String Zel_GetMonthName5() { return text(LOCALE_SMONTHNAME5); }
SV::String Zel_GetMonthName6() { return text(LOCALE_SMONTHNAME6); }
SV::String Zel_GetMonthName7() { return text(LOCALE_SMONTHNAME7); }
SV::String Zel_GetMonthName8() { return text(LOCALE_SMONTHNAME8); }
SV::String Zel_GetMonthName9() { return text(LOCALE_SMONTHNAME9); }
SV::String Zel_GetMonthName10() { return text(LOCALE_SMONTHNAME10); }
SV::String Zel_GetMonthName11() { return text(LOCALE_SMONTHNAME11); }
SV::String Zel_GetMonthName12() { return text(LOCALE_SMONTHNAME12); }
SV::String Zel_GetMonthName13() { return text(LOCALE_SMONTHNAME13); }
SV::String Zel_GetAbbreviatedMonthName1() { return text(LOCALE_SABBREVMONTHNAME1); }
SV::String Zel_GetAbbreviatedMonthName2() { return text(LOCALE_SABBREVMONTHNAME2); }
SV::String Zel_GetAbbreviatedMonthName3() { return text(LOCALE_SABBREVMONTHNAME3); }
SV::String Zel_GetAbbreviatedMonthName4() { return text(LOCALE_SABBREVMONTHNAME4); }
SV::String Zel_GetAbbreviatedMonthName5() { return text(LOCALE_SABBREVMONTHNAME5); }
SV::String Zel_GetAbbreviatedMonthName6() { return text(LOCALE_SABBREVMONTHNAME6); }
SV::String Zel_GetAbbreviatedMonthName7() { return text(LOCALE_SABBREVMONTHNAME7); }
SV::String Zel_GetAbbreviatedMonthName8() { return text(LOCALE_SABBREVMONTHNAME8); }
SV::String Zel_GetAbbreviatedMonthName9() { return text(LOCALE_SABBREVMONTHNAME9); }
SV::String Zel_GetAbbreviatedMonthName10() { return text(LOCALE_SABBREVMONTHNAME10); }
SV::String Zel_GetAbbreviatedMonthName11() { return text(LOCALE_SABBREVMONTHNAME11); }
SV::String Zel_GetAbbreviatedMonthName12() { return text(LOCALE_SABBREVMONTHNAME12); }
SV::String Zel_GetAbbreviatedMonthName13() { return text(LOCALE_SABBREVMONTHNAME13); }

}  // namespace Locale
