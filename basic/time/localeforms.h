// Dates and times in the forms of the user's locale.

#pragma once

#include "sv/datetime.h"
#include "sv/string.h"

SV::String localeDate(const SV::Date& date);      // the short form
SV::String localeLongDate(const SV::Date& date);  // years with four digits
SV::String localeTime(const SV::Time& time);      // with seconds, without hundredths
