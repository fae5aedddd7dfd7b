#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "host/host_program.h"
#include "support/child.h"
#include "support/temp_dir.h"

namespace {

std::string withoutTimes(const std::string& text) {
    return std::regex_replace(text, std::regex("\n  [0-9]+\\.[0-9]{3} s\n"), "\n  TIME\n");
}

// The unsigned number of four bytes, the highest first (PNG 1.2, section 2.1).
std::uint32_t numberAt(const std::string& bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(offset + i));
    }
    return number;
}

}  // namespace

TEST(Zelhost, ExportsAModelInAllFormats) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    const ChildResult result = runHost(dir.root().string(), {"m.gml", "-oout"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "");
    const std::string out = dir.path("out") + "\\";
    EXPECT_EQ(withoutTimes(result.out),
              "m.gml: 2 nodes, 1 edges\n"
              "  " +
                  out + "m.gml\n  " + out + "m.graphml\n  " + out + "m.nodes.csv\n  " + out +
                  "m.edges.csv\n  " + out + "m.png\n  TIME\n");
    EXPECT_EQ(filesIn(dir.path("out")), exportsOf("m"));

    EXPECT_EQ(readFile(out + "m.gml"),
              "graph [\n  directed 1\n"
              "  node [\n    id 1\n    label \"a;b\"\n  ]\n"
              "  node [\n    id 2\n    label \"say &#34;&auml;&#19979;&#34;\"\n  ]\n"
              "  edge [\n    source 1\n    target 2\n    label \"&lt;e&gt;\"\n  ]\n]\n");
    const std::string graphml = readFile(out + "m.graphml");
    for (const char* const part :
         {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "edgedefault=\"directed\"", "\xE4\xB8\x8B",
          "\xC3\xA4", "&lt;e&gt;", "<edge source=\"n1\" target=\"n2\">", "</graphml>"}) {
        EXPECT_NE(graphml.find(part), graphml.npos) << part;
    }
    EXPECT_EQ(readFile(out + "m.nodes.csv"),
              "\xEF\xBB\xBFid;caption;label\n"
              "1;\"a;b\";\"a;b\"\n"
              "2;\"say \"\"\xC3\xA4\xE4\xB8\x8B\"\"\";\"say \"\"\xC3\xA4\xE4\xB8\x8B\"\"\"\n");
    EXPECT_EQ(readFile(out + "m.edges.csv"), "\xEF\xBB\xBFsource;target;label\n1;2;<e>\n");

    const std::string png = readFile(out + "m.png");
    EXPECT_EQ(png.substr(0, 16), std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
    EXPECT_GT(numberAt(png, 16), 20u);
    EXPECT_GT(numberAt(png, 20), 20u);
    EXPECT_EQ(png.substr(png.size() - 8, 4), "IEND");
}

TEST(Zelhost, SkipsABrokenModelAndKeepsNamesApart) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("sub\\M.GML", "graph [ ]");
    dir.write("broken.gml", "graph [\n  node [ ]\n]\n");
    dir.write("m_2.gml", "graph [ ]");
    const ChildResult result =
        runHost(dir.root().string(), {"m.gml", "broken.gml", "sub\\M.GML", "m_2.gml", "-oout"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.err, "broken.gml(2): the node has no \"id\"\n");
    std::vector<std::string> expected;
    for (const char* const name : {"M_2", "m", "m_2_2"}) {
        for (const std::string& file : exportsOf(name)) expected.push_back(file);
    }
    EXPECT_EQ(filesIn(dir.path("out")), expected);
    // The same names again: files of an earlier run are replaced.
    EXPECT_EQ(runHost(dir.root().string(), {"sub\\M.GML", "-oout"}).exitCode, 0u);
    EXPECT_EQ(readFile(dir.path("out\\m.gml")), "graph [\n]\n");
}

TEST(Zelhost, RefusesWrongUsage) {
    struct Case {
        const char* why;
        std::vector<std::string> arguments;
        const char* problem;
    };
    const Case cases[] = {
        {"no model", {}, "no model is named"},
        {"unknown option", {"m.gml", "-zoom"}, "unknown option -zoom"},
        {"more than a flag of the library", {"m.gml", "-tracer"}, "unknown option -tracer"},
        {"-match alone", {"m.gml", "-match"}, "option -match needs a pattern"},
        {"-o alone", {"m.gml", "-o"}, "option -o needs a directory"},
        {"-after alone", {"m.gml", "-after"}, "option -after needs a command line"},
    };
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    for (const auto& [why, arguments, problem] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = runHost(dir.root().string(), arguments);
        EXPECT_EQ(result.exitCode, 2u);
        EXPECT_EQ(result.out, "");
        const std::string err = std::string("zelhost: ") + problem + "\n\nusage: zelhost ";
        EXPECT_EQ(result.err.substr(0, err.size()), err);
    }
    const ChildResult help = runHost(dir.root().string(), {"-?"});
    EXPECT_EQ(help.exitCode, 0u);
    EXPECT_EQ(help.out.find("usage: zelhost "), 0u) << help.out;
    EXPECT_EQ(help.err, "");
    EXPECT_EQ(filesIn(dir.root().string()), std::vector<std::string>{"m.gml"});
}

TEST(Zelhost, KeepsMatchingNodes) {
    struct Case {
        const char* why;
        const char* option;
        const char* label;  // the header's third field
        const char* nodes;  // CSV behind the header
        const char* edges;
    };
    const Case cases[] = {
        {"two of a caption", "-matcha", "label", "1;a;a\n3;a;a\n", "3;1\n"},
        {"none", "-matchb", "", "", ""},
        {"a part with stars", "-match*B*", "label", "6;Abc \xE4\xB8\x8B;Abc \xE4\xB8\x8B\n", ""},
        {"a caption beyond ASCII, given in the code page", "-match\xE4", "label",
         "4;\xC3\x84;\xC3\x84\n", ""},
    };
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 label \"a\" ] node [ id 2 label \"?*\" ]\n"
              "node [ id 3 label \"a\" ] node [ id 4 label \"&Auml;\" ] node [ id 5 ]\n"
              "node [ id 6 label \"Abc &#x4E0B;\" ]\n"
              "edge [ source 1 target 2 ] edge [ source 2 target 2 ] edge [ source 3 target 1 ] ]");
    for (const auto& [why, option, label, nodes, edges] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = runHost(dir.root().string(), {"m.gml", "-oout", option});
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_EQ(result.err, "");
        const std::string header =
            std::string("\xEF\xBB\xBFid;caption") + (*label ? ";" : "") + label;
        EXPECT_EQ(readFile(dir.path("out\\m.nodes.csv")), header + "\n" + nodes);
        EXPECT_EQ(readFile(dir.path("out\\m.edges.csv")),
                  std::string("\xEF\xBB\xBFsource;target\n") + edges);
    }
}

