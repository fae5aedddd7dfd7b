#include "sv/path.h"

#include "sv/ascii.h"

namespace SV {

bool IsAbsolutePath(const String& path) {
    if (path.empty()) return false;
    return IsPathSeparator(path[0]) || (path.size() >= 3 && IsAsciiLetter(path[0]) &&
                                        path[1] == ':' && IsPathSeparator(path[2]));
}

}  // namespace SV
