#include "zbasic/zcmdline.h"

#include <cstring>
#include <string_view>

#include "diag/settings.h"
#include "zbasic/ztrace.h"

namespace {

constexpr char kSource[] = "zcmdline.cpp";
constexpr unsigned kSecondInit = 109;
constexpr unsigned kGetCountBeforeInit = 179;
constexpr unsigned kGetParamBeforeInit = 188;
constexpr unsigned kIsFlagBeforeInit = 201;
constexpr unsigned kGetValueBeforeInit = 228;

constexpr std::string_view kSchemaVersionProgram = "zwssrv.exe";

struct Flags {
    bool zelLogin, zelScriptTypeCheck, assertions, autoKick, console, debugMemDelayFree,
        debugMemHeapCheck, libDox, noExceptionHandling, noDialogs, noWindows, noGui, noLoginScreen,
        noPrinterWarning, noBootLogin, profiling, trace, winLogin, loginDialogAnyway;
};

struct FlagOption {
    std::string_view name;
    bool Flags::*flag;
};

constexpr FlagOption kFlagOptions[] = {
    {"zellogin", &Flags::zelLogin},
    {"zelscript_typecheck", &Flags::zelScriptTypeCheck},
    {"assert", &Flags::assertions},
    {"autokick", &Flags::autoKick},
    {"console", &Flags::console},
    {"debug_mem_delayfree", &Flags::debugMemDelayFree},
    {"debug_mem_heapcheck", &Flags::debugMemHeapCheck},
    {"libdox", &Flags::libDox},
    {"no_exception_handling", &Flags::noExceptionHandling},
    {"no_dialogs", &Flags::noDialogs},
    {"no_windows", &Flags::noWindows},
    {"no_gui", &Flags::noGui},
    {"no_login_screen", &Flags::noLoginScreen},
    {"no_printer_warning", &Flags::noPrinterWarning},
    {"nobootlogin", &Flags::noBootLogin},
    {"profiling", &Flags::profiling},
    {"trace", &Flags::trace},
    {"winlogin", &Flags::winLogin},
    {"x", &Flags::loginDialogAnyway},
};

Flags g_flags = {};
SV::String g_dialogLogName;
ZelWSLogFormat g_wsLogFormat = kWSLogFormatNormal;

// What stands behind the "-" or "/"; null for an argument that is no option.
const char* optionText(const char* argument) {
    return argument && (*argument == '-' || *argument == '/') ? argument + 1 : nullptr;
}

void setFlag(std::string_view option) {
    for (const auto& [name, flag] : kFlagOptions) {
        if (option != name) continue;
        g_flags.*flag = true;
        return;
    }
}

void setFlagsForNoUser() {
    g_flags.noDialogs = true;
    g_flags.noWindows = true;
    g_flags.noGui = true;
    g_flags.noLoginScreen = true;
    g_flags.noPrinterWarning = true;
    g_flags.loginDialogAnyway = false;
}

}  // namespace

ZelCmdline& ZelCmdline::Instance() {
    static ZelCmdline instance;
    return instance;
}

void ZelCmdline::init(int argc, char** argv, bool withGUI, const SV::String& dialogLogOption) {
    ZelCmdline& line = Instance();
    line._init(argc, argv);
    if (!withGUI) {
        setFlagsForNoUser();
        g_dialogLogName = line.getValue("log_no_dialogs");
        // Relied on by callers: an empty dialogLogOption matches the first option.
        if (g_dialogLogName.empty()) g_dialogLogName = line.getValue(dialogLogOption.c_str());
    }
    const bool isLong = line.getValue("wslogformat") == "long";
    g_wsLogFormat = isLong ? kWSLogFormatLong : kWSLogFormatNormal;
}

void ZelCmdline::_init(int argc, char** argv) {
    if (m_argv) displayErrorMessage(kSource, kSecondInit);
    m_argc = argc;
    m_argv = argv;
    if (!m_argv) return;
    for (int i = 1; i < m_argc; ++i) {
        if (const char* const option = optionText(m_argv[i])) setFlag(option);
    }
    g_diagSettings = {g_flags.console, g_flags.assertions};
}

int ZelCmdline::getCount() const {
    if (!m_argv) {
        displayErrorMessage(kSource, kGetCountBeforeInit);
        return 0;
    }
    return m_argc;
}

SV::String ZelCmdline::getParam(int i) const {
    if (!m_argv) {
        displayErrorMessage(kSource, kGetParamBeforeInit);
        return {};
    }
    return i >= 0 && i < m_argc ? SV::String(m_argv[i]) : SV::String();
}

