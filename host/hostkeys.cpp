#include "hostkeys.h"

#include "hostframe.h"

#include <windows.h>

namespace zelhost {

namespace {

struct Key {
    std::uintptr_t code;
    bool withControl;
    HostFrame::CommandId command;
};

// The menus name them, see texts/.
constexpr Key kKeys[] = {
    {'O', true, HostFrame::kOpen},        {'E', true, HostFrame::kExport},
    {'D', true, HostFrame::kFilter},      {VK_F1, false, HostFrame::kAbout},
    {VK_ESCAPE, false, HostFrame::kStop},
};

bool isPressed(int key) { return ::GetKeyState(key) < 0; }

}  // namespace

bool carryOutKey(const SV::Window& window, std::uintptr_t wParam) {
    if (isPressed(VK_SHIFT) || isPressed(VK_MENU)) return false;
    for (const auto& [code, withControl, command] : kKeys) {
        if (code != wParam || withControl != isPressed(VK_CONTROL)) continue;
        MSG letter;  // that the system has made of it: a text field would beep
        ::PeekMessageA(&letter, window.GetHandle(), WM_CHAR, WM_CHAR, PM_REMOVE);
        ::PostMessageA(::GetAncestor(window.GetHandle(), GA_ROOT), WM_COMMAND,
                       static_cast<WPARAM>(command), 0);
        return true;
    }
    return false;
}

}  // namespace zelhost
