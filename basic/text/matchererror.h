// Errors of the matchers in front of the user.

#pragma once

#include "sv/string.h"

// A modal box with an OK button that belongs to the application window.
void showMatcherError(const SV::String& message);
