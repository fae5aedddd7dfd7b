// zelhost: imports graph models and exports them.

#include <cstdio>
#include <cstring>

#include "hostapp.h"

#include <windows.h>

namespace {

bool hasOption(int argc, char** argv, const char* name) {
    for (int i = 1; i < argc; ++i) {
        if ((argv[i][0] == '-' || argv[i][0] == '/') && std::strcmp(argv[i] + 1, name) == 0) {
            return true;
        }
    }
    return false;
}

// A program with windows has no standard streams unless somebody redirected them. Started from a
// console it writes there, unless it opens a console of its own; and hears of its Ctrl+C.
void useConsoleOfParent() {
    const bool isRedirected = ::GetStdHandle(STD_ERROR_HANDLE) != nullptr;
    if (!::AttachConsole(ATTACH_PARENT_PROCESS) || isRedirected) return;
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
}

}  // namespace

int main(int argc, char** argv) {
    ::SetDllDirectoryA("");  // what a plug-in needs is not looked for in the current directory
    if (!hasOption(argc, argv, "console")) useConsoleOfParent();
    // Without windows there is nobody to answer boxes either.
    const bool withUser = !hasOption(argc, argv, "no_gui") && !hasOption(argc, argv, "no_windows");
    zelhost::HostApplication application(withUser);
    application.Run(argc, argv);
    return 0;
}
