#include "zbasic/zprocess.h"

#include <string>
#include <string_view>
#include <utility>

#include "diag/format.h"
#include "diag/winowner.h"
#include "sv/application.h"
#include "sv/systemfunction.h"
#include "sv/window.h"
#include "sys/environment.h"
#include "sys/redirection.h"
#include "zbasic/ztrace.h"

#include <windows.h>

#include <shellapi.h>

namespace {

constexpr DWORD kMostWaitMs = 1000;
constexpr long kNoExitCode = -1;
constexpr std::int32_t kIdle = -1;
constexpr std::int32_t kRunning = 0;
constexpr std::int32_t kNegativeExitCode = 0x7FFFFFFF;
constexpr std::size_t kLongestCommandLine = 32766;  // CreateProcess wants it below 32,768 with NUL

long g_executeCount = 0;

SV::String withoutOuterQuotes(const SV::String& command) {
    const std::string_view text = command;
    const bool isQuoted =
        text.size() >= 2 && text.front() == '"' && text.find('"', 1) == text.size() - 1;
    return isQuoted ? command.substr(1, text.size() - 2) : command;
}

void replaceHandle(void*& slot, void* handle = INVALID_HANDLE_VALUE) {
    WinFile(std::exchange(slot, handle));
}

void* openTarget(const RedirectTarget& target) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    return ::CreateFileA(target.name.c_str(), target.isAppended ? FILE_APPEND_DATA : GENERIC_WRITE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                         target.isAppended ? OPEN_ALWAYS : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                         nullptr);
}

// The program has its own handle of the file now: the next one that is started gets none of it.
void keepToUs(void* target) {
    if (target != INVALID_HANDLE_VALUE) ::SetHandleInformation(target, HANDLE_FLAG_INHERIT, 0);
}

// Relied on by callers: without a command the parameters are not looked at.
SV::String commandLineOf(const SV::String& command, const SV::String& parameters) {
    if (command.empty()) return environmentText("COMSPEC").value_or(SV::String());
    return parameters.empty() ? command : command + " " + parameters;
}

// Relied on by callers: a stream that is not redirected while the other one is gets no handle.
STARTUPINFOA startupOf(ZelCmdShow show, HANDLE output, HANDLE error) {
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(show);
    if (output != INVALID_HANDLE_VALUE) startup.hStdOutput = output;
    if (error != INVALID_HANDLE_VALUE) startup.hStdError = error;
    if (startup.hStdOutput || startup.hStdError) startup.dwFlags |= STARTF_USESTDHANDLES;
    return startup;
}

}  // namespace

ZelBasicProcess::ZelBasicProcess(const SV::String& command, const SV::String& parameters,
                                 ZelCmdShow show)
    : m_command(withoutOuterQuotes(command)), m_parameters(parameters), m_show(show) {}

ZelBasicProcess::ZelBasicProcess(const ZelBasicProcess&) = default;
ZelBasicProcess::ZelBasicProcess(ZelBasicProcess&&) noexcept = default;
ZelBasicProcess& ZelBasicProcess::operator=(const ZelBasicProcess&) = default;
ZelBasicProcess& ZelBasicProcess::operator=(ZelBasicProcess&&) noexcept = default;
ZelBasicProcess::~ZelBasicProcess() = default;

ZelSynchronousProcess::ZelSynchronousProcess(const SV::String& command,
                                             const SV::String& parameters, ZelCmdShow show)
    : ZelBasicProcess(command, parameters, show),
      m_process(INVALID_HANDLE_VALUE),
      m_output(INVALID_HANDLE_VALUE),
      m_error(INVALID_HANDLE_VALUE) {}

ZelSynchronousProcess::~ZelSynchronousProcess() {
    for (void** const slot : {&m_process, &m_output, &m_error}) replaceHandle(*slot);
}

bool ZelSynchronousProcess::Execute(bool showConsoleWindow) {
    if (m_state != kIdle) return false;
    const SV::String whole = commandLineOf(m_command, m_parameters);
    if (whole.empty()) return false;
    SplitCommandLine line = splitRedirections(whole);
    if (m_isRedirected) {
        if (!line.output.name.empty()) replaceHandle(m_output, openTarget(line.output));
        if (!line.error.name.empty()) replaceHandle(m_error, openTarget(line.error));
    }
    STARTUPINFOA startup = startupOf(m_show, m_output, m_error);
    ZelDebugOut(formatted("[zproc] Synchronous exec: %s\n", line.command.c_str()).c_str());
    if (line.command.size() > kLongestCommandLine) {
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);  // as the system does for one that is longer
        return false;
    }
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(nullptr, line.command.data(), nullptr, nullptr, TRUE,
                          showConsoleWindow ? 0 : CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                          &process)) {
        return false;
    }
    keepToUs(m_output);
    keepToUs(m_error);
    ::CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_state = kRunning;
    return true;
}

long ZelSynchronousProcess::Wait() {
    if (m_state == kIdle) return kNoExitCode;
    if (::WaitForSingleObject(m_process, kMostWaitMs) != WAIT_OBJECT_0) return kNoExitCode;
    DWORD code = STILL_ACTIVE;
    // Relied on by callers: exit code 259 never ends the wait.
    if (!::GetExitCodeProcess(m_process, &code) || code == STILL_ACTIVE) return kNoExitCode;
    for (void** const slot : {&m_process, &m_output, &m_error}) replaceHandle(*slot);
    m_state = kIdle;
    m_exitCode = static_cast<std::int32_t>(code);
    // Relied on by callers: so that -1 always means that the program is running.
    if (m_exitCode < 0) m_exitCode = kNegativeExitCode;
    return m_exitCode;
}

ZelAsynchronousProcess::ZelAsynchronousProcess(const SV::String& command)
    : ZelAsynchronousProcess(command, SV::String(), kCmdShowNormal) {}

ZelAsynchronousProcess::ZelAsynchronousProcess(const SV::String& command,
                                               const SV::String& parameters, ZelCmdShow show)
    : ZelBasicProcess(command, parameters, show) {}

bool ZelAsynchronousProcess::Execute(SV::Window* parent) {
    ++g_executeCount;
    static auto* const execute =
        SV::SystemFunction<decltype(::ShellExecuteExA)>("shell32.dll", "ShellExecuteExA");
    const SV::Window* const window = parent ? parent : SV::Application::GetAppWindow();
    SHELLEXECUTEINFOA what = {};
    what.cbSize = sizeof what;
    what.fMask = SEE_MASK_FLAG_DDEWAIT | SEE_MASK_DOENVSUBST;
    what.hwnd = window ? window->GetHandle() : nullptr;
    what.lpVerb = "open";
    what.lpFile = m_command.c_str();
    what.lpParameters = m_parameters.empty() ? nullptr : m_parameters.c_str();
    what.nShow = m_show;
    ZelDebugOut(
        formatted("[zproc] Asynchronous exec: %s %s\n", m_command.c_str(), m_parameters.c_str())
            .c_str());
    return execute && execute(&what);
}

long ZelAsynchronousProcess::GetExecuteCount() { return g_executeCount; }
