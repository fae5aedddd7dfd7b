#include "text/ztools_sys.h"

#include <windows.h>

char16_t codePageCharacter(char byte) {
    wchar_t character = 0;
    ::MultiByteToWideChar(CP_ACP, MB_USEGLYPHCHARS, &byte, 1, &character, 1);
    return static_cast<char16_t>(character);
}
