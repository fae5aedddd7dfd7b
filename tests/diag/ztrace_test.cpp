#include "zbasic/ztrace.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "sv/application.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zcmdline.h"

#include <windows.h>

namespace {

constexpr char kDebugText[] = "[zel] \xE4\xF6\xFC";    // code page 1252
constexpr char kConsoleText[] = "[zel] \x84\x94\x81";  // the same in 437 and 850

// What a debugger of CHILD_MAIN(name) gets to see.
std::string debuggerOutput(const std::string& name) {
    char self[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, self, MAX_PATH);
    std::string commandLine = "\"" + std::string(self) + "\" --child " + name;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(self, commandLine.data(), nullptr, nullptr, FALSE,
                          DEBUG_ONLY_THIS_PROCESS, nullptr, nullptr, &startup, &process)) {
        return "not started";
    }
    std::string output;
    DEBUG_EVENT event = {};
    while (event.dwDebugEventCode != EXIT_PROCESS_DEBUG_EVENT &&
           ::WaitForDebugEvent(&event, 60'000)) {
        if (event.dwDebugEventCode == OUTPUT_DEBUG_STRING_EVENT) {
            const OUTPUT_DEBUG_STRING_INFO& info = event.u.DebugString;
            std::string text(info.nDebugStringLength, '\0');
            ::ReadProcessMemory(process.hProcess, info.lpDebugStringData, text.data(), text.size(),
                                nullptr);
            output += text.substr(0, text.find('\0'));
        }
        ::ContinueDebugEvent(event.dwProcessId, event.dwThreadId, DBG_CONTINUE);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return output;
}

}  // namespace

CHILD_MAIN(trace) {
    Zel_TraceSetSourceInfo("main", 7);
    const char* const nothing = nullptr;
    Zel_Trace("lost: tracing is off");
    Zel_EnableTracing(true);
    Zel_Trace(nothing);
    Zel_Trace("n=%d %s %zu %lld", 1, "x", sizeof(short), 5'000'000'000LL);
    Zel_Trace("no prefix");

    std::FILE* const file = std::fopen(argv[1], "wt");
    Zel_TraceSetHandle(file);
    Zel_IncTraceCounter();  // does not indent
    Zel_Trace("%s", std::string(20'000, 'y').c_str());
    Zel_DecTraceCounter();
    Zel_Trace("short");
    std::printf("flushed: %d\n", static_cast<int>(readFile(argv[1]).size()));
    std::fputs("of the caller", file);
    Zel_TraceSetHandle(nullptr);
    std::printf("flushed: %d\n", static_cast<int>(readFile(argv[1]).size()));
    std::fclose(file);

    Zel_TraceSetSourceInfo("end", 9);
    Zel_Trace("to standard output again");
    Zel_EnableTracing(false);
    Zel_Trace("lost as well");
    return 0;
}

TEST(Trace, WritesLinesWithAOneShotPrefixWhileEnabled) {
    const TempDir directory;
    const ChildResult result = runChild("trace", {directory.path("trace.txt")});
    EXPECT_EQ(result.out,
              "main [7]: n=1 x 2 5000000000\n"
              "no prefix\n"
              "flushed: 20009\n"  // with CR LF
              "flushed: 20022\n"  // and what the caller wrote
              "end [9]: to standard output again\n");
}

TEST(Trace, KeepsItsState) {
    EXPECT_FALSE(Zel_IsTracingEnabled());
    Zel_EnableTracing(true);
    EXPECT_TRUE(Zel_IsTracingEnabled());
    Zel_EnableTracing(false);
    EXPECT_FALSE(Zel_IsTracingEnabled());
    EXPECT_FALSE(Zel_IsDeadNet());
    Zel_SetDeadNet(true);
    EXPECT_TRUE(Zel_IsDeadNet());
    Zel_SetDeadNet(false);
}

CHILD_MAIN(debugOut) {
    ZelCmdline::init(argc, argv, true, "");
    ZelDebugOut(kDebugText);
    ZelDebugOut("");
    ZelDebugOut(nullptr);
    ZelDebugOut("|");
    return 0;
}

TEST(DebugOut, GoesToTheConsoleInItsCodePageWhenAsked) {
    EXPECT_EQ(runChild("debugOut", {"-console"}).err, std::string(kConsoleText) + "|");
    const ChildResult silent = runChild("debugOut");
    EXPECT_EQ(silent.err, "");
    EXPECT_EQ(silent.out, "");
}

TEST(DebugOut, ReachesTheDebugger) {
    EXPECT_EQ(debuggerOutput("debugOut"), std::string(kDebugText) + "|");
}

CHILD_MAIN(heapCheck) {
    ZelCmdline::init(argc, argv, true, "");
    const std::string file(2000, 'f');
    Zel_DoHeapCheck("grid.cxx", 12, nullptr);
    Zel_DoHeapCheck(file.c_str(), 4'000'000'000UL, "ignored");
    return 0;
}

TEST(HeapCheck, OnlyWritesDebugLines) {
    EXPECT_EQ(runChild("heapCheck", {"-console"}).err,
              "[debug] Performing HeapCheck grid.cxx (12) - done\n"
              "[debug] Performing HeapCheck " +
                  std::string(2000, 'f') + " (4000000000) - done\n");
}

TEST(HeapCheck, IsSwitchedOffByTheEnvironment) {
    const ChildOptions options = {"", {"ZEL_NO_HEAPCHECK=0"}};
    EXPECT_EQ(runChild("heapCheck", {"-console"}, options).err, "");
}
