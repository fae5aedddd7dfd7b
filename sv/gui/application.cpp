#include "sv/application.h"

#include <cstdio>
#include <cstdlib>

#include "callback.h"
#include "sv/window.h"

#include <windows.h>

namespace SV {

namespace {

Application* g_application = nullptr;
Window* g_appWindow = nullptr;
bool g_isDialogSuppressed = false;
bool g_isShowSuppressed = false;

String& logFileName() {
    static String name;
    return name;
}

// Keys that belong to the MDI machinery (next window, close window) go there first.
bool isForChildWindows(MSG& message) {
    const auto* const frame = dynamic_cast<MDIFrame*>(g_appWindow);
    return frame && ::TranslateMDISysAccel(frame->GetClient(), &message);
}

}  // namespace

Application::Application() { g_application = this; }

Application::~Application() {
    if (g_application == this) g_application = nullptr;
}

bool Application::QueryExit() { return true; }
void Application::SysChange(SysChangeType) {}
void Application::AppEvent(long) {}
void Application::UserEvent(unsigned long, void*) {}
bool Application::ActivateExtHelp() { return m_help && m_help->Show(); }
void Application::DeactivateExtHelp() {}
void Application::Main(int, char**) {}

bool Application::Exception(long, unsigned long) { std::exit(EXIT_FAILURE); }

void Application::Execute() {
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        finishMessage(message, isForChildWindows(message));
    }
}

void Application::Quit() { ::PostQuitMessage(0); }

void Application::Reschedule() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            Quit();  // seen too early: `Execute` has to see it, too
            return;
        }
        finishMessage(message, isForChildWindows(message));
    }
}

Window* Application::GetAppWindow() { return g_appWindow; }

void Application::SetAppWindow(Window* window) { g_appWindow = window; }

void Application::Wait(bool isBusy) {
    if (m_isBusy == isBusy) return;
    m_isBusy = isBusy;
    ::SetCursor(::LoadCursor(nullptr, isBusy ? IDC_WAIT : IDC_ARROW));
}

void Application::SetModalDialogSuppression(bool isSuppressed) {
    g_isDialogSuppressed = isSuppressed;
}

bool Application::IsModalDialogSuppression() { return g_isDialogSuppressed; }

void Application::SetModalDialogSuppressionLogfileName(const String& fileName) {
    logFileName() = fileName;
}

const String& Application::GetModalDialogSuppressionLogfileName() { return logFileName(); }

void Application::ModalDialogSuppressionLog(const String& text) {
    if (logFileName().empty()) return;
    std::FILE* const file = std::fopen(logFileName().c_str(), "atN");
    if (!file) return;
    std::fprintf(file, "%s\n", text.c_str());
    std::fclose(file);
}

void Application::SetShowWindowSuppression(bool isSuppressed) { g_isShowSuppressed = isSuppressed; }

bool Application::IsShowWindowSuppression() { return g_isShowSuppressed; }

bool MDIApplication::IsUserDefPaintMDIClient() { return false; }

void MDIApplication::PaintMDIClient(HWND) {}

Application* GetpApp() { return g_application; }

int ShowMessageBox(Window* owner, const String& text, const String& caption, unsigned int style) {
    Application* const application = GetpApp();
    const bool wasBusy = application && application->IsWait();
    if (wasBusy) application->Wait(false);
    const HWND ownerHandle = owner ? owner->GetHandle() : nullptr;
    const int answer = ::MessageBoxA(ownerHandle, text.c_str(), caption.c_str(), style);
    const DWORD error = ::GetLastError();
    if (wasBusy) application->Wait(true);
    ::SetLastError(error);  // callers report why the box could not be shown
    return answer;
}

}  // namespace SV
