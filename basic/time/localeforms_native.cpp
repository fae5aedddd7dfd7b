// The forms of the C locale, for tests and benchmarks without Windows.

#include "diag/format.h"
#include "time/localeforms.h"

SV::String localeDate(const SV::Date& date) {
    return formatted("%02d/%02d/%02d", date.GetMonth(), date.GetDay(), date.GetYear() % 100);
}

SV::String localeLongDate(const SV::Date& date) {
    return formatted("%02d/%02d/%04d", date.GetMonth(), date.GetDay(), date.GetYear());
}

SV::String localeTime(const SV::Time& time) {
    return formatted("%02d:%02d:%02d", time.GetHour(), time.GetMin(), time.GetSec());
}
