#include "diag/comparetext.h"

#include <windows.h>

bool isEqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a == b) return true;
    return ::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(),
                            static_cast<int>(a.size()), b.data(),
                            static_cast<int>(b.size())) == CSTR_EQUAL;
}
