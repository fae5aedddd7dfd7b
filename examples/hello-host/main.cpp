// A host in one page: tells which names match a wildcard, and the month in the user's language.
//
//     hello-host.exe *server* web-server printer mail-server [-lang1031] [-trace -trf<file>]

#include <cstdio>

#include "sv/sv.h"
#include "zbasic/zbasic.h"

namespace {

enum ExitCode { kDone = 0, kNoMatch = 1, kWrongUsage = 2 };

constexpr int kIgnoreCase = 1;

class HelloHost : public ZelMDIApplication {
public:
    HelloHost() : ZelMDIApplication("hellohost", /*withGUI=*/false, "log") {}

    int initApplication() override { return createResourceManager("zbasic", true) ? 0 : 1; }
    int runApplication() override;
    bool getMDIClientImage(SV::Image&, int&) override { return false; }
};

bool isOption(const SV::String& argument) { return !argument.empty() && argument[0] == '-'; }

// Prints what matches; how many do.
int printMatches(const ZelJokerz& pattern, const ZelCmdline& line) {
    int count = 0;
    for (int i = 2; i < line.getCount(); ++i) {
        const SV::String name = line.getParam(i);
        if (isOption(name) || !pattern.match(name.c_str())) continue;
        std::printf("%s\n", name.c_str());
        ++count;
    }
    return count;
}

int HelloHost::runApplication() {
    const ZelCmdline& line = ZelCmdline::Instance();
    if (line.getCount() < 2 || isOption(line.getParam(1))) {
        std::fprintf(stderr, "usage: hello-host WILDCARD NAME... [options]\n");
        return kWrongUsage;
    }
    const ZelJokerz pattern(line.getParam(1).c_str(), kIgnoreCase);
    if (!pattern) {
        std::fprintf(stderr, "\"%s\" is no wildcard\n", line.getParam(1).c_str());
        return kWrongUsage;
    }
    const int count = printMatches(pattern, line);
    Zel_Trace("%d names match", count);
    std::printf("%d in %s, zbasic %s\n", count,
                ZelDate::MonthToStr(SV::Date().GetMonth() - 1).c_str(),
                Zel_GetPatchBuildVersionString().c_str());
    return count > 0 ? kDone : kNoMatch;
}

}  // namespace

int main(int argc, char** argv) { HelloHost().Run(argc, argv); }
