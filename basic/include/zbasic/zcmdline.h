// The command line of the process.

#pragma once

#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"

// The layout of the web service's log, which is written by the host: this library only reads the
// option.
enum ZelWSLogFormat : std::int32_t {
    kWSLogFormatNormal = 0,
    kWSLogFormatLong = 1,
};

// Answers every question about the command line, for the library and its hosts.
//
// An argument behind the program path is an option when it begins with "-" or
// "/"; upper and lower case differ. Flags ("-trace") count when the whole option
// is the flag's name. Values stand directly behind the name, without a blank or
// "=": "-uAdmin", "-port8080". Unknown options are nobody's fault.
//
// Relied on by callers: everything but the flag accessors goes by the beginning
// of an option, and the first match on the line wins. With "-port80 -pSecret"
// the password is "ort80", and an empty name matches every option.
//
// Before `init` the command line is empty; `isFlag`, `getValue`, `getCount`,
// `getParam` and everything that reads values then report an internal fault and
// answer as for an empty line.
// Threads: `init` runs on the main thread before others read; then any may.
class ZBASIC_API ZelCmdline {
public:
    // The one of the process: there before `init`, empty.
    static ZelCmdline& Instance();

    ZelCmdline(const ZelCmdline&) = delete;
    ZelCmdline& operator=(const ZelCmdline&) = delete;

    // To be called once, at the start. `argv` is not copied: it must live as long
    // as the process. A program without a user (`withGUI` false) has all dialogs
    // and windows suppressed; the name of the dialogs' log file then is the value
    // of "log_no_dialogs", else of the option named `dialogLogOption`.
    // Relied on by callers: an empty dialogLogOption matches the first option.
    // Relied on by callers: a second call is reported as an internal fault. It
    // takes the new line and clears no flag; but without a user it does clear "x"
    // and sets the name of the log file anew, which otherwise stays.
    static void init(int argc, char** argv, bool withGUI, const SV::String& dialogLogOption);

    int getCount() const;              // of arguments, program path included
    SV::String getParam(int i) const;  // 0: the program path; empty when out of range

    // `name` is without the "-"; null matches nothing.
    bool isFlag(const char* name) const;          // is there such an option?
    SV::String getValue(const char* name) const;  // what follows it; else empty
    int getInt(const char* name) const;           // 0 when absent or no number
    long getLong(const char* name) const;
    double getDouble(const char* name) const;  // with "." whatever the locale

    // Flags, by the whole option.
    bool zelLogin() const;                        // -zellogin
    bool typeChecksInZelScript() const;           // -zelscript_typecheck
    bool releaseAssertionsEnabled() const;        // -assert
    bool isAutoKick() const;                      // -autokick
    bool dynamicConsole() const;                  // -console
    bool isTamosLibDocuGen() const;               // -libdox
    bool isExceptionHandlingDeactivated() const;  // -no_exception_handling
    bool modalDialogSuppression() const;          // -no_dialogs
    bool showWindowSuppression() const;           // -no_windows
    bool noGUI() const;                           // -no_gui
    bool noLoginScreen() const;                   // -no_login_screen
    bool noPrinterWarning() const;                // -no_printer_warning
    bool noDBBootLogin() const;                   // -nobootlogin
    bool profiling() const;                       // -profiling
    bool doTracing() const;                       // -trace
    bool trySingleSignOn() const;                 // -winlogin
    bool executeLoginDlgAnyway() const;           // -x; never without a user

    // Relied on by callers: false whatever the command line says.
    bool debugMemDelayFree() const;  // -debug_mem_delayfree
    bool debugMemHeapCheck() const;  // -debug_mem_heapcheck

    // Values, by the beginning of the option; empty or 0 when absent. Read without
    // an accessor: the value of "lang", and whether "plug_log" and
    // "getfulldomainname" are there.
    SV::String getLoginUserName() const;  // -u
    SV::String getLoginPassword() const;  // -p
    SV::String getLoginDBName() const;    // -d
    SV::String getLoginDBSystem() const;  // -s

    // Relied on by callers: only zwssrv.exe has one; empty in all other programs.
    SV::String getLoginSchemaVersion() const;  // -v

    // False, and `out` untouched, without such an option; `out` may become empty.
    bool getStartupZelScript(SV::String& out) const;  // -e

    // More values, by the beginning of the option; empty or 0 when absent.
    SV::String getFontFace() const;       // -f
    int getFontHeight() const;            // -h
    SV::String getTraceFilename() const;  // -trf
    SV::String getToolName() const;       // -toolname
    int getWSPortNumber() const;          // -port
    SV::String getPIDFileName() const;    // -pidfile
    SV::String getWSLogFileName() const;  // -wslogfile
    int getWSLogFileBackupCount() const;  // -wslogbackup; -1 when absent
    SV::String getPrinterName() const;    // -P
    SV::String getUICharSet() const;      // -charset; a number as a text

    // As `init` found them.
    ZelWSLogFormat getWSLogFormat() const;                           // -wslogformat: "long"
    const SV::String& getModalDialogSuppressionLogfileName() const;  // -log_no_dialogs

protected:
    ZelCmdline() = default;

    // The first part of `init`: takes the line and finds the flags.
    void _init(int argc, char** argv);

private:
    // The rest of the first option that begins with `name`; null when there is none.
    const char* find(const char* name) const;

    int m_argc = 0;
    char** m_argv = nullptr;  // not owned; null until `init`
};
