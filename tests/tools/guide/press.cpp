// Chooses menu entries as a user of the keyboard does: press TITLE KEYS...
//
// KEYS are two letters, the one for the menu, pressed with Alt, and that for its entry. The window
// is waited for, and so are the menus, as a user sees one before going on: status 1 when something
// does not come.

#include <initializer_list>
#include <ranges>
#include <vector>

#include <windows.h>

namespace {

constexpr char kFrameClass[] = "SvMDIFrame";
constexpr int kPollMs = 10;
constexpr int kPolls = 3000;
constexpr int kPollsForMenu = 100;
constexpr int kTries = 10;

template <typename Condition>
bool waitFor(Condition condition, int polls = kPolls) {
    for (int i = 0; i < polls; ++i) {
        if (condition()) return true;
        ::Sleep(kPollMs);
    }
    return false;
}

HWND activeFrame(const char* title) {
    HWND frame = nullptr;
    const bool isActive = waitFor([&] {
        frame = ::FindWindowA(kFrameClass, title);
        return frame && ::IsWindowVisible(frame) && ::SetForegroundWindow(frame) &&
               ::GetForegroundWindow() == frame;
    });
    return isActive ? frame : nullptr;
}

bool isInMenu(HWND frame) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const DWORD thread = ::GetWindowThreadProcessId(frame, nullptr);
    return ::GetGUIThreadInfo(thread, &info) && info.flags & GUI_INMENUMODE;
}

void press(std::initializer_list<char> keys) {
    std::vector<INPUT> inputs;
    const auto add = [&](char key, DWORD flags) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = static_cast<WORD>(key);
        input.ki.dwFlags = flags;
        inputs.push_back(input);
    };
    for (const char key : keys) add(key, 0);
    for (const char key : keys | std::views::reverse) add(key, KEYEVENTF_KEYUP);
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

// On a busy machine Wine sometimes loses Alt with a letter, with programs of any kind; the user
// tries again.
bool openMenu(HWND frame, char key) {
    for (int i = 0; i < kTries; ++i) {
        press({VK_MENU, key});
        if (waitFor([&] { return isInMenu(frame); }, kPollsForMenu)) return true;
    }
    return false;
}

bool choose(HWND frame, const char* keys) {
    if (!openMenu(frame, keys[0])) return false;
    press({keys[1]});
    return waitFor([&] { return !isInMenu(frame); });
}

}  // namespace

int main(int argc, char** argv) {
    const HWND frame = argc < 3 ? nullptr : activeFrame(argv[1]);
    if (!frame) return 1;
    for (int i = 2; i < argc; ++i) {
        if (!choose(frame, argv[i])) return 1;
    }
    return 0;
}
