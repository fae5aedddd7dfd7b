#include "sv/international.h"
#include "time/localeforms.h"

SV::String localeDate(const SV::Date& date) { return SV::International().GetDate(date); }

SV::String localeLongDate(const SV::Date& date) {
    SV::International settings;
    settings.ChangeLongDateCentury(true);
    return settings.GetLongDate(date);
}

SV::String localeTime(const SV::Time& time) {
    return SV::International().GetTime(time, true, false);
}
