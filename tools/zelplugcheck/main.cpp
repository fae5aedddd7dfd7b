// zelplugcheck: says of DLLs, without running any of their code, whether the plug-in manager of
// this version would take them.

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "common/files.h"
#include "judge.h"

namespace {

constexpr char kUsage[] =
    "usage: zelplugcheck PLUGIN.dll [PLUGIN.dll...]\n"
    "\n"
    "Says of each file whether it would be taken as a plug-in, one line a check: \"+\" it passes,\n"
    "\"-\" it fails and ends the examination, \"?\" only its code knows. No code of it is run, so\n"
    "what it does when it is loaded, and whether the DLLs that it needs are there, is not seen.\n"
    "\n"
    "Exit status: 0 no check fails, 1 some file would be refused, 2 wrong usage or a file that\n"
    "cannot be read, or output that cannot be written.\n";

enum Status : int { kTaken = 0, kRefused = 1, kWrong = 2 };

int examine(const char* path) {
    using zelplugcheck::Check;
    std::string bytes, reason;
    if (!loadFile(path, bytes, reason)) {
        std::fprintf(stderr, "zelplugcheck: %s cannot be read (%s)\n", path, reason.c_str());
        return kWrong;
    }
    bool isTaken = true, isSure = true;
    std::printf("%s\n", path);
    for (const auto& [outcome, text] :
         zelplugcheck::judge(zelplugcheck::PeImage(std::move(bytes)))) {
        const char mark = outcome == Check::Outcome::kGood  ? '+'
                          : outcome == Check::Outcome::kBad ? '-'
                                                            : '?';
        std::printf("%c %s\n", mark, text.c_str());
        isTaken = isTaken && outcome != Check::Outcome::kBad;
        isSure = isSure && outcome != Check::Outcome::kUnknown;
    }
    std::printf("%s\n", !isTaken ? "would be refused" : isSure ? "would be taken" : "may be taken");
    return isTaken ? kTaken : kRefused;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs(kUsage, stderr);
        return kWrong;
    }
    int status = kTaken;
    for (int i = 1; i < argc; ++i) status = std::max(status, examine(argv[i]));
    return finishOutput() ? status : kWrong;
}
