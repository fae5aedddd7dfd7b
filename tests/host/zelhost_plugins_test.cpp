// The host's log, its plug-ins, and how it completes names of models.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "host/host_program.h"
#include "support/child.h"
#include "support/temp_dir.h"

namespace fs = std::filesystem;

namespace {

// The log without times and without carriage returns; our folder becomes "DIR".
std::string logOf(const TempDir& dir) {
    std::string text = readFile(dir.path("zelhost.log"));
    const std::string root = dir.root().string();
    for (std::size_t at = 0; (at = text.find(root)) != text.npos;) {
        text.replace(at, root.size(), "DIR");
    }
    return std::regex_replace(text, std::regex("\\d{4}\\.\\d\\d\\.\\d\\d, [0-9:]{8}: |\r"), "");
}

std::string withoutExports(const std::string& out) {
    return std::regex_replace(out, std::regex("  (.*\\\\.*|[0-9.]+ s)\n"), "");
}

const char kStart[] =
    "zelhost 1.8.0.230922 starts\n"
    "plug-in eventwatch.dll is loaded (General)\n"
    "plug-in figures.dll is loaded (ZelScript)\n";

}  // namespace

TEST(ZelhostPlugins, RunCommandsForEachModelAndLogThem) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("n", "graph [ node [ id 5 ] ]");  // a file of this very name is taken as it is
    const ChildResult result = runHost(
        dir.root().string(), {"m", "n", "-runfigures", "-runfigures m", "-oout", "-lang1033"});
    EXPECT_EQ(result.exitCode, 1u);
    const std::string ofM =
        "nodes: 2\nedges: 1\ncomponents: 1\ndegree 1: 2 nodes\n"
        "longest path: 1 edge (nodes 1 2)\n";
    EXPECT_EQ(withoutExports(result.out),
              "m.gml: 2 nodes, 1 edges\n" + ofM + ofM +
                  "n: 1 nodes, 0 edges\nnodes: 1\nedges: 0\ncomponents: 1\ndegree 0: 1 node\n"
                  "longest path: 0 edges (nodes 5)\n");
    const std::string problem =
        "n: the command \"figures m\" failed: there is no such model";  // it is not open any more
    EXPECT_EQ(result.err, problem + "\n");
    EXPECT_EQ(logOf(dir), kStart +
                              std::string("m.gml: 2 nodes, 1 edges\n"
                                          "m.gml is exported to DIR\\out\n"
                                          "command figures for m: done\n"
                                          "command figures m for m: done\n"
                                          "n: 1 nodes, 0 edges\n"
                                          "n is exported to DIR\\out\n"
                                          "command figures for n: done\n"
                                          "command figures m for n: failed\n") +
                              problem + "\nzelhost ends with status 1\n");
}

TEST(ZelhostPlugins, RefuseUnknownCommandsBeforeAnyWork) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    const ChildResult result = runHost(dir.root().string(), {"m.gml", "-runfigure"});
    EXPECT_EQ(result.exitCode, 2u);
    EXPECT_EQ(result.err.find("zelhost: no plug-in has the command \"figure\"\n"), 0u);
    EXPECT_FALSE(fs::exists(dir.path("export")));
    EXPECT_EQ(logOf(dir), kStart + std::string("no plug-in has the command \"figure\"\n"));
}

TEST(ZelhostLog, KeepsSevenDays) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("zelhost.log", "2024.03.08, 12:00:00: old\r\n");
    for (const char day : {'1', '2', '3', '4', '5', '6', '7'}) {
        dir.write(std::string("zelhost_2024.03.0") + day + ".log", "");
    }
    EXPECT_EQ(runHost(dir.root().string(), {"m.gml"}).exitCode, 0u);
    EXPECT_FALSE(fs::exists(dir.path("zelhost_2024.03.01.log")));
    EXPECT_TRUE(fs::exists(dir.path("zelhost_2024.03.02.log")));
    EXPECT_TRUE(fs::exists(dir.path("zelhost_2024.03.08.log")));
    EXPECT_EQ(logOf(dir).find("Moving log file from zelhost.log to zelhost_2024.03.08.log.\n"), 0u);
}

TEST(ZelhostLog, IsDoneWithoutWhereItCannotBe) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    fs::create_directory(dir.path("zelhost.log"));
    const ChildResult result = runHost(dir.root().string(), {"m.gml"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "");
}
