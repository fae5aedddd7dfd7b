// The texts of the application's standard buttons.

#pragma once

#include "sv/international.h"

// `settings` with OK, Cancel and Help as the current language's resource files have them.
SV::International withButtonTexts(SV::International settings);
