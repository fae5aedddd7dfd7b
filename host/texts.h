// The host's texts by number; they lie in texts/, one file a language.

#pragma once

#include <cstdint>

#include "sv/string.h"

namespace zelhost {

enum class Text : std::uint32_t {
    kMenuFile = 40001,
    kMenuOpen,
    kMenuExport,
    kMenuExit,
    kMenuView,
    kMenuEnglish,
    kMenuGerman,
    kMenuTile,
    kMenuCascade,
    kMenuHelp,
    kMenuAbout,
    kAboutTitle,
    kOpenTitle,
    kOpenFilter,  // "description|pattern|description|pattern"
    kProblemsTitle,
    kExportedTo,  // "%s" is the directory
    kNothingToExport,
    kMenuOpenExported,
    kNotExported,  // "%s" is the file
    kMenuPlugins,
    kCommandFailed,  // "%s" is the command; what it says for itself follows
};

// In the language of the user interface.
SV::String textOf(Text text);

}  // namespace zelhost
