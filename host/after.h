// The command that a user wants to run behind the exports.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "model/message.h"

namespace zelhost {

struct AfterResult {
    std::optional<long> exitCode;  // none when it could not be started
    std::string output;            // the file with what it printed; empty when there is none
    Message problem;               // why not; empty when it was
};

// Runs a command line and waits for its end. What it prints goes to <directory>\after.txt, except
// for a stream that the command line redirects itself ("1>file"). `onIdle` is called many times a
// second meanwhile, on the calling thread.
AfterResult runAfterExport(const std::string& commandLine, const std::string& directory,
                           const std::function<void()>& onIdle);

}  // namespace zelhost
