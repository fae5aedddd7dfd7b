#include "user_break.h"

#include <atomic>

#include <windows.h>

namespace zelhost {

namespace {

std::atomic<bool> g_isWanted = false;
std::atomic<HWND> g_window = nullptr;

// On a thread of the system's.
BOOL WINAPI onControl(DWORD type) {
    const bool isBreak = type == CTRL_C_EVENT || type == CTRL_BREAK_EVENT;
    if (!isBreak || g_isWanted.exchange(true)) return FALSE;
    if (const HWND window = g_window) ::PostMessageA(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

void watchForBreak() { ::SetConsoleCtrlHandler(onControl, TRUE); }

bool isBreakWanted() { return g_isWanted; }

void closeOnBreak(const SV::Window* window) { g_window = window ? window->GetHandle() : nullptr; }

}  // namespace zelhost
