// The menus of the program's window.

#pragma once

#include <string>
#include <vector>

#include "sv/window.h"

namespace zelhost {

constexpr unsigned short kEnglishLanguage = 1033;
constexpr unsigned short kGermanLanguage = 1031;
constexpr int kViewMenu = 1;  // position; the open windows are listed below its entries

// In the language of the user interface; `commands` are those of the plug-ins.
SV::Menu menuBar(const std::vector<std::string>& commands);

}  // namespace zelhost
