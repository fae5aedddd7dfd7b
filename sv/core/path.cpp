#include "sv/path.h"

namespace SV {

namespace {

bool isSeparator(char c) { return c == '\\' || c == '/'; }

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

bool IsAbsolutePath(const String& path) {
    if (path.empty()) return false;
    return isSeparator(path[0]) ||
           (path.size() >= 3 && isLetter(path[0]) && path[1] == ':' && isSeparator(path[2]));
}

}  // namespace SV
