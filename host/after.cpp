#include "after.h"

#include <chrono>
#include <future>

#include "paths.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztools.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr char kOutputName[] = "after.txt";
constexpr std::chrono::milliseconds kIdleTime(20);

// A redirection clause for the stream unless there is one: only the first one of a stream counts.
// Appending lets both streams share the file.
std::string clauseFor(const std::string& commandLine, const char* op, const std::string& path) {
    if (commandLine.find(op) != std::string::npos) return "";
    std::string clause = std::string(" ") + op + ">\"";
    for (const char c : path) clause.append(c == '\\' ? 2 : 1, c);
    return clause + "\"";
}

struct End {
    std::optional<long> exitCode;
    DWORD error = ERROR_SUCCESS;  // of a start that failed
};

// Waiting takes a second at a time: not for a thread with windows.
End execute(const std::string& commandLine) {
    ZelSynchronousProcess process(SV::String(commandLine), "", kCmdShowNormal);
    process.SetUseRedirection(true);
    if (!process.Execute(false)) return {std::nullopt, ::GetLastError()};
    long code = 0;
    while ((code = process.Wait()) == -1) {
    }
    return {code};
}

}  // namespace

AfterResult runAfterExport(const std::string& commandLine, const std::string& directory,
                           const std::function<void()>& onIdle) {
    AfterResult result;
    if (!makeDirectory(directory, result.problem)) return result;
    const std::string path = directory + "\\" + kOutputName;
    ::DeleteFileA(path.c_str());  // of an earlier run
    const std::string redirected =
        commandLine + clauseFor(commandLine, "1>", path) + clauseFor(commandLine, "2>", path);
    std::future<End> future = std::async(std::launch::async, execute, redirected);
    while (future.wait_for(kIdleTime) != std::future_status::ready) onIdle();
    const End end = future.get();
    result.exitCode = end.exitCode;
    if (!result.exitCode) {
        ::DeleteFileA(path.c_str());
        result.problem =
            systemProblem("the command cannot be started: %s: %s", {commandLine}, end.error);
    } else if (Zel_FileExists(path.c_str())) {
        result.output = path;
    }
    return result;
}

}  // namespace zelhost
