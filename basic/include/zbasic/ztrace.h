// Trace output, debug output, assertions, internal-error reports and probes of memory.

#pragma once

#include <cstdint>
#include <cstdio>

#include "zbasic/zexport.h"

// Lets the compiler check arguments against a format as this library reads it.
#if defined(__GNUC__) && defined(_WIN32) && !defined(__clang__)
#define ZBASIC_PRINTF_LIKE __attribute__((format(gnu_printf, 1, 2)))
#elif defined(__GNUC__)
#define ZBASIC_PRINTF_LIKE __attribute__((format(printf, 1, 2)))
#else
#define ZBASIC_PRINTF_LIKE
#endif

// All of it is process-wide state without locks: set it up on the main thread.
// Boxes run on the calling thread and are task-modal. Nothing here throws (but for
// `std::bad_alloc` where a text is put together: debug output, boxes and dumps),
// ends the process (but for a debugger break without a debugger) or reports further.
// Texts may be of any length; a null text in a message shows as "(null)".

extern "C" {

// Whether trace lines are written; off at first. They go to standard output until told otherwise.
ZBASIC_API void Zel_EnableTracing(bool isEnabled);
ZBASIC_API bool Zel_IsTracingEnabled();

// Flushes the stream used so far and goes on in `stream`, which stays the
// caller's: reset it before closing it. Null stands for standard output.
ZBASIC_API void Zel_TraceSetHandle(std::FILE* stream);

// Puts "file [line]: " before the next trace line, and only before that. `file`
// is not copied; it must live until that line is written. While tracing is off
// the prefix stays pending.
ZBASIC_API void Zel_TraceSetSourceInfo(const char* file, int line);

// Writes one line in `printf`'s format (ISO C: "%zu", "%lld"), adds the line end
// and flushes. A null format does nothing, and the prefix stays pending.
ZBASIC_API void Zel_Trace(const char* format, ...) ZBASIC_PRINTF_LIKE;

// A counter kept for callers; trace lines are not indented by it.
ZBASIC_API void Zel_IncTraceCounter();
ZBASIC_API void Zel_DecTraceCounter();

// Writes `text` as it is to the debugger, if one is attached, and with the
// option "console" to standard error, converted to the OEM code page.
ZBASIC_API void ZelDebugOut(const char* text);

// Whether the host knows that the database connection is lost.
ZBASIC_API void Zel_SetDeadNet(bool isDead);
ZBASIC_API bool Zel_IsDeadNet();

// What `ZEL_ASSERT` calls: shows a box (unless modal dialogs are suppressed),
// writes a debug line and, if the environment variable ZEL_DUMP_ASSERTION
// exists, a minidump. True asks the caller to break into the debugger.
//
// Relied on by callers: a suppressed box leaves the debug line about a failed
// box behind, with error 0; and the answer is true for a cancelled box although
// the box has no such button, so it is false in practice.
ZBASIC_API bool ZEL_Assert_Fail(const char* file, unsigned line, const char* expression,
                                const char* message);

// Reports an internal fault to the user under an error code such as
// "logger-34 [1.8.0.230922]", which support looks up, and writes a minidump (also
// when the box is suppressed). The caller then goes on. `sourceFile` is a file
// name with a dot and three more letters: its last four characters are cut.
//
// Without an application object nothing happens. With a lost connection every
// fault counts as its consequence: `displayDeadNetworkMessage` is called instead.
// With the option "assert" the box offers to break into the debugger.
ZBASIC_API void displayErrorMessage(const char* sourceFile, unsigned line);

// Tells the user, once per process, that the connection is lost.
ZBASIC_API void displayDeadNetworkMessage();

// Tells a developer (with the option "assert"), once per process, that the
// program ends. While modal dialogs are suppressed it goes to their log file.
ZBASIC_API void displayExitMessage();

// Whether the `size` bytes at `p` may be read, or read and written. The memory is
// not touched, so that guard pages stay as they are; another thread may change
// the answer at any time. Null: false. No bytes at any other address: true.
ZBASIC_API bool Zel_MemoryIsReadable(const void* p, unsigned size);
ZBASIC_API bool Zel_MemoryIsWriteable(void* p, unsigned size);

// Whether a text with its NUL can be read at `p`.
// Relied on by callers: null counts as a valid text.
ZBASIC_API bool Zel_MemoryIsString(const char* p);

// What became of a minidump.
enum DumpEC : std::int32_t {
    kDumpWritten = 0,
    kDumpNoHelper = 1,   // the system's debug-help library cannot be used
    kDumpNoFile = 2,     // no file can be made in the directory for temporary files
    kDumpNotWritten = 3  // writing failed, the file is removed; or it was not our turn
};

// Writes a minidump of this process into the directory for temporary files. Its
// name says program, local time, source file and line, process id and a running
// number: "host_20240131_235959_zapp.cpp_17_4711_1.dmp". No dump ever replaces
// another. May be called by several threads: they wait for each other, a minute at
// most, and give up with `kDumpNotWritten`. So does at once a thread that fails
// while it writes a dump and is to write another one about that.
ZBASIC_API DumpEC Fct_CreateMiniDump(const char* file, unsigned long line);

}  // extern "C"

// Marks a place where a debugging build can hook in a check of the heap. Here it
// only writes two debug lines, and with the environment variable
// ZEL_NO_HEAPCHECK not even these. `reserved` is not looked at.
ZBASIC_API void Zel_DoHeapCheck(const char* file, long line, const char* reserved);

// ZEL_ASSERT(count > 0, "empty list"): an invariant of the caller's own code. Like
// `assert` it does nothing, and does not evaluate anything, where NDEBUG is defined.
#if defined(_WIN32)
#define ZBASIC_DEBUG_BREAK() __debugbreak()
#else
#define ZBASIC_DEBUG_BREAK() __builtin_trap()
#endif
#if defined(NDEBUG)
#define ZEL_ASSERT(expression, message) static_cast<void>(0)
#else
#define ZEL_ASSERT(expression, message)                                         \
    ((expression) || !ZEL_Assert_Fail(__FILE__, __LINE__, #expression, message) \
         ? static_cast<void>(0)                                                 \
         : ZBASIC_DEBUG_BREAK())
#endif
