// Runs this test program by a `ZelSynchronousProcess` and reads what it says.

#pragma once

#include <string>

#include "zbasic/zprocess.h"

std::string programPath();  // of this test program

// Starts the program. Wine now and then loses a process while it begins and calls that an internal
// error: one more try is given for that, and for nothing else.
bool startProgram(ZelSynchronousProcess& process, bool showConsoleWindow = false);

// The exit code, or -1 when there is none although the program has had its time.
long waitFor(ZelSynchronousProcess& process);

// The bytes of a file without carriage returns.
std::string textOf(const std::string& path);

// What this program writes to standard output when it is started with `arguments`.
std::string outputOf(const std::string& arguments);

class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::string& path);
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;
    ~CurrentDirectory();

private:
    std::string m_old;
};
