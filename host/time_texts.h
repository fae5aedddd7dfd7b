// Durations and days in the language of the user interface.

#pragma once

#include <string>

#include "sv/datetime.h"
#include "sv/string.h"
#include "zbasic/zcoretime.h"

namespace zelhost {

SV::String shownDuration(const ZelCoreTime& duration);  // "1 day 02:03:04"
SV::String shownDay(const SV::Date& day);               // "Thursday, 29 February 2024"

// The day of a text that is a day and a time, as nodes have it.
SV::Date dayOf(const std::string& changed);
SV::String shownChange(const std::string& changed);  // with the time

}  // namespace zelhost
