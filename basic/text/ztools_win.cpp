#include <string>

#include "text/ztools_sys.h"

#include <windows.h>

SV::String programDirectory() {
    std::string path(MAX_PATH, '\0');
    DWORD size = 0;
    // A full buffer means that the name was cut.
    while ((size = ::GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size()) {
        path.resize(2 * path.size());
    }
    path.resize(size);
    return SV::String(path.substr(0, path.find_last_of("\\/") + 1));
}

char16_t codePageCharacter(char byte) {
    wchar_t character = 0;
    ::MultiByteToWideChar(CP_ACP, MB_USEGLYPHCHARS, &byte, 1, &character, 1);
    return static_cast<char16_t>(character);
}
