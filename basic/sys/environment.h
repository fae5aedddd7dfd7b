// Variables of the environment.

#pragma once

#include <optional>

#include "sv/string.h"

// As the system has it now, also when another run time has set it. Nothing when it is not set; a
// variable that is set to nothing is an empty text.
std::optional<SV::String> environmentText(const char* name);
