// What the host does with files and folders that are not as they should be.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/host_program.h"
#include "support/box_watcher.h"
#include "support/program_copy.h"
#include "support/temp_dir.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

std::string repeated(std::string_view text, int count) {
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

// A file that another program has open, so that nobody else may.
class LockedFile {
public:
    explicit LockedFile(const std::string& path)
        : m_handle(::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr)) {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
    }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile() { ::CloseHandle(m_handle); }

private:
    HANDLE m_handle;
};

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != text.npos; start = end + 1) {
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

struct BadModel {
    const char* name;
    std::string bytes;
    const char* message;
};

std::vector<BadModel> badModels() {
    return {
        {"empty.gml", "", "empty.gml: the file is empty"},
        {"binary.gml", std::string("MZ\x90\0\3\0\0\0\4\n\0graph [ ]", 20),
         "binary.gml(1): a NUL byte: this is not a text file"},
        {"random.gml", "\x8F\x1B\xE7\x02\xFF[\x9A]\"", "random.gml(1): a key is missing before "},
        {"line.gml", "graph [\n#" + std::string(8191, 'x') + "\n]\n",
         "line.gml(2): the line is longer than 8191 bytes"},
        {"long_line.gml", "graph [\na \"" + std::string(std::size_t{30} << 20, 'x') + "\"\n]\n",
         "long_line.gml(2): the line is longer than 8191 bytes"},
        {"not_closed.gml", "graph [\n  node [ id 1 ]\n",
         "not_closed.gml(1): the list that begins here is not closed"},
        {"closed_twice.gml", "graph [ ]\n]\n", "closed_twice.gml(2): \"]\" without a list"},
        {"deep.gml", "graph [\n" + repeated("a [\n", 100'000) + repeated("]\n", 100'001),
         "deep.gml(501): lists lie more than 500 deep"},
        {"deep_node.gml", "graph [ node [ id 1\n" + repeated("a [ ", 1000),
         "deep_node.gml(2): lists lie more than 500 deep"},
        {"id_twice.gml", "graph [\nnode [ id 1 ]\nnode [ id 1 ]\n]\n",
         "id_twice.gml(3): a node before has the id 1"},
        {"no_id.gml", "graph [\nnode [ label \"1\" ]\n]\n", "no_id.gml(2): the node has no \"id\""},
        {"nowhere.gml", "graph [\nnode [ id 1 ]\nedge [ source 1 target 2 ]\n]\n",
         "nowhere.gml(3): the target of the edge is no node: 2"},
    };
}

}  // namespace

// All in one process: a bad model must not disturb the ones behind it.
TEST(ZelhostBadInput, EachBadModelGetsAMessageAndTheOthersAreExported) {
    const TempDir dir;
    std::vector<std::string> arguments = {"unknown.gml", "folder.gml", "locked.gml"};
    std::vector<std::string> messages = {"unknown.gml: the file cannot be opened",
                                         "folder.gml: the file cannot be opened",
                                         "locked.gml: the file cannot be opened"};
    fs::create_directory(dir.path("folder.gml"));
    const LockedFile locked(dir.write("locked.gml", kSmallModel));
    for (const auto& [name, bytes, message] : badModels()) {
        dir.write(name, bytes);
        arguments.push_back(name);
        messages.push_back(message);
    }
    const std::string model = kSmallModel;
    for (std::size_t tenth = 1; tenth < 10; ++tenth) {
        const std::string name = "cut" + std::to_string(tenth) + ".gml";
        dir.write(name, model.substr(0, model.size() * tenth / 10));
        arguments.push_back(name);
        messages.push_back(name + "(");
    }
    dir.write("good.gml", kSmallModel);
    arguments.insert(arguments.end(), {"good.gml", "-oout"});

    const ChildResult result = runHost(dir.root().string(), arguments);
    EXPECT_EQ(result.exitCode, 1u);
    const std::vector<std::string> lines = linesOf(withoutProgress(result.err));
    EXPECT_EQ(lines.size(), messages.size()) << result.err;
    for (std::size_t i = 0; i < std::min(lines.size(), messages.size()); ++i) {
        EXPECT_EQ(lines[i].substr(0, messages[i].size()), messages[i]);
    }
    EXPECT_EQ(filesIn(dir.path("out")), exportsOf("good"));
}

