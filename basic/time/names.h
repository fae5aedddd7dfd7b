// Names of months and weekdays without a copy.

#pragma once

#include "sv/string.h"

// Empty for a number that has none. Valid until the language changes.
const SV::String& monthName(int month);
const SV::String& weekdayName(int weekday);
