// What the user is told when something fails.

#include <utility>

#include "diag/format.h"
#include "diag/librarytext.h"
#include "diag/settings.h"
#include "diag/versiontext.h"
#include "sv/application.h"
#include "sv/window.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr std::uint32_t kInternalErrorText = 11134;
constexpr std::uint32_t kLostConnectionText = 3352;
constexpr char kNoWindowCaption[] = "Unexpected program failure";
constexpr char kDebugHint[] = "\n\n Press Cancel to debug!";     // sic
constexpr char kExitDebugHint[] = "\n\nPress Cancel to debug.";  // sic
constexpr std::size_t kExtensionSize = 4;                        // ".cxx"
constexpr UINT kStyle = MB_ICONERROR | MB_TASKMODAL | MB_TOPMOST;

bool g_wasDeadNetworkShown = false;
bool g_wasExitShown = false;

// The answer of a box about a failure.
int showFailure(const SV::String& text, UINT buttons) {
    const SV::Window* const window = SV::Application::GetAppWindow();
    const SV::String caption = window ? window->GetText() : SV::String(kNoWindowCaption);
    return SV::ShowMessageBox(nullptr, text, caption, kStyle | buttons);
}

// With release assertions the box offers to debug. True: the user wants to.
bool showAndAskToDebug(const SV::String& text) {
    if (g_diagSettings.releaseAssertions) {
        return showFailure(text + kDebugHint, MB_OKCANCEL) == IDCANCEL;
    }
    showFailure(text, MB_OK);
    return false;
}

// Whatever fails while a box is open leads to no second one; one without memory is still to come.
template <class Show>
void showOnce(bool& wasShown, Show show) {
    if (std::exchange(wasShown, true)) return;
    try {
        show();
    } catch (...) {
        wasShown = false;
        throw;
    }
}

// "logger-34 [1.8.0.230922]" for line 34 of Logger.cxx.
SV::String errorCode(const char* sourceFile, unsigned line) {
    const SV::String name(sourceFile);
    const std::size_t size = name.size() > kExtensionSize ? name.size() - kExtensionSize : 0;
    return formatted("%s-%u [%s]", name.substr(0, size).Lower().c_str(), line,
                     patchBuildVersionText(kVersion).c_str());
}

SV::String internalErrorText(const SV::String& code) {
    SV::String text = libraryText(kInternalErrorText);
    const std::size_t place = text.find("%s");
    if (place != SV::String::npos) text.replace(place, 2, code);
    return text;
}

// Leaves the busy state, so that the user has a normal pointer over the box, and restores it.
class WaitPause {
public:
    explicit WaitPause(SV::Application& application)
        : m_application(application), m_wasBusy(application.IsWait()) {
        if (m_wasBusy) m_application.Wait(false);
    }
    WaitPause(const WaitPause&) = delete;
    WaitPause& operator=(const WaitPause&) = delete;
    ~WaitPause() {
        if (m_wasBusy) m_application.Wait(true);
    }

private:
    SV::Application& m_application;
    const bool m_wasBusy;
};

void reportInternalError(SV::Application& application, const char* sourceFile, unsigned line) {
    const SV::String code = errorCode(sourceFile, line);
    const SV::String text = internalErrorText(code);
    SV::Window* const window = SV::Application::GetAppWindow();
    const WaitPause pause(application);
    ZelDebugOut(formatted("[dEM] %s (%u): %s\n", sourceFile, line, code.c_str()).c_str());
    const bool wantsDebugger =
        !SV::Application::IsModalDialogSuppression() && showAndAskToDebug(text);
    Fct_CreateMiniDump(sourceFile, line);
    if (wantsDebugger) ::DebugBreak();
    // The box handles messages: the window may be gone.
    if (window && window == SV::Application::GetAppWindow()) window->BringToFront();
}

bool isThere(const char* environmentVariable) {
    return ::GetEnvironmentVariableA(environmentVariable, nullptr, 0) != 0;
}

}  // namespace

bool ZEL_Assert_Fail(const char* file, unsigned line, const char* expression, const char* message) {
    const SV::String text = formatted(
        "Assertion failed!\nFile %s line %d:\n\nExpression: '%s'\n\nUser message:\n  '%s'\n", file,
        static_cast<int>(line), expression, message);
    int answer = 0;
    DWORD error = 0;
    if (!SV::Application::IsModalDialogSuppression()) {
        // Not by way of SV: the error code is that of the box itself.
        answer = ::MessageBoxA(nullptr, text.c_str(), "Assertion failed", kStyle | MB_OK);
        error = ::GetLastError();
    }
    ZelDebugOut(formatted("[assertion] %s (%u): %s\n", file, line, expression).c_str());
    // Relied on by callers: a suppressed box leaves this line behind as well.
    if (answer == 0) {
        ZelDebugOut(formatted("            MessageBox errorcode: %lu\n", error).c_str());
    }
    if (isThere("ZEL_DUMP_ASSERTION")) Fct_CreateMiniDump(file, line);
    return answer == IDCANCEL;  // Relied on by callers: although the box has no such button.
}

void displayErrorMessage(const char* sourceFile, unsigned line) {
    SV::Application* const application = SV::GetpApp();
    if (!application) return;
    if (Zel_IsDeadNet()) {
        displayDeadNetworkMessage();
        return;
    }
    reportInternalError(*application, sourceFile, line);
}

void displayDeadNetworkMessage() {
    showOnce(g_wasDeadNetworkShown, [] {
        const SV::String text = libraryText(kLostConnectionText);
        if (SV::Application::IsModalDialogSuppression()) {
            SV::Application::ModalDialogSuppressionLog("displayDeadNetworkMessage()\n" + text);
            return;
        }
        if (showAndAskToDebug(text)) ::DebugBreak();
    });
}

void displayExitMessage() {
    showOnce(g_wasExitShown, [] {
        const SV::String text = "--- E X I T ---";
        if (SV::Application::IsModalDialogSuppression()) {
            SV::Application::ModalDialogSuppressionLog(text);
            return;
        }
        if (!g_diagSettings.releaseAssertions) return;
        if (showFailure(text + kExitDebugHint, MB_OKCANCEL) == IDCANCEL) ::DebugBreak();
    });
}
