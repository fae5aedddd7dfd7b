#include "app/console.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/consolelistener.h"
#include "sv/string.h"
#include "zbasic/zevent.h"
#include "zbasic/zversion.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace {

constexpr int kConsoleFailed = 4711;

std::unique_ptr<ZelDynamicConsoleListener> g_listener;

[[noreturn]] void endByConsole() {
    ZelExitAppEvent("console").trigger();
    std::exit(1);
}

BOOL WINAPI onConsoleControl(DWORD event) {
    switch (event) {
        case CTRL_C_EVENT:
            std::fputs("[exception] Ctrl+C was pressed\n", stdout);
            return TRUE;
        case CTRL_BREAK_EVENT:
            std::fputs("[exception] Crtl+Break was pressed\n", stdout);  // sic
            return TRUE;
        case CTRL_CLOSE_EVENT:
            std::fputs("[exception] Close Event received\n", stdout);
            return TRUE;  // the system ends the process after a while of its own
        case CTRL_LOGOFF_EVENT:
            std::fputs("[exception] LogOff Event received\n", stdout);
            endByConsole();
        case CTRL_SHUTDOWN_EVENT:
            std::fputs("[exception] ShutDown Event received\n", stdout);
            endByConsole();
        default:
            endByConsole();
    }
}

void closeConsole() {
    g_listener.reset();
    ::SetConsoleCtrlHandler(onConsoleControl, FALSE);
    ::FreeConsole();
}

// The stream needs a descriptor before it can take that of a handle: a program without a
// console starts with none.
void attach(std::FILE* stream, DWORD standardHandle, const char* mode) {
    const auto handle = reinterpret_cast<std::intptr_t>(::GetStdHandle(standardHandle));
    const int descriptor = ::_open_osfhandle(handle, _O_TEXT);
    if (descriptor < 0) return;
    if (::_fileno(stream) >= 0 || std::freopen("NUL", mode, stream)) {
        ::_dup2(descriptor, ::_fileno(stream));
    }
    std::setvbuf(stream, nullptr, _IONBF, 0);
}

}  // namespace

void openDynamicConsole() {
    if (!::AllocConsole()) ::FatalAppExitA(kConsoleFailed, "AllocConsole failed");
    std::atexit(closeConsole);
    attach(stdin, STD_INPUT_HANDLE, "r");
    attach(stdout, STD_OUTPUT_HANDLE, "w");
    attach(stderr, STD_ERROR_HANDLE, "w");
    const SV::String title = "[Zelkit " + Zel_GetBuildVersionString() + "] - dynamic console";
    ::SetConsoleTitleA(title.c_str());
    ::SetConsoleCtrlHandler(onConsoleControl, TRUE);
    g_listener = std::make_unique<ZelDynamicConsoleListener>();
}
