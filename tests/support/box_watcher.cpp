#include "support/box_watcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
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

bool isErrorIcon(HWND window) {
    DWORD_PTR icon = 0;  // the system's icons are shared: equal handles
    ::SendMessageTimeoutA(window, STM_GETICON, 0, 0, SMTO_ABORTIFHUNG, 1000, &icon);
    return icon == reinterpret_cast<DWORD_PTR>(::LoadIconA(nullptr, IDI_ERROR));
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
        } else if (isShown && isErrorIcon(child)) {
            seen.hasErrorIcon = true;
        }
    }
    return seen;
}

}  // namespace

BoxWatcher::BoxWatcher(int answer) : BoxWatcher(answer, ::GetCurrentProcessId()) {}

BoxWatcher::BoxWatcher(int answer, unsigned long processId)
    : m_answer(answer), m_processId(processId), m_thread([this] { watch(); }) {}

BoxWatcher::~BoxWatcher() {
    m_isDone = true;
    m_thread.join();
}

std::vector<SeenBox> BoxWatcher::seen() const {
    const std::lock_guard lock(m_mutex);
    return m_seen;
}

std::vector<SeenBox> BoxWatcher::waitFor(std::size_t count) const {
    std::unique_lock lock(m_mutex);
    const bool isThere =
        m_changed.wait_for(lock, std::chrono::seconds(30), [&] { return m_seen.size() >= count; });
    EXPECT_TRUE(isThere) << "only " << m_seen.size() << " boxes came";
    std::vector<SeenBox> boxes = m_seen;
    boxes.resize(std::max(count, boxes.size()));
    return boxes;
}

void BoxWatcher::watch() {
    std::set<HWND> answered;
    while (!m_isDone) {
        HWND box = nullptr;
        while ((box = ::FindWindowExA(nullptr, box, "#32770", nullptr)) != nullptr) {
            DWORD process = 0;
            ::GetWindowThreadProcessId(box, &process);
            if (process != m_processId || !::IsWindowVisible(box)) continue;
            if (!answered.insert(box).second) continue;
            SeenBox seen = describe(box);
            {
                const std::lock_guard lock(m_mutex);
                m_seen.push_back(std::move(seen));
            }
            m_changed.notify_all();
            ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(m_answer), 0);
        }
        ::Sleep(20);  // there is no event to wait for: boxes belong to other code
    }
}
