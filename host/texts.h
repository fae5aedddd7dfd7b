// The host's texts by number; they lie in texts/, one file a language.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/message.h"
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
    kExportedTo,  // the first "%s" is the model, the second the directory
    kNoModel,
    kMenuOpenExported,
    kNotExported,  // "%s" is the file
    kMenuPlugins,
    kCommandFailed,  // "%s" is the command; what it says for itself follows
    kMenuFilter,
    kNothingToFilter,  // "%s" is the model
    kYear,
    kYears,
    kDay,
    kDays,
    kDayPicture,    // as `ZelDate::GetFormatedDate` has it
    kTotal,         // "%s" is a duration
    kLastChange,    // "%s" is a day with its time
    kChangedSince,  // "%s" is a day
    kFilterLabel,
    kFilterCount,  // the first "%s" is the number of nodes that are shown, the second of all
    kFilterUnusable,
    kReading,      // the first "%s" is the file, the second how far it is
    kDrawing,      // "%s" is the file
    kWriting,      // "%s" is the file
    kAdviceModel,  // where a line is named
    kAdviceRemarks,
    kAdviceExport,
    kAdviceVeto,
    kAdviceCommand,
    kAdviceAfter,
    kAdviceFile,    // where none is
    kAbout,         // version, build, data version and language
    kMoreProblems,  // "%s" is their number
    kNoMemory,
};

// In the language of the user interface.
SV::String textOf(Text text);
std::string inLanguage(const Message& message);

// The text with `value` in place of its first "%s".
SV::String filled(SV::String text, std::string_view value);
SV::String filled(Text text, std::string_view value);

}  // namespace zelhost
