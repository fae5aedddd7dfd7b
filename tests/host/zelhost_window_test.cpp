// The host with windows, as a user sees it.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/host_program.h"
#include "host/host_windows.h"
#include "hostframe.h"

using zelhost::HostFrame;

TEST(ZelhostWindow, ShowsModelsAndAnswersTheMenu) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("n.gml", kSmallModel);
    dir.write("bad.gml", "");
    AnsweredHost host(dir, {"m.gml", "bad.gml", "n.gml", "-oout", "-lang1031"});
    const SeenBox problems = host.nextBox();
    EXPECT_EQ(problems.caption, "zelhost: Probleme");
    EXPECT_EQ(problems.text,
              "bad.gml: die Datei ist leer\n\nPr\xFC"
              "fen Sie, ob es die Datei gibt, ob Sie sie lesen d\xFC"
              "rfen und ob sie ein Graphmodell in GML ist. \xD6"
              "ffnen Sie sie dann erneut (Datei > \xD6"
              "ffnen).");
    EXPECT_EQ(textOf(host.frame), "zelhost");
    std::vector<std::string> titles;
    for (const HWND child : childrenOf(host.frame)) titles.push_back(textOf(child));
    EXPECT_EQ(titles, (std::vector<std::string>{"n.gml", "m.gml"}));

    post(host.frame, HostFrame::kAbout);
    const SeenBox german = host.nextBox();
    EXPECT_EQ(german.caption,
              "\xDC"
              "ber zelhost");
    EXPECT_EQ(german.text.find("zelhost "), 0u) << german.text;
    EXPECT_NE(german.text.find("Sprache: Deutsch"), std::string::npos) << german.text;
    post(host.frame, HostFrame::kEnglish);
    post(host.frame, HostFrame::kAbout);
    const SeenBox english = host.nextBox();
    EXPECT_EQ(english.caption, "About zelhost");
    EXPECT_NE(english.text.find("Language: English"), std::string::npos) << english.text;

    std::filesystem::remove(dir.path("out\\n.png"));
    post(host.frame, HostFrame::kExport);
    const SeenBox exported = host.nextBox();
    EXPECT_EQ(exported.caption, "Export");  // without the access key of the menu
    EXPECT_EQ(exported.text, "The files of the model \"n\" were written to\n" + dir.path("out"));
    EXPECT_TRUE(std::filesystem::exists(dir.path("out\\n.png")));

    post(host.frame, HostFrame::kFirstPlugin);
    const SeenBox figures = host.nextBox();
    EXPECT_EQ(figures.caption, "figures");
    EXPECT_EQ(figures.text.find("nodes: 2\nedges: 1\n"), 0u) << figures.text;
    for (const HWND child : childrenOf(host.frame)) ::SendMessageA(child, WM_CLOSE, 0, 0);
    post(host.frame, HostFrame::kFirstPlugin);
    EXPECT_EQ(host.nextBox().text,
              "The command \"figures\" failed.\nthere is no such model\n\n"
              "No model is open.\nOpen one first (File > Open).");

    const ChildResult result = host.close();
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.err, "bad.gml: the file is empty\n");
    EXPECT_EQ(host.watcher.seen().size(), 6u);
}

namespace {

HWND waitForDialog(const RunningProgram& program) { return waitForWindow(program, "#32770"); }

void answer(HWND dialog, int button) {
    post(dialog, button);
    waitUntil([dialog] { return !::IsWindow(dialog); });
}

}  // namespace

TEST(ZelhostWindow, OpensTheModelThatTheUserChooses) {
    const TempDir dir;
    dir.write("n.gml", kSmallModel);
    RunningProgram program(hostProgram(), {"-lang1033"}, {dir.root().string()});
    const HWND frame = waitForFrame(program);

    post(frame, HostFrame::kOpen);
    const HWND left = waitForDialog(program);
    EXPECT_EQ(textOf(left), "Open a graph model");
    answer(left, IDCANCEL);
    EXPECT_EQ(childrenOf(frame).size(), 0u);

    post(frame, HostFrame::kOpen);
    const HWND question = waitForDialog(program);
    constexpr int kFileName = 0x480;  // edt1 of the common dialogs
    HWND field = ::GetDlgItem(question, kFileName);
    if (!field) field = ::GetDlgItem(question, 0x47C);  // cmb13 in the newer form
    ASSERT_NE(field, nullptr);
    ::SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(dir.path("n.gml").c_str()));
    answer(question, IDOK);
    waitUntil([frame] { return !childrenOf(frame).empty(); });
    ASSERT_EQ(childrenOf(frame).size(), 1u);
    EXPECT_EQ(textOf(childrenOf(frame)[0]), "n.gml");
    post(frame, HostFrame::kExit);
    const ChildResult result = program.wait();
    EXPECT_EQ(result.exitCode, 0u) << result.out << result.err;
}

