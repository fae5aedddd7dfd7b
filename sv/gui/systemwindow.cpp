#include "callback.h"
#include "sv/control.h"
#include "sv/systemfunction.h"

#include <windows.h>
#include <commctrl.h>

namespace SV {

// The system's way into `SystemWindow`, in front of the class's own procedure.
struct SystemWindowProc {
    static LRESULT CALLBACK onMessage(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const window =
            reinterpret_cast<SystemWindow*>(::GetWindowLongPtrA(handle, GWLP_USERDATA));
        return answerSystem([&] {
            if (message != WM_NCDESTROY) return window->handle(message, wParam, lParam);
            const std::intptr_t result = window->handleDefault(message, wParam, lParam);
            window->m_handle = nullptr;
            window->Closed();
            return result;
        });
    }
};

namespace {

INT_PTR CALLBACK passOver(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// Loaded when it is needed: the classes of spin buttons and such register themselves then.
void loadCommonControls() {
    static auto* const init =
        SystemFunction<decltype(::InitCommonControlsEx)>("comctl32.dll", "InitCommonControlsEx");
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_UPDOWN_CLASS};
    if (init) init(&classes);  // again and again harmlessly
}

void raise(long code, unsigned long detail) {
    if (Application* const application = GetpApp()) application->Exception(code, detail);
}

}  // namespace

SystemWindow::~SystemWindow() {
    if (!m_handle) return;
    ::SetWindowLongPtrA(m_handle, GWLP_WNDPROC, m_original);  // nothing may reach the object
    ::DestroyWindow(m_handle);
    m_handle = nullptr;
}

void SystemWindow::attach(HWND handle) {
    m_handle = handle;
    if (!handle) return;
    ::SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_original = ::SetWindowLongPtrA(handle, GWLP_WNDPROC,
                                     reinterpret_cast<LONG_PTR>(SystemWindowProc::onMessage));
}

void SystemWindow::createFromResource(const Window* parent, const ResId& id) {
    const auto* const resource = static_cast<const DLGTEMPLATE*>(Resource::FindDialog(id.number));
    if (!resource) return raise(Application::kResourceMissing, id.number);
    loadCommonControls();
    const HWND owner = parent ? parent->GetHandle() : nullptr;
    attach(::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), resource, owner, passOver, 0));
    if (!m_handle) raise(Application::kSystemObjectFailed, ::GetLastError());
}

std::intptr_t SystemWindow::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == WM_COMMAND) Notify(LOWORD(wParam), HIWORD(wParam));
    return handleDefault(message, wParam, lParam);
}

std::intptr_t SystemWindow::handleDefault(unsigned message, std::uintptr_t wParam,
                                          std::intptr_t lParam) {
    return ::CallWindowProcA(reinterpret_cast<WNDPROC>(m_original), m_handle, message, wParam,
                             lParam);
}

void SystemWindow::Notify(int, int) {}

}  // namespace SV
