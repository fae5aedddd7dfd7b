// What temporary names and whole files ask of the system.

#pragma once

#include <optional>

#include "sv/string.h"

// A new UUID in its text form. Nothing when the system has no memory for that.
std::optional<SV::String> newUuidText();

// Why the last call of the system on this thread failed, in the system's words.
SV::String lastSystemMessage();