const char* ZelCmdline::find(const char* name) const {
    if (!m_argv || !name) return nullptr;
    const std::size_t length = std::strlen(name);
    for (int i = 1; i < m_argc; ++i) {
        const char* const option = optionText(m_argv[i]);
        // Relied on by callers: everything but the flag accessors goes by the beginning.
        if (option && std::strncmp(option, name, length) == 0) return option + length;
    }
    return nullptr;
}

bool ZelCmdline::isFlag(const char* name) const {
    if (!m_argv) displayErrorMessage(kSource, kIsFlagBeforeInit);
    return find(name) != nullptr;
}

SV::String ZelCmdline::getValue(const char* name) const {
    if (!m_argv) displayErrorMessage(kSource, kGetValueBeforeInit);
    return SV::String(find(name));
}

int ZelCmdline::getInt(const char* name) const { return SV::h_atoi(getValue(name)); }

long ZelCmdline::getLong(const char* name) const { return SV::h_atol(getValue(name)); }

double ZelCmdline::getDouble(const char* name) const { return static_cast<double>(getValue(name)); }

bool ZelCmdline::zelLogin() const { return g_flags.zelLogin; }
bool ZelCmdline::typeChecksInZelScript() const { return g_flags.zelScriptTypeCheck; }
bool ZelCmdline::releaseAssertionsEnabled() const { return g_flags.assertions; }
bool ZelCmdline::isAutoKick() const { return g_flags.autoKick; }
bool ZelCmdline::dynamicConsole() const { return g_flags.console; }
bool ZelCmdline::isTamosLibDocuGen() const { return g_flags.libDox; }
bool ZelCmdline::isExceptionHandlingDeactivated() const { return g_flags.noExceptionHandling; }
bool ZelCmdline::modalDialogSuppression() const { return g_flags.noDialogs; }
bool ZelCmdline::showWindowSuppression() const { return g_flags.noWindows; }
bool ZelCmdline::noGUI() const { return g_flags.noGui; }
bool ZelCmdline::noLoginScreen() const { return g_flags.noLoginScreen; }
bool ZelCmdline::noPrinterWarning() const { return g_flags.noPrinterWarning; }
bool ZelCmdline::noDBBootLogin() const { return g_flags.noBootLogin; }
bool ZelCmdline::profiling() const { return g_flags.profiling; }
bool ZelCmdline::doTracing() const { return g_flags.trace; }
bool ZelCmdline::trySingleSignOn() const { return g_flags.winLogin; }
bool ZelCmdline::executeLoginDlgAnyway() const { return g_flags.loginDialogAnyway; }

// Relied on by callers: false whatever the command line says.
bool ZelCmdline::debugMemDelayFree() const { return false; }
bool ZelCmdline::debugMemHeapCheck() const { return false; }

SV::String ZelCmdline::getLoginUserName() const { return getValue("u"); }
SV::String ZelCmdline::getLoginPassword() const { return getValue("p"); }
SV::String ZelCmdline::getLoginDBName() const { return getValue("d"); }
SV::String ZelCmdline::getLoginDBSystem() const { return getValue("s"); }

SV::String ZelCmdline::getLoginSchemaVersion() const {
    const SV::String program = getParam(0);
    const std::size_t nameStart = std::string_view(program).find_last_of("\\/:") + 1;
    // Relied on by callers: only zwssrv.exe has one.
    if (program.substr(nameStart).Lower() != kSchemaVersionProgram) return {};
    return getValue("v");
}

bool ZelCmdline::getStartupZelScript(SV::String& out) const {
    if (!isFlag("e")) return false;
    out = getValue("e");
    return true;
}

SV::String ZelCmdline::getFontFace() const { return getValue("f"); }
int ZelCmdline::getFontHeight() const { return getInt("h"); }
SV::String ZelCmdline::getTraceFilename() const { return getValue("trf"); }
SV::String ZelCmdline::getToolName() const { return getValue("toolname"); }
int ZelCmdline::getWSPortNumber() const { return getInt("port"); }
SV::String ZelCmdline::getPIDFileName() const { return getValue("pidfile"); }
SV::String ZelCmdline::getWSLogFileName() const { return getValue("wslogfile"); }

int ZelCmdline::getWSLogFileBackupCount() const {
    return isFlag("wslogbackup") ? getInt("wslogbackup") : -1;
}

SV::String ZelCmdline::getPrinterName() const { return getValue("P"); }
SV::String ZelCmdline::getUICharSet() const { return getValue("charset"); }

ZelWSLogFormat ZelCmdline::getWSLogFormat() const { return g_wsLogFormat; }

const SV::String& ZelCmdline::getModalDialogSuppressionLogfileName() const {
    return g_dialogLogName;
}
