// Text by a `printf` format, of any length.

#pragma once

#include "sv/string.h"

// A null text argument shows as "(null)".
SV::String formatted(const char* format, ...) __attribute__((format(printf, 1, 2)));
