#include "callback.h"
#include "sv/control.h"

#include <windows.h>

namespace SV {

namespace {

// A window that cannot be used meanwhile.
class Disabled {
public:
    explicit Disabled(const Window* window) : m_handle(window ? window->GetHandle() : nullptr) {
        if (m_handle) ::EnableWindow(m_handle, FALSE);
    }
    Disabled(const Disabled&) = delete;
    Disabled& operator=(const Disabled&) = delete;
    ~Disabled() {
        if (m_handle) ::EnableWindow(m_handle, TRUE);
    }

private:
    const HWND m_handle;
};

}  // namespace

Dialog::Dialog(Window* owner, const ResId& id) : m_owner(owner) { createFromResource(owner, id); }

int Dialog::Execute() {
    m_result = 0;
    if (!m_handle) return kCancel;
    if (Application::IsModalDialogSuppression()) {
        Application::ModalDialogSuppressionLog(GetText());
        return kOk;
    }
    {
        const Disabled owner(m_owner);
        center();
        ::ShowWindow(m_handle, SW_SHOW);
        runLoop();
    }
    // Behind the owner: otherwise the system gives the focus to another program's window.
    Hide();
    return m_result ? m_result : kCancel;
}

void Dialog::center() {
    const HWND around = m_owner ? m_owner->GetHandle() : ::GetDesktopWindow();
    RECT outer = {}, own = {};
    ::GetWindowRect(around, &outer);
    ::GetWindowRect(m_handle, &own);
    ::SetWindowPos(m_handle, nullptr, (outer.left + outer.right - own.right + own.left) / 2,
                   (outer.top + outer.bottom - own.bottom + own.top) / 2, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
}

void Dialog::runLoop() {
    MSG message;
    while (m_handle && !m_result && ::GetMessageA(&message, nullptr, 0, 0) > 0) {
        finishMessage(message, ::IsDialogMessageA(m_handle, &message));
    }
    // The program is to end: its own loop has to see that, too.
    if (!m_result && message.message == WM_QUIT)
        ::PostQuitMessage(static_cast<int>(message.wParam));
}

void Dialog::end(int result) { m_result = result; }

std::intptr_t Dialog::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    const bool isButton = message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED;
    if (isButton && (LOWORD(wParam) == kOk || LOWORD(wParam) == kCancel)) {
        end(LOWORD(wParam));
        return 0;
    }
    if (message == WM_CLOSE) {
        end(kCancel);
        return 0;
    }
    return SystemWindow::handle(message, wParam, lParam);
}

}  // namespace SV
