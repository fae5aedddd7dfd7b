// DLLs that somebody has put where programs run and write: none of their code ever runs.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "sv/help.h"
#include "sv/systemfunction.h"
#include "sv/window.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zdattime.h"
#include "zbasic/zfileman.h"
#include "zbasic/zinter.h"
#include "zbasic/zmlstring.h"
#include "zbasic/zplugin.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

#include <windows.h>

#include <commdlg.h>
#include <psapi.h>

namespace fs = std::filesystem;

namespace {

// What the library and the host read as data or load, beside what the system names.
const char* const kNames[] = {
    "zelml.dll",   "zbasic18.dll", "sv18.dll",     "zelhost18.dll", "libpng16-16.dll", "zlib1.dll",
    "dbghelp.dll", "version.dll",  "comctl32.dll", "comdlg32.dll",  "shell32.dll",     "rpcrt4.dll",
    "ole32.dll",   "oleaut32.dll", "uxtheme.dll",  "shcore.dll",    "cryptbase.dll",   "bcrypt.dll",
    "profapi.dll", "wintrust.dll", "propsys.dll",  "dwmapi.dll",    "textshaping.dll"};

std::string planted() { return programFolder() + "\\test_planted\\planted.dll"; }

void printModules() {
    HMODULE modules[512] = {};
    DWORD size = 0;
    ::EnumProcessModules(::GetCurrentProcess(), modules, sizeof modules, &size);
    for (DWORD i = 0; i < size / sizeof(HMODULE); ++i) {
        char path[MAX_PATH] = "";
        ::GetModuleFileNameA(modules[i], path, MAX_PATH);
        std::printf("%s\n", fs::path(path).filename().string().c_str());
    }
}

// A folder full of them, under every name that is loaded somewhere, and with its own language
// folders, as current directory, output directory and search path.
class PlantedFolder {
public:
    explicit PlantedFolder(const std::set<std::string>& names) {
        for (const char* const place : {"", "language\\1033", "out"}) {
            fs::create_directories(m_folder.root() / place);
            for (const std::string& name : names) {
                fs::copy_file(planted(), m_folder.root() / place / name);
            }
        }
    }

    ChildOptions options() const {
        return {m_folder.root().string(),
                {"TEST_PLANTED=" + m_marks.path("marks"), "PATH=" + m_folder.root().string(),
                 "TEMP=" + m_marks.root().string(), "TMP=" + m_marks.root().string()}};
    }
    const TempDir& folder() const { return m_folder; }
    // The paths of those that were loaded, a line each.
    std::string marks() const {
        const std::string path = m_marks.path("marks");
        return fs::exists(path) ? readFile(path) : "";
    }

private:
    TempDir m_folder;
    TempDir m_marks;
};

void openHelp() {
    SV::Help help;
    help.Enable(SV::Help::kFullHelp, "no\\such.chm");
    help.Show();
}

void openFileDialog() {
    const BoxWatcher watcher(IDCANCEL);
    char file[MAX_PATH] = "";
    OPENFILENAMEA what = {};
    what.lStructSize = sizeof what;
    what.lpstrFile = file;
    what.nMaxFile = MAX_PATH;
    auto* const open =
        SV::SystemFunction<decltype(::GetOpenFileNameA)>("comdlg32.dll", "GetOpenFileNameA");
    open(&what);
}

HWND frameOf(DWORD processId) {
    HWND frame = nullptr;
    while ((frame = ::FindWindowExA(nullptr, frame, "SvMDIFrame", nullptr)) != nullptr) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(frame, &owner);
        if (owner == processId && ::IsWindowVisible(frame)) return frame;
    }
    return nullptr;
}

