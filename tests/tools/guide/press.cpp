// Chooses menu entries as a user of the keyboard does: press TITLE KEYS...
//
// KEYS are two letters, the one for the menu, pressed with Alt, and that for its entry. The window
// is waited for; status 1 when it does not come.

#include <vector>

#include <windows.h>

namespace {

constexpr char kFrameClass[] = "SvMDIFrame";
constexpr int kPollMs = 50;
constexpr int kPolls = 1200;

HWND activeFrame(const char* title) {
    for (int i = 0; i < kPolls; ++i) {
        const HWND frame = ::FindWindowA(kFrameClass, title);
        if (frame && ::IsWindowVisible(frame) && ::SetForegroundWindow(frame) &&
            ::GetForegroundWindow() == frame) {
            return frame;
        }
        ::Sleep(kPollMs);
    }
    return nullptr;
}

void add(std::vector<INPUT>& inputs, int key, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.dwFlags = flags;
    inputs.push_back(input);
}

void choose(const char* keys) {
    std::vector<INPUT> inputs;
    add(inputs, VK_MENU, 0);
    add(inputs, keys[0], 0);
    add(inputs, keys[0], KEYEVENTF_KEYUP);
    add(inputs, VK_MENU, KEYEVENTF_KEYUP);
    add(inputs, keys[1], 0);
    add(inputs, keys[1], KEYEVENTF_KEYUP);
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || !activeFrame(argv[1])) return 1;
    for (int i = 2; i < argc; ++i) choose(argv[i]);
    return 0;
}
