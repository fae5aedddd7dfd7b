#include "text/ztools_sys.h"

#include "diag/winowner.h"
#include "zbasic/zlocale.h"
#include "zbasic/ztools.h"

#include <windows.h>

char16_t codePageCharacter(char byte) {
    wchar_t character = 0;
    ::MultiByteToWideChar(CP_ACP, MB_USEGLYPHCHARS, &byte, 1, &character, 1);
    return static_cast<char16_t>(character);
}

bool isLetter(char c) { return ::IsCharAlphaA(c); }

bool isUpperLetter(char c) { return ::IsCharUpperA(c); }

Order orderIgnoringCase(const char* a, const char* b) {
    switch (::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a, -1, b, -1)) {
        case CSTR_LESS_THAN:
            return Order::kLess;
        case CSTR_EQUAL:
            return Order::kEqual;
        case CSTR_GREATER_THAN:
            return Order::kGreater;
        default:
            return Order::kFailed;
    }
}

char decimalSeparator() { return Locale::Zel_GetDecimalSeparator()[0]; }

bool Zel_FileIsInUse(const char* path) {
    if (!path || Zel_Valid_DBFilename(path)) return false;
    constexpr DWORD kNoSharing = 0;
    const WinFile file(::CreateFileA(path, GENERIC_READ, kNoSharing, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    return !file && ::GetLastError() == ERROR_SHARING_VIOLATION;
}
