// Where the program lies.

#pragma once

#include "sv/export.h"
#include "sv/string.h"

namespace SV {

// The directory of the program file as a full path that ends in a backslash.
SV_API const String& GetProgramDirectory();

// Whether the system takes `path` as it is: a drive letter with ":" and a
// separator, or a leading separator.
SV_API bool IsAbsolutePath(const String& path);

}  // namespace SV