TEST(ZelhostBadInput, DrawsWhatHasUnusualPlaces) {
    const TempDir dir;
    dir.write("nothing.gml", "graph [ ]");
    dir.write("far.gml",
              "graph [ node [ id 1 graphics [ x 1e308 y 5 w 1e300 ] ]\n"
              "node [ id 2 graphics [ x -1e308 y 1e999 ] ] edge [ source 1 target 2 ] ]");
    dir.write("same.gml",
              "graph [ node [ id 1 graphics [ x 0 y 0 ] ] node [ id 2 graphics [ x 0 y 0 ] ]\n"
              "edge [ source 1 target 2 ] edge [ source 1 target 1 ] ]");
    const ChildResult result =
        runHost(dir.root().string(), {"nothing.gml", "far.gml", "same.gml", "-oout"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(filesIn(dir.path("out")).size(), 15u);
}

TEST(ZelhostBadInput, MakesTheOutputDirectoryOrSaysWhyNot) {
    struct Case {
        const char* why;
        std::string directory;
        std::string problem;  // how the message begins, but for the folder of the test
    };
    const Case cases[] = {
        {"not there, nor what is above it", "new\\deeper\\deepest", ""},
        {"with a separator at the end", "other/", ""},
        {"a file", "m.gml", "m.gml: cannot be created: "},
        {"below a file", "m.gml\\sub", "m.gml: cannot be created: "},
        {"a name that may not be", "a|b", "a|b: cannot be created: "},
    };
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    for (const auto& [why, directory, problem] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = runHost(dir.root().string(), {"m.gml", "-o" + directory});
        EXPECT_EQ(result.exitCode, problem.empty() ? 0u : 1u);
        const std::string message = problem.empty() ? "" : dir.path(problem);
        EXPECT_EQ(result.err.substr(0, message.size()), message);
        EXPECT_EQ(linesOf(result.err).size(), problem.empty() ? 0u : 1u) << result.err;
    }
    const std::string tooLong(300, 'x');
    const ChildResult result = runHost(dir.root().string(), {"m.gml", "-o" + tooLong});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_NE(result.err.find(tooLong + ": cannot be created: "), std::string::npos) << result.err;

    const std::vector<std::string> made = exportsOf("m");
    EXPECT_EQ(filesIn(dir.path("new\\deeper\\deepest")), made);
    EXPECT_EQ(filesIn(dir.path("other")), made);
    EXPECT_EQ(filesIn(dir.root().string()).size(), 2 * made.size() + 2);  // model, log
    EXPECT_EQ(readFile(dir.path("m.gml")), kSmallModel);
}

TEST(ZelhostBadInput, LeavesFilesThatItCannotReplace) {
    const TempDir dir;
    dir.write("a.gml", kSmallModel);
    dir.write("b.gml", kSmallModel);
    const std::string old = dir.write("out\\a.graphml", "old");
    fs::create_directory(dir.path("out\\b.gml"));
    ChildResult result;
    {
        const LockedFile locked(old);
        result = runHost(dir.root().string(), {"a.gml", "b.gml", "-oout"});
    }
    EXPECT_EQ(result.exitCode, 1u);
    const std::vector<std::string> lines = linesOf(result.err);
    ASSERT_EQ(lines.size(), 2u) << result.err;
    EXPECT_EQ(lines[0].find(old + ": cannot be written: "), 0u) << lines[0];
    EXPECT_EQ(lines[1].find(dir.path("out\\b.gml: cannot be written: ")), 0u) << lines[1];
    EXPECT_EQ(readFile(old), "old");
    // What came before the failure is there, and nothing else.
    EXPECT_EQ(filesIn(dir.path("out")), (std::vector<std::string>{"a.gml", "a.graphml"}));
}

namespace {

// The host in a folder of its own.
class HostCopy {
public:
    HostCopy() {
        m_copy.add("zelhost.exe");
        m_copy.folder().write("m.gml", kSmallModel);
    }

    const ProgramCopy& files() const { return m_copy; }
    void write(const char* name, std::string_view bytes) const {
        m_copy.folder().write(name, bytes);
    }
    std::string path(const char* name) const { return m_copy.folder().path(name); }

    // Without a directory for them no minidumps are written, which take seconds each.
    ChildOptions options() const {
        const std::string nowhere = path("nowhere");
        return {m_copy.folder().root().string(), {"TEMP=" + nowhere, "TMP=" + nowhere}};
    }
    void expectToWork() const {
        const ChildResult result = runProgram(
            path("zelhost.exe"), {"m.gml", "-oout", "-no_windows", "-lang1031"}, options());
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(filesIn(path("out")), exportsOf("m"));
    }

private:
    ProgramCopy m_copy;
};

// A multi-language file up to its first record (zbasic/zmlstring.h says what it is for).
const std::string kTextsHeader("\xE1\x05\xE1\x05\0\x90\x03\0", 8);
const std::string kTextRecord("\4\0\0\0\7\0\0\0\x1A\x35\x30\x39", 12);

}  // namespace

TEST(ZelhostBadInput, WorksWithBadLanguageFiles) {
    const HostCopy host;
    {
        SCOPED_TRACE("no list, no folders, but the texts beside the program");
        host.expectToWork();
    }
    {
        SCOPED_TRACE("a list of rubbish, a folder without texts");
        host.write("lang.ini", "\x89PNG\r\n\x1A\n;\n-5\n99999999999\n" + std::string(5000, 'x') +
                                   std::string("\0\0\n", 3) + "1031\n");
        host.write("language\\1031\\zelhost18.dll", "no DLL");
        host.expectToWork();
    }
    {
        SCOPED_TRACE("bad texts of all languages");
        host.write("lang.ini", "1033\n1031\n1036\n1040\n");
        host.write("language\\1033\\zelml.dll", kTextsHeader + kTextRecord);  // no terminator
        host.write("language\\1031\\zelml.dll", kTextsHeader + kTextRecord.substr(0, 10));
        host.write("language\\1036\\zelml.dll",
                   kTextsHeader + std::string("\xFF\xFF\xFF\x7F", 4) + kTextRecord);
        host.write("language\\1040\\zelml.dll", kTextsHeader.substr(0, 5));
        host.expectToWork();
    }
    {
        SCOPED_TRACE("no texts at all: nobody is there for a box");
        fs::remove(host.path("zelhost18.dll"));
        host.expectToWork();
    }
    SCOPED_TRACE("the same with a user, who is told and gets the files all the same");
    fs::remove_all(host.path("out"));
    RunningProgram program(host.path("zelhost.exe"), {"m.gml", "-oout"}, host.options());
    const BoxWatcher watcher(IDOK, program.id());
    const ChildResult result = program.wait();
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "zelhost: there are no windows without their texts (zelhost18.dll)\n");
    EXPECT_EQ(filesIn(host.path("out")), exportsOf("m"));
    ASSERT_EQ(watcher.seen().size(), 1u);
    EXPECT_EQ(watcher.seen()[0].caption, "Zelkit: error loading resource file");
}
