#include "sv/path.h"

#include <string>

#include <windows.h>

namespace SV {

namespace {

String findProgramDirectory() {
    std::string path(MAX_PATH, '\0');
    DWORD length = 0;
    // A result of the buffer's size means that the name was cut.
    while ((length = ::GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size()) {
        path.resize(2 * path.size());
    }
    path.resize(length);
    path.resize(path.find_last_of("\\/") + 1);
    return String(path);
}

}  // namespace

const String& GetProgramDirectory() {
    static const String directory = findProgramDirectory();
    return directory;
}

}  // namespace SV
