// Starting other programs.

#pragma once

#include <cstdint>

#include "sv/string.h"
#include "zbasic/zexport.h"

namespace SV {
class Window;
}

// How the started program shows its first window: the codes of the system (`SW_...`), passed on
// as they are. Any other value may come by a cast.
enum ZelCmdShow : std::int32_t {
    kCmdHide = 0,
    kCmdShowNormal = 1,
    kCmdShowMinimized = 2,
    kCmdShowMaximized = 3,
};

// A command, its parameters and how to show it.
//
// Relied on by callers: a command that is one quoted text ("C:\a b\c.exe", with no other quote
// in it) loses its quotes.
class ZBASIC_API ZelBasicProcess {
public:
    // What is to be started is copied (or moved); a program that runs has no part in it.
    ZelBasicProcess(const ZelBasicProcess&);
    ZelBasicProcess(ZelBasicProcess&&) noexcept;
    ZelBasicProcess& operator=(const ZelBasicProcess&);
    ZelBasicProcess& operator=(ZelBasicProcess&&) noexcept;

protected:
    // Starts nothing yet.
    ZelBasicProcess(const SV::String& command, const SV::String& parameters, ZelCmdShow show);
    ~ZelBasicProcess();

    SV::String m_command;     // without outer quotes
    SV::String m_parameters;  // as given
    ZelCmdShow m_show;        // as given
};

// A program that is started with a command line and asked for its exit code.
//
// The command line is "command parameters", the command alone when there are no parameters, and
// what the environment variable COMSPEC says (the command interpreter) when the command is empty.
// Relied on by callers: without a command the parameters are not looked at.
//
// The command line may say where the output goes:
//     1>name  1>>name  1>"quoted name"    standard output, into a new file or appended
//     2>name  2>>name  2>"quoted name"    standard error likewise
// A clause begins at the first "1>" (or "2>") that has text behind it. An unquoted name ends at
// the next blank, a quoted one at the next quote, either at the end of the line; a quoted name
// may double its backslashes. Clauses never reach the program, whether or not redirection is on.
// Relied on by callers:
// - the operator is found inside any text ("x21>f", also in a quoted argument) and the name begins
//   right behind it: "2>&1" is a file named "&1", and "1> f" has no name;
// - a stream that is not redirected while the other one is has no handle at all in the program;
// - an unquoted path with blanks is tried piece by piece by the system ("C:\a.exe" for
//   "C:\a b.exe"), and only the first 32,766 bytes of a command line can be used.
//
// Threads: an object is used by one thread, whichever that is. Nothing throws but `std::bad_alloc`.
class ZBASIC_API ZelSynchronousProcess : public ZelBasicProcess {
public:
    // Starts nothing yet.
    ZelSynchronousProcess(const SV::String& command, const SV::String& parameters, ZelCmdShow show);
    ZelSynchronousProcess(const ZelSynchronousProcess&) = delete;
    ZelSynchronousProcess& operator=(const ZelSynchronousProcess&) = delete;
    virtual ~ZelSynchronousProcess();  // a program that runs goes on running

    // Starts the program in the current directory. False when one started by this object is still
    // under way, when there is no command line, or when the system cannot start it, whose last
    // error says why; redirect files are made and stay open even then. One that cannot be opened
    // does not keep the program from starting: its stream is then not redirected.
    // Without `showConsoleWindow` a console program gets no console.
    bool Execute(bool showConsoleWindow);

    // Waits for the end of the program for a second at most: the exit code, once, and -1 while it
    // is running and when there is none.
    // Relied on by callers: negative exit codes are 0x7FFFFFFF; exit code 259 never ends the wait.
    long Wait();

    long GetRetVal() const { return m_exitCode; }  // what `Wait` gave last; 0 before

    // Whether the output goes into the files that the command line names. Off at first.
    void SetUseRedirection(bool isUsed) { m_isRedirected = isUsed; }

private:
    std::int32_t m_state = -1;  // 0 while the program runs
    std::int32_t m_exitCode = 0;
    void* m_process;  // handles; INVALID_HANDLE_VALUE when there is none
    void* m_output;
    void* m_error;
    bool m_isRedirected = false;
};

// A file or command that the shell opens, and that nobody follows. Main thread only.
class ZBASIC_API ZelAsynchronousProcess : public ZelBasicProcess {
public:
    // Start nothing yet. A command alone has no parameters and is shown as `kCmdShowNormal`.
    explicit ZelAsynchronousProcess(const SV::String& command);
    ZelAsynchronousProcess(const SV::String& command, const SV::String& parameters,
                           ZelCmdShow show);

    // Opens the command as a double click does; false when the shell cannot. Variables ("%TEMP%")
    // are replaced, also in what happens to be a file's name. The shell's own messages belong to
    // `parent`, or to the application window when it is null.
    bool Execute(SV::Window* parent);

    // How often `Execute` was called in this process, successfully or not.
    static long GetExecuteCount();
};

// `argument` in quotes, as one argument of a command line.
//
// A program that splits its command line as the C run time does gets it back unchanged, whatever
// is in it; it holds no redirection clause either, even if the argument does ("1>x" becomes
// "1">"x" with quotes round it).
//
// With `forInterpreter` the line goes through the command interpreter first, which otherwise acts
// upon & | < > ^ ( ) % and quotes. Put all that it is to run into quotes, for it takes outer ones
// away: cmd /s /c ""C:\a b\program.exe" argument argument". What it reads a second time (arguments
// of batch files, "!" with delayed expansion) has no safe quoting. Made for code pages of one byte
// a character.
//
// Empty, which no quoted argument is, when it cannot be passed: NUL ends any command line, CR and
// LF end one of the interpreter.
ZBASIC_API SV::String Zel_QuoteArgument(const SV::String& argument, bool forInterpreter = false);
