// The host's own part of the command line.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/message.h"

namespace zelhost {

struct Options {
    std::vector<std::string> models;    // as given
    std::string outputDirectory;        // absolute, without a separator at its end
    std::vector<std::string> commands;  // of plug-ins, to be run for each model
    std::string after;                  // command line to run behind the exports; empty: none
    std::optional<std::string> match;   // pattern of the captions to keep, in the code page
};

// From the library's command line. Nothing when it is wrong: `problem` says why then.
std::optional<Options> readOptions(Message& problem);

// How to call the program.
extern const char kUsage[];

}  // namespace zelhost
