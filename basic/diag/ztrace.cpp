#include "zbasic/ztrace.h"

#include <cstdarg>
#include <string>

#include "diag/format.h"
#include "diag/settings.h"

#include <windows.h>

namespace {

bool g_isTracing = false;
std::FILE* g_traceStream = nullptr;  // null: standard output; not owned
const char* g_pendingFile = nullptr;
int g_pendingLine = 0;
long g_traceCounter = 0;
bool g_isDeadNet = false;

void writeToConsole(const char* text) {
    std::string oem(text);
    // With its NUL, which `std::string` keeps behind the text.
    ::CharToOemBuffA(text, oem.data(), static_cast<DWORD>(oem.size() + 1));
    std::fputs(oem.c_str(), stderr);
    std::fflush(stderr);  // not every run time writes at once, and a crash may follow
}

}  // namespace

void Zel_EnableTracing(bool isEnabled) { g_isTracing = isEnabled; }

bool Zel_IsTracingEnabled() { return g_isTracing; }

void Zel_TraceSetHandle(std::FILE* stream) {
    if (g_traceStream) std::fflush(g_traceStream);
    g_traceStream = stream;
}

void Zel_TraceSetSourceInfo(const char* file, int line) {
    g_pendingFile = file;
    g_pendingLine = line;
}

void Zel_Trace(const char* format, ...) {
    if (!g_isTracing || !format) return;
    std::FILE* const stream = g_traceStream ? g_traceStream : stdout;
    if (g_pendingFile) {
        std::fprintf(stream, "%s [%d]: ", g_pendingFile, g_pendingLine);
        g_pendingFile = nullptr;
        g_pendingLine = 0;
    }
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stream, format, arguments);
    va_end(arguments);
    std::fputc('\n', stream);
    std::fflush(stream);
}

void Zel_IncTraceCounter() { ++g_traceCounter; }

void Zel_DecTraceCounter() { --g_traceCounter; }

void ZelDebugOut(const char* text) {
    if (!text) return;
    if (::IsDebuggerPresent()) ::OutputDebugStringA(text);
    if (g_diagSettings.dynamicConsole) writeToConsole(text);
}

void Zel_SetDeadNet(bool isDead) { g_isDeadNet = isDead; }

bool Zel_IsDeadNet() { return g_isDeadNet; }

void Zel_DoHeapCheck(const char* file, long line, const char* /*reserved*/) {
    if (::GetEnvironmentVariableA("ZEL_NO_HEAPCHECK", nullptr, 0) != 0) return;
    ZelDebugOut(
        formatted("[debug] Performing HeapCheck %s (%lu)", file, static_cast<unsigned long>(line))
            .c_str());
    ZelDebugOut(" - done\n");
}
