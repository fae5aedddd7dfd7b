// Asks for a file.

#pragma once

#include <optional>
#include <string>

#include "sv/window.h"

namespace zelhost {

// The path of a model that is there; nothing when the user wants none.
std::optional<std::string> askForModel(const SV::Window& owner);

}  // namespace zelhost
