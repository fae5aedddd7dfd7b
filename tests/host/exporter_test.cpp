#include "exporter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/graph_text.h"
#include "host/host_program.h"
#include "paths.h"
#include "picture.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zevent.h"

#include <windows.h>

using zelhost::PendingFile;

TEST(PendingFile, TakesItsPlaceWhenItIsComplete) {
    const TempDir dir;
    const std::string path = dir.write("f", "old");
    {
        PendingFile file(path);
        EXPECT_TRUE(file.write("new "));
        EXPECT_EQ(readFile(path), "old");
        EXPECT_TRUE(file.writer()("text"));
        EXPECT_TRUE(file.commit());
        EXPECT_EQ(readFile(path), "new text");
        EXPECT_TRUE(file.problem().empty());
    }
    {
        PendingFile file(path);
        EXPECT_TRUE(file.write("given up"));
    }
    EXPECT_EQ(readFile(path), "new text");
    EXPECT_EQ(filesIn(dir.root().string()), std::vector<std::string>{"f"});
}

CHILD_MAIN(endInTheMiddle) {
    const std::string how = argv[1];
    try {
        PendingFile file(argv[2]);
        file.write("half");
        if (how == "throw") throw std::runtime_error(how);
        if (how == "exit") std::exit(0);
        if (how == "event") ZelExitAppEvent("test").trigger();
        ::TerminateProcess(::GetCurrentProcess(), 0);
    } catch (const std::runtime_error&) {
    }
    return 0;
}

TEST(PendingFile, LeavesNothingBehindUnlessItIsKilled) {
    for (const std::string how : {"throw", "exit", "event", "kill"}) {
        SCOPED_TRACE(how);
        const TempDir dir;
        const std::string path = dir.write("f", "old");
        EXPECT_EQ(runChild("endInTheMiddle", {how, path}).exitCode, 0u);
        EXPECT_EQ(readFile(path), "old");
        EXPECT_EQ(filesIn(dir.root().string()).size(), how == "kill" ? 2u : 1u);
    }
}

TEST(PendingFile, SaysOnceWhatWentWrongFirst) {
    const TempDir dir;
    PendingFile file(dir.path("nowhere\\f"));
    const std::string problem = inEnglish(file.problem());
    EXPECT_EQ(problem.find(dir.path("nowhere\\f: cannot be written: ")), 0u) << problem;
    EXPECT_FALSE(file.write("x"));
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(inEnglish(file.problem()), problem);
}

TEST(Exporter, ListsTheFilesUpToTheFirstProblem) {
    const TempDir dir;
    std::filesystem::create_directory(dir.path("m.nodes.csv"));
    const zelhost::ExportResult result =
        zelhost::exportModel(graphOf(kSmallModel), nullptr, dir.root().string(), "m",
                             [](const std::string&) { return true; });
    EXPECT_EQ(result.files, (std::vector<std::string>{dir.path("m.gml"), dir.path("m.graphml")}));
    const std::string problem = inEnglish(result.problem);
    EXPECT_EQ(problem.find(dir.path("m.nodes.csv: cannot be written: ")), 0u) << problem;
    EXPECT_EQ(filesIn(dir.root().string()), (std::vector<std::string>{"m.gml", "m.graphml"}));
}

TEST(Exporter, LeavesNothingOfAnExportThatIsStopped) {
    for (const std::string at : {"m.gml", "m.edges.csv", "m.png"}) {
        SCOPED_TRACE(at);
        const TempDir dir;
        const std::string old = dir.write("m.gml", "old");
        const zelhost::ExportResult result =
            zelhost::exportModel(graphOf(kSmallModel), nullptr, dir.root().string(), "m",
                                 [&](const std::string& file) { return file != at; });
        EXPECT_TRUE(result.isCancelled);
        EXPECT_TRUE(result.problem.empty());
        EXPECT_EQ(filesIn(dir.root().string()), std::vector<std::string>{"m.gml"});
        EXPECT_EQ(readFile(old), "old");
    }
}

TEST(Picture, ShowsTheBeginningOfLongCaptions) {
    const auto sizeOf = [](std::size_t length) {
        const std::string text(length, 'x');
        const zelhost::Graph graph =
            graphOf("graph [ node [ id 1 label \"" + text +
                    "\" ] node [ id 2 ]\n edge [ source 1 target 2 label\n\"" + text + "\" ] ]");
        return zelhost::drawPicture(graph).GetSize();
    };
    EXPECT_LT(sizeOf(100).width, sizeOf(400).width);
    EXPECT_EQ(sizeOf(400), sizeOf(8000));
}

// Smoothing makes colours between those that are drawn with.
TEST(Picture, IsSmoothUnlessLinesCoverItManyTimes) {
    const auto coloursOf = [](int edgesPerNode) {
        constexpr int kNodes = 200;
        std::string gml = "graph [";
        for (int i = 0; i < kNodes; ++i) {
            gml += " node [ id " + std::to_string(i) + " label \" \" ]\n";
            for (int j = 1; j <= edgesPerNode && i + j < kNodes; ++j) {
                gml += " edge [ source " + std::to_string(i) + " target " + std::to_string(i + j) +
                       " ]\n";
            }
        }
        const SV::Image picture = zelhost::drawPicture(graphOf(gml + " ]"));
        std::set<std::uint32_t> colours;
        for (int y = 0; y < picture.GetSize().height; ++y) {
            colours.insert(picture.GetRow(y), picture.GetRow(y) + picture.GetSize().width);
        }
        return colours.size();
    };
    EXPECT_GT(coloursOf(1), 4u);
    EXPECT_LE(coloursOf(200), 4u);
}

TEST(Paths, AreTakenApart) {
    struct Case {
        const char* path;
        const char* file;
        const char* base;
    };
    const Case cases[] = {
        {"C:\\a\\b.gml", "b.gml", "b"},
        {"a/b.c.gml", "b.c.gml", "b.c"},
        {"C:b.gml", "b.gml", "b"},
        {"a.d\\b", "b", "b"},
        {"b", "b", "b"},
    };
    for (const auto& [path, file, base] : cases) {
        EXPECT_EQ(zelhost::fileNameOf(path), file);
        EXPECT_EQ(zelhost::baseNameOf(path), base);
    }
    EXPECT_EQ(zelhost::absolutePath("C:\\a\\.\\b\\..\\c\\"), "C:\\a\\c");
    EXPECT_EQ(zelhost::absolutePath("C:\\"), "C:\\");
}
