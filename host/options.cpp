#include "options.h"

#include <algorithm>
#include <string_view>

#include "paths.h"
#include "zbasic/zapp.h"
#include "zbasic/zcmdline.h"

namespace zelhost {

const char kUsage[] =
    "usage: zelhost model.gml [more.gml ...] [-o<directory>] [-match<pattern>] [-run<command>]\n"
    "               [-after<command line>] [options]\n"
    "\n"
    "Imports graph models in GML and writes each as <name>.gml, <name>.graphml,\n"
    "<name>.nodes.csv, <name>.edges.csv and <name>.png.\n"
    "\n"
    "  -o<directory>    where the files go (default: \"export\" in the current directory)\n"
    "  -match<pattern>  keep only the nodes whose caption matches, and the edges between them:\n"
    "                   \"*\" stands for any characters, \"?\" for one; case does not count\n"
    "  -run<command>    run a command of a plug-in for each model; may be repeated\n"
    "  -after<command line>\n"
    "                   run it when all is exported; what it prints goes to after.txt\n"
    "                   beside the exports\n"
    "  -zdbuser         only show which database user the program would log in as, and\n"
    "                   the file that says so\n"
    "  -?               this text\n"
    "\n"
    "  -no_windows, -no_gui      do the work without a window\n"
    "  -no_dialogs -log_no_dialogs<file>\n"
    "                            show no boxes, but write their texts to the file\n"
    "  -lang<language>           user interface: 1033, 1031, English, Deutsch, en, de\n"
    "  -console                  a console window that shows what goes on\n"
    "  -trace -trf<file>         trace lines, to the file\n"
    "  -pidfile<file>            write the process id to the file\n"
    "  -plug_log                 write to _plugin_manager.log which plug-ins are taken\n"
    "\n"
    "Exit status: 0 all done, 1 some model or the command failed, 2 wrong usage, 3 stopped by\n"
    "the user.\n";

namespace {

// What the library reads by its beginning; the rest of such an option is its value.
constexpr std::string_view kLibraryValues[] = {"u",         "p",           "d",
                                               "s",         "v",           "e",
                                               "f",         "h",           "trf",
                                               "toolname",  "port",        "pidfile",
                                               "wslogfile", "wslogbackup", "P",
                                               "charset",   "wslogformat", "log_no_dialogs",
                                               "lang",      "plug_log",    "getfulldomainname"};
constexpr std::string_view kLibraryFlags[] = {"zellogin",
                                              "zelscript_typecheck",
                                              "assert",
                                              "autokick",
                                              "console",
                                              "libdox",
                                              "no_exception_handling",
                                              "no_dialogs",
                                              "no_windows",
                                              "no_gui",
                                              "no_login_screen",
                                              "no_printer_warning",
                                              "nobootlogin",
                                              "trace",
                                              "winlogin",
                                              "x"};

constexpr std::string_view kOutput = "o";
constexpr std::string_view kMatch = "match";
constexpr std::string_view kAfter = "after";
constexpr std::string_view kRun = "run";

bool isOption(std::string_view argument) {
    return argument.starts_with('-') || argument.starts_with('/');
}

bool isOfLibrary(std::string_view option) {
    return std::ranges::any_of(kLibraryValues,
                               [&](std::string_view name) { return option.starts_with(name); }) ||
           std::ranges::find(kLibraryFlags, option) != std::end(kLibraryFlags);
}

}  // namespace

std::optional<Options> readOptions(Message& problem) {
    const ZelCmdline& line = ZelCmdline::Instance();
    Options options;
    std::string directory = "export";
    for (int i = 1; i < line.getCount(); ++i) {
        const SV::String parameter = line.getParam(i);
        const std::string argument(parameter.begin(), parameter.end());
        if (!isOption(argument)) {
            options.models.push_back(withExtension(argument));
            continue;
        }
        const std::string option = argument.substr(1);
        if (option.starts_with(kOutput)) {
            directory = option.substr(kOutput.size());
        } else if (option.starts_with(kMatch)) {
            options.match = option.substr(kMatch.size());
        } else if (option.starts_with(kAfter)) {
            options.after = option.substr(kAfter.size());
            if (options.after.empty()) {
                problem = "option -after needs a command line";
                return std::nullopt;
            }
        } else if (option.starts_with(kRun)) {
            options.commands.push_back(option.substr(kRun.size()));
        } else if (!isOfLibrary(option)) {
            problem = {"unknown option %s", {argument}};
            return std::nullopt;
        }
    }
    if (options.match && options.match->empty()) {
        problem = "option -match needs a pattern";
        return std::nullopt;
    }
    if (directory.empty()) {
        problem = "option -o needs a directory";
        return std::nullopt;
    }
    options.outputDirectory = absolutePath(directory);
    return options;
}

}  // namespace zelhost
