// Keys that work in the whole window.

#pragma once

#include <cstdint>

#include "sv/window.h"

namespace zelhost {

// Has the window's frame carry out the command of a key that was pressed in it (`wParam` of
// WM_KEYDOWN); false when the key has none.
bool carryOutKey(const SV::Window& window, std::uintptr_t wParam);

}  // namespace zelhost
