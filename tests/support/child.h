// Work that needs a process of its own: fresh process-wide state, an exit code, output.

#pragma once

#include <string>
#include <vector>

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
};

// Runs CHILD_MAIN(name) in a new process of this test program.
ChildResult runChild(const std::string& name, const std::vector<std::string>& arguments = {},
                     const ChildOptions& options = {});

// Runs any program. One that does not end within a minute is ended and fails the test.
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
