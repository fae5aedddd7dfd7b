#include "zbasic/zgui.h"

#include "sv/systemfunction.h"

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
        // Without a device context: the first one of a process takes longer than all else at the
        // start of a program without windows. Systems before Windows 10 1607 lack the function.
        auto* const ask =
            SV::SystemFunction<decltype(::GetDpiForSystem)>("user32.dll", "GetDpiForSystem");
        if (ask) return ask() / kBaseDpi;
        const HDC screen = ::GetDC(nullptr);
        const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
        ::ReleaseDC(nullptr, screen);
        return dpi / kBaseDpi;
    }();
    return scale;
}
