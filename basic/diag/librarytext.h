// Texts of the library by number.

#pragma once

#include <cstdint>

#include "sv/string.h"

// The text of a string resource in the process code page: from the resource
// files that are loaded, else from the library's own table. Empty when nobody
// has it; raises no exception of the application.
SV::String libraryText(std::uint32_t number);

// A number, never 0, that is another one when texts may have changed since: after a
// change of the user's language, for one.
std::uint64_t libraryTextGeneration();
