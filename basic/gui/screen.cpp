#include "zbasic/zgui.h"

#include <windows.h>

bool Zel_IsAtLeastWindowsVista() {
    constexpr BYTE kVistaMajor = 6;
    static const bool answer = [] {
        OSVERSIONINFOEXA wanted = {};
        wanted.dwOSVersionInfoSize = sizeof wanted;
        wanted.dwMajorVersion = kVistaMajor;
        const DWORDLONG condition = ::VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL);
        return ::VerifyVersionInfoA(&wanted, VER_MAJORVERSION, condition) != 0;
    }();
    return answer;
}

double Zel_GetSystemDPIScaleY() {
    constexpr double kBaseDpi = 96.0;
    static const double scale = [] {
        const HDC screen = ::GetDC(nullptr);
        const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
        ::ReleaseDC(nullptr, screen);
        return dpi / kBaseDpi;
    }();
    return scale;
}
