#include "host/host_program.h"

#include <algorithm>
#include <filesystem>
#include <regex>

namespace fs = std::filesystem;

const char kSmallModel[] =
    "graph [\n"
    "  directed 1\n"
    "  node [ id 1 label \"a;b\" ]\n"
    "  node [ id 2 label \"say &quot;&auml;&#19979;&quot;\" ]\n"
    "  edge [ source 1 target 2 label \"<e>\" ]\n"
    "]\n";

std::string largeModel() {
    std::string gml = "graph [\n";
    for (int i = 0; i < 200000; ++i) gml += "node [ id " + std::to_string(i) + " ]\n";
    return gml + "]\n";
}

std::string hostProgram() { return programFolder() + "\\zelhost.exe"; }

ChildResult runHost(const std::string& directory, std::vector<std::string> arguments) {
    arguments.push_back("-no_windows");
    return runProgram(hostProgram(), arguments, {directory});
}

std::string withoutProgress(const std::string& err) {
    return std::regex_replace(err, std::regex("[^\n]*: (drawing|writing .*|.* %) *\n"), "");
}

std::vector<std::string> filesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory)) {
        if (!entry.is_directory()) {
            names.push_back(fs::relative(entry.path(), directory).make_preferred().string());
        }
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> exportsOf(const std::string& name) {
    return {name + ".edges.csv", name + ".gml", name + ".graphml", name + ".nodes.csv",
            name + ".png"};
}