TEST(ZelhostWindow, ShowsTheFirstProblemsEachOnce) {
    const TempDir dir;
    std::vector<std::string> arguments = {"-oout", "-lang1031", "m0.gml"};
    std::string shown;
    for (int i = 0; i < 10; ++i) {
        const std::string name = "m" + std::to_string(i) + ".gml";
        dir.write(name, "graph [\n node [ ] ]");
        arguments.push_back(name);
        if (i < 8) shown += name + "(2): dem Knoten fehlt \"id\"\n";
    }
    AnsweredHost host(dir, arguments);
    EXPECT_EQ(host.nextBox().text,
              shown +
                  "und 2 weitere: siehe die Datei zelhost.log im Startordner\n\n"
                  "Berichtigen Sie die Datei in der Zeile, die in Klammern steht, und \xF6"
                  "ffnen Sie sie erneut (Datei > \xD6"
                  "ffnen).");
    EXPECT_EQ(host.close().exitCode, 1u);
}

// As from an icon: without a console, and without standard streams.
TEST(ZelhostWindow, SaysInABoxWhatNobodyWouldReadOnAConsole) {
    std::string command = "\"" + hostProgram() + "\" -lang1031 -bogus";
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    ASSERT_TRUE(::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS,
                                 nullptr, nullptr, &start, &process));
    const BoxWatcher watcher(IDOK, process.dwProcessId);
    EXPECT_EQ(watcher.waitFor(1)[0].text,
              "unbekannte Option -bogus\n\n"
              "zelhost -? zeigt, wie das Programm aufzurufen ist.");
    EXPECT_EQ(::WaitForSingleObject(process.hProcess, 30'000), WAIT_OBJECT_0);
    DWORD exitCode = 0;
    ::GetExitCodeProcess(process.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 2u);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

TEST(ZelhostWindow, WritesWhatBoxesWouldSayToTheirLog) {
    const TempDir dir;
    dir.write("bad.gml", "");
    AnsweredHost host(dir, {"bad.gml", "-no_dialogs", "-log_no_dialogsboxes.txt"});
    EXPECT_EQ(host.close().exitCode, 1u);
    EXPECT_TRUE(host.watcher.seen().empty());
    EXPECT_EQ(readFile(dir.path("boxes.txt")), "bad.gml: the file is empty\r\n\r\n");
}

namespace {

// While it lives, the shell opens files of the extension by `command`. For all users: Wine's shell
// does not look at those of one.
class Association {
public:
    Association(const std::string& extension, const std::string& command) : m_key(extension) {
        set(m_key, "zbasic_test_file");
        set(kClass + std::string("\\shell\\open\\command"), command);
    }
    Association(const Association&) = delete;
    Association& operator=(const Association&) = delete;
    ~Association() {
        ::RegDeleteTreeA(HKEY_CLASSES_ROOT, m_key.c_str());
        ::RegDeleteTreeA(HKEY_CLASSES_ROOT, kClass);
    }

private:
    static constexpr char kClass[] = "zbasic_test_file";

    static void set(const std::string& key, const std::string& value) {
        EXPECT_EQ(::RegSetKeyValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, value.c_str(),
                                    static_cast<DWORD>(value.size() + 1)),
                  ERROR_SUCCESS);
    }

    const std::string m_key;
};

}  // namespace

CHILD_MAIN(noteFile) {
    std::ofstream(argv[1]) << argv[2];
    return 0;
}

TEST(ZelhostWindow, OpensExportedFilesByTheShell) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    char self[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, self, MAX_PATH);
    const std::string note = dir.path("note");
    const Association association(
        ".graphml", "\"" + std::string(self) + "\" --child noteFile \"" + note + "\" \"%1\"");
    AnsweredHost host(dir, {"m.gml", "-oout", "-lang1033"});
    waitUntil([&] { return std::filesystem::exists(dir.path("out\\m.png")); });
    post(host.frame, HostFrame::kOpenExported + 1);
    waitUntil([&] { return std::filesystem::exists(note); });
    std::filesystem::remove(dir.path("out\\m.png"));
    post(host.frame, HostFrame::kOpenExported + 4);
    EXPECT_EQ(host.nextBox().text, "The model has not been exported yet; there is no file\n" +
                                       dir.path("out\\m.png") +
                                       "\n\nExport the model first (File > Export).");
    EXPECT_EQ(readFile(note), dir.path("out\\m.graphml"));
    EXPECT_EQ(host.close().exitCode, 0u);
}
