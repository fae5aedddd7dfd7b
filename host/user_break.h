// Ctrl+C on the console.

#pragma once

#include "sv/window.h"

namespace zelhost {

// From now on the first Ctrl+C or Ctrl+Break only asks the program to end, which it does when it
// has tidied up; a second one ends it at once, as the system does.
void watchForBreak();

// Was it asked to? By any thread.
bool isBreakWanted();

// The window to close then; null for none.
void closeOnBreak(const SV::Window* window);

}  // namespace zelhost
