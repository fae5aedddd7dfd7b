#include "support/box_watcher.h"

#include <set>
#include <string_view>

#include <windows.h>

namespace {

constexpr int kTextControl = 65535;

std::string textOf(HWND window) {
    char text[8192] = "";
    ::SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text),
                          SMTO_ABORTIFHUNG, 1000, nullptr);
    return text;
}

SeenBox describe(HWND box) {
    SeenBox seen;
    seen.caption = textOf(box);
    for (HWND child = ::GetWindow(box, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        char className[32] = "";
        ::GetClassNameA(child, className, sizeof className);
        const bool isShown = (::GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) != 0;
        if (::GetDlgCtrlID(child) == kTextControl) {
            seen.text = textOf(child);
        } else if (isShown && std::string_view(className) == "Button") {
            seen.buttons.push_back(textOf(child));
        }
    }
    return seen;
}

}  // namespace

BoxWatcher::BoxWatcher(int answer) : m_answer(answer), m_thread([this] { watch(); }) {}

BoxWatcher::~BoxWatcher() {
    m_isDone = true;
    m_thread.join();
}

std::vector<SeenBox> BoxWatcher::seen() const {
    const std::lock_guard lock(m_mutex);
    return m_seen;
}

void BoxWatcher::watch() {
    std::set<HWND> answered;
    while (!m_isDone) {
        HWND box = nullptr;
        while ((box = ::FindWindowExA(nullptr, box, "#32770", nullptr)) != nullptr) {
            DWORD process = 0;
            ::GetWindowThreadProcessId(box, &process);
            if (process != ::GetCurrentProcessId() || !::IsWindowVisible(box)) continue;
            if (!answered.insert(box).second) continue;
            SeenBox seen = describe(box);
            {
                const std::lock_guard lock(m_mutex);
                m_seen.push_back(std::move(seen));
            }
            ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(m_answer), 0);
        }
        ::Sleep(20);  // there is no event to wait for: boxes belong to other code
    }
}
