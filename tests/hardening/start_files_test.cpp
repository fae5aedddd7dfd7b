// The files that a program writes when it starts, trace and process id, where they cannot be.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "hardening/outcome.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "zbasic/zapp.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

class TracedProgram : public ZelMDIApplication {
public:
    TracedProgram() : ZelMDIApplication("test", false, "log") {}
    bool getMDIClientImage(SV::Image&, int&) override { return false; }
    int initApplication() override { return 0; }
    int runApplication() override {
        Zel_Trace("a line");
        Zel_Trace("another");
        return 0;
    }
};

struct StartFileCase {
    const char* why;
    const char* call;  // that fails with `error`
    const char* error;
    const char* trace;  // its name in the folder
    const char* pidFile;
    const char* expected;  // the content of both files, "-" for none
};

const StartFileCase kStartFiles[] = {
    {"no fault", "", "0", "trace", "pid", "a line another | PID "},
    {"disk full", "WriteFile", "112", "trace", "pid", "| "},
    {"access denied", "CreateFile", "5", "trace", "pid", "-| -"},
    {"too many open files", "CreateFile", "4", "trace", "pid", "-| -"},
    {"no such folder", "", "0", "no\\trace", "no\\pid", "-| -"},
    {"folders", "", "0", "folder", "folder", "-| -"},
};

std::string contentOf(const std::string& path) {
    if (!fs::is_regular_file(path)) return "-";
    std::string content = readFile(path);
    std::erase(content, '\r');
    for (char& c : content) c = c == '\n' ? ' ' : c;
    return content;
}

}  // namespace

// argv: the three options, then the failing call and its error.
CHILD_MAIN(runTraced) {
    std::string reports;
    {
        const FaultyPlace place;
        const std::string call = argv[4];
        std::optional<FailingCall> fault;
        if (call == "WriteFile") fault.emplace(call, std::stoul(argv[5]));
        if (call == "CreateFile") fault.emplace(call, std::stoul(argv[5]), -1);
        TracedProgram program;
        program.Run(4, argv);
        if (fault && FailingCall::count() == 0) reports = "was not met";
        fault.reset();
        reports += place.reports();
    }
    std::printf("%lu%s", ::GetCurrentProcessId(), reports.c_str());
    return 0;
}

TEST(StartFiles, AreDoneWithoutWhereTheyCannotBeWritten) {
    for (const auto& [why, call, error, trace, pidFile, expected] : kStartFiles) {
        SCOPED_TRACE(why);
        const TempDir folder;
        fs::create_directory(folder.path("folder"));
        const ChildResult result =
            runChild("runTraced", {"-trace", "-trf" + folder.path(trace),
                                   "-pidfile" + folder.path(pidFile), call, error});
        EXPECT_EQ(result.exitCode, 0U);
        EXPECT_EQ(result.out.find("was not met"), std::string::npos);
        const bool isTraceFile = contentOf(folder.path(trace)) != "-";
        EXPECT_EQ(result.out.starts_with("a line\nanother\n"), !isTraceFile) << result.out;
        std::string files = contentOf(folder.path(trace)) + "| " + contentOf(folder.path(pidFile));
        const std::size_t at = files.find(result.out);
        if (at != std::string::npos) files.replace(at, result.out.size(), "PID");
        EXPECT_EQ(files, expected) << result.out;
    }
}
