// Work that needs a process of its own: fresh process-wide state, an exit code, output.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/temp_dir.h"

// Defines what a child process does: CHILD_MAIN(name) { ... return exitCode; }
// Its body sees `argc` and `argv` as a program's `main` does, argv[0] being the test program.
#define CHILD_MAIN(name)                                                \
    static int childMain_##name(int argc, char** argv);                 \
    static const ChildEntry childEntry_##name(#name, childMain_##name); \
    static int childMain_##name([[maybe_unused]] int argc, [[maybe_unused]] char** argv)

struct ChildResult {
    unsigned long exitCode;
    std::string out;  // standard output, line ends as "\n"
    std::string err;  // standard error likewise
};

struct ChildOptions {
    std::string directory;                      // to start in; empty: ours
    std::vector<std::string> environment = {};  // "NAME=value" on top of ours
    std::optional<std::string> input = {};      // standard input; without one there is none
};

// Runs CHILD_MAIN(name) in a new process of this test program.
ChildResult runChild(const std::string& name, const std::vector<std::string>& arguments = {},
                     const ChildOptions& options = {});

// A program that runs beside the test. One that does not end within a minute of being waited for is
// ended and fails the test.
class RunningProgram {
public:
    explicit RunningProgram(const std::string& program,
                            const std::vector<std::string>& arguments = {},
                            const ChildOptions& options = {});
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();  // waits, too

    unsigned long id() const { return m_id; }  // 0 when it could not be started
    bool hasEnded() const;
    // Waits for its end; to be called once.
    ChildResult wait();

private:
    TempDir m_files;
    std::string m_program;
    void* m_process = nullptr;
    unsigned long m_id = 0;
};

// Runs any program to its end.
ChildResult runProgram(const std::string& program, const std::vector<std::string>& arguments = {},
                       const ChildOptions& options = {});

// The folder of this test program, where the other programs lie as well.
std::string programFolder();

class ChildEntry {
public:
    using Main = int (*)(int, char**);
    ChildEntry(const char* name, Main main);

    // Null when there is none of that name.
    static Main find(const std::string& name);
};