TEST(Zelhost, TakesPartInTheLibrarysStartUp) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("bad.gml", "");
    RunningProgram program(hostProgram(),
                           {"m.gml", "bad.gml", "-no_gui", "-pidfilepid.txt", "-trace",
                            "-trftrace.txt", "-log_no_dialogsboxes.txt"},
                           {dir.root().string()});
    const std::string id = std::to_string(program.id());
    const ChildResult result = program.wait();
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(filesIn(dir.path("export")), exportsOf("m"));  // where files go by default
    EXPECT_EQ(readFile(dir.path("pid.txt")), id + "\r\n");
    EXPECT_EQ(readFile(dir.path("trace.txt")),
              "zelhost: reading the command line\r\n"
              "eventwatch: 1. OpenModel\r\nzelhost: m.gml is open\r\n"
              "eventwatch: 2. SaveModel\r\nzelhost: m.gml is saved\r\n"
              "eventwatch: 3. AfterAppInitialized\r\n"
              "zelhost: 1 of 2 models are open\r\n");
    EXPECT_EQ(result.err, "bad.gml: the file is empty\n");
    EXPECT_EQ(readFile(dir.path("boxes.txt")), "bad.gml: the file is empty\r\n\r\n");
}

TEST(Zelhost, RunsACommandBehindTheExport) {
    struct Case {
        const char* why;
        std::vector<std::string> arguments;
        unsigned long exitCode;
        const char* out;  // behind the export
        const char* err;
        const char* output;  // of the command; null: no file
    };
    const Case cases[] = {
        {"both streams go into the file",
         {"m.gml", "-aftercmd /c echo one& echo two>&2"},
         0,
         "exit code 0: cmd /c echo one& echo two>&2\n  OUT\\after.txt\n",
         "",
         "one\ntwo  \n"},
        {"its exit code",
         {"m.gml", "-aftercmd /c \"exit 3\""},
         1,
         "exit code 3: cmd /c \"exit 3\"\n  OUT\\after.txt\n",
         "the command ended with exit code 3: cmd /c \"exit 3\"\n",
         ""},
        {"a command that redirects a stream itself",
         {"m.gml", "-aftercmd /c echo one& echo two>&2 1>own.txt"},
         0,
         "exit code 0: cmd /c echo one& echo two>&2 1>own.txt\n  OUT\\after.txt\n",
         "",
         "two  \n"},
        {"not to be started",
         {"m.gml", "-afterno_such.exe"},
         1,
         "",
         "the command cannot be started: no_such.exe: File not found\n",
         nullptr},
        {"not behind a failure",
         {"m.gml", "bad.gml", "-aftercmd /c exit 0"},
         1,
         "",
         "bad.gml: the file is empty\n"
         "the command behind the export was not run, as some model failed\n",
         nullptr},
    };
    for (auto [why, arguments, exitCode, out, err, output] : cases) {
        SCOPED_TRACE(why);
        const TempDir dir;
        dir.write("m.gml", kSmallModel);
        dir.write("bad.gml", "");
        arguments.insert(arguments.begin(), "-oout");
        const ChildResult result = runHost(dir.root().string(), arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        const std::size_t end = result.out.find(" s\n");
        ASSERT_NE(end, std::string::npos) << result.out;
        EXPECT_EQ(result.out.substr(end + 3),
                  std::regex_replace(std::string(out), std::regex("OUT"), dir.path("out")));
        EXPECT_EQ(result.err, err);
        std::vector<std::string> files = exportsOf("m");
        if (output) files.insert(files.begin(), "after.txt");
        EXPECT_EQ(filesIn(dir.path("out")), files);
        if (output) {
            std::string text = readFile(dir.path("out\\after.txt"));
            std::erase(text, '\r');
            EXPECT_EQ(text, output);
        }
    }
}

TEST(Zelhost, TidiesUpWhatAKilledOneLeftADayAgo) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    const std::string uuid = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";
    const std::string fresh = "zelhost-" + uuid.substr(0, 35) + "9.tmp";
    const std::string others[] = {"zelhost-x.tmp", "x" + uuid + ".tmp",
                                  "zelhost-" + uuid + ".tmp1"};
    const auto day = std::chrono::hours(24);
    const auto age = [&](const std::string& name, std::chrono::minutes minutes) {
        const std::filesystem::path file = dir.write("out\\" + name, "half a fi");
        std::filesystem::last_write_time(file,
                                         std::filesystem::file_time_type::clock::now() - minutes);
    };
    age("zelhost-" + uuid + ".tmp", day + std::chrono::minutes(5));
    age(fresh, day - std::chrono::minutes(5));
    for (const std::string& name : others) age(name, 3 * day);
    EXPECT_EQ(runHost(dir.root().string(), {"m.gml", "-oout"}).exitCode, 0u);
    std::vector<std::string> expected = exportsOf("m");
    expected.push_back(fresh);
    expected.insert(expected.end(), std::begin(others), std::end(others));
    std::ranges::sort(expected);
    EXPECT_EQ(filesIn(dir.path("out")), expected);
}
