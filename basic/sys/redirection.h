// Where a command line wants the output of the program to go.

#pragma once

#include <string>
#include <string_view>

struct RedirectTarget {
    std::string name;  // empty: none
    bool isAppended = false;
};

struct SplitCommandLine {
    std::string command;  // without the clauses
    RedirectTarget output;
    RedirectTarget error;
};

// Takes a command line apart by the rules of `ZelSynchronousProcess`. It ends at its first NUL.
SplitCommandLine splitRedirections(std::string_view commandLine);