// Runs a program of ours to its end; one with windows is closed when it has written its last file,
// as it would otherwise say that its work was stopped.
unsigned long runOurs(const char* name, const std::vector<std::string>& arguments,
                      const ChildOptions& options, const std::string& lastFile) {
    RunningProgram program(programFolder() + "\\" + name, arguments, options);
    while (!program.hasEnded()) {
        const HWND frame = frameOf(program.id());
        if (frame && fs::exists(lastFile)) ::PostMessageA(frame, WM_CLOSE, 0, 0);
        ::Sleep(20);  // it has no way to tell us
    }
    return program.wait().exitCode;
}

const char* const kChildren[] = {"loadEverything", "openFileDialog"};

struct ProgramCase {
    const char* program;
    std::vector<std::string> arguments;
    unsigned long expected;
};

const ProgramCase kPrograms[] = {
    {"zelhost.exe", {"model.gml", "-oout", "-runfigures", "-plug_log", "-no_windows"}, 0},
    {"zelhost.exe", {"model.gml", "-lang1031", "-oout"}, 0},
    {"zelml.exe", {"build", "texts.txt", "out\\zelml.dll"}, 0},
    {"zelml.exe", {"print", "sv18.dll"}, 1},
    {"zeldbuser.exe", {"check", "texts.txt"}, 1},
    {"zelplugcheck.exe", {"zbasic18.dll"}, 1},
};

}  // namespace

// Everything of the library that has the system load something; prints what is loaded then.
CHILD_MAIN(loadEverything) {
    const BoxWatcher watcher(IDOK);
    ZelCmdline::init(1, argv, true, "");
    SV::Application application;
    ZelInternational::InitAvailableLanguages();
    ZelInternational::createResourceManager("zbasic", true);
    ZelInternational::SetCurrentLanguageID(1031);
    Zel_InitializeMultiLanguageStrings();
    ZelPluginManager::Instance().LoadPlugins();
    Fct_CreateMiniDump("planted.cpp", 1);
    Zel_GetNewUUID();
    {
        SV::MDIFrame frame("frame");
        frame.Show();
        const ZelDayMonthControl control(
            &frame, SV::ResId(ZelDayMonthControl::kResource, SV::ResId::kDialog), 0, 0);
        application.Reschedule();
    }
    ZelAsynchronousProcess("x:\\no\\such.txt").Execute(nullptr);
    openHelp();
    printModules();
    return 0;
}

CHILD_MAIN(openFileDialog) {
    const SV::Application application;
    openFileDialog();
    printModules();
    return 0;
}

CHILD_MAIN(loadByName) {
    ZelDLLLoader().load("zelml.dll");
    return 0;
}

TEST(PlantedDlls, AreNeverLoaded) {
    // What is loaded without them there tells their names.
    const TempDir empty;
    std::string loaded;
    for (const char* const child : kChildren) {
        const ChildResult result = runChild(child, {}, {empty.root().string()});
        ASSERT_EQ(result.exitCode, 0U) << child;
        loaded += result.out;
    }
    std::set<std::string> names(std::begin(kNames), std::end(kNames));
    std::istringstream lines(loaded);
    for (std::string name; std::getline(lines, name);) {
        if (fs::path(name).extension() != ".exe") names.insert(name);
    }
    EXPECT_GT(names.size(), std::size(kNames));

    const PlantedFolder place(names);
    place.folder().write("model.gml", "graph [ node [ id 1 ] ]");
    place.folder().write("texts.txt", "7 = \"File\"\n");
    for (const char* const child : kChildren) {
        EXPECT_EQ(runChild(child, {}, place.options()).exitCode, 0U) << child;
        EXPECT_EQ(place.marks(), "") << child;
    }
    const std::string picture = place.folder().path("out\\model.png");
    for (const auto& [program, arguments, expected] : kPrograms) {
        fs::remove(picture);  // of the program before
        EXPECT_EQ(runOurs(program, arguments, place.options(), picture), expected) << program;
        EXPECT_EQ(place.marks(), "") << program;
    }
    // Who gives no path gets what lies there, and it is seen.
    runChild("loadByName", {}, place.options());
    EXPECT_EQ(place.marks(), place.folder().path("zelml.dll") + "\n");
}
