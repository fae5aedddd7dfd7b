// Real programs of every kind: this one's own children, a program with windows, the interpreter.

#include "zbasic/zprocess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sys/redirected_run.h"
#include "zbasic/zapp.h"
#include "zbasic/zcmdline.h"
#include "zbasic/ztextparser.h"

#include <windows.h>

#include <share.h>

namespace fs = std::filesystem;

namespace {

constexpr long kRunning = -1;

std::string quotedSelf() { return "\"" + programPath() + "\""; }

// An event that children can wait for; they are let go at the end of the test at the latest.
class Gate {
public:
    Gate() : m_name("zbasic_gate_" + std::to_string(::GetCurrentProcessId())) {
        m_event = ::CreateEventA(nullptr, TRUE, FALSE, m_name.c_str());
    }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() {
        open();
        ::CloseHandle(m_event);
    }
    void open() const { ::SetEvent(m_event); }
    const std::string& name() const { return m_name; }

private:
    std::string m_name;
    HANDLE m_event;
};

class Variable {
public:
    Variable(const char* name, const char* value) : m_name(name) {
        m_size = ::GetEnvironmentVariableA(name, m_old, sizeof m_old);
        ::SetEnvironmentVariableA(name, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { ::SetEnvironmentVariableA(m_name, m_size ? m_old : nullptr); }

private:
    const char* m_name;
    DWORD m_size;
    char m_old[4096] = "";
};

void waitForFile(const std::string& path) {
    const auto start = std::chrono::steady_clock::now();
    while (!fs::exists(path)) {
        ASSERT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30)) << path;
        ::Sleep(20);  // there is no event to wait for: the shell has started the program
    }
}

// Those that have all of `flags`. Asked one by one: Wine's `GetProcessHandleCount` answers 0.
std::set<std::uintptr_t> openHandles(DWORD flags = 0) {
    std::set<std::uintptr_t> handles;
    for (std::uintptr_t handle = 4; handle < 0x4000; handle += 4) {
        DWORD has = 0;
        if (::GetHandleInformation(reinterpret_cast<HANDLE>(handle), &has) &&
            (has & flags) == flags) {
            handles.insert(handle);
        }
    }
    return handles;
}

std::set<std::uintptr_t> inheritableHandles() { return openHandles(HANDLE_FLAG_INHERIT); }

}  // namespace

CHILD_MAIN(exitWith) {
    ::ExitProcess(static_cast<UINT>(std::strtoul(argc > 1 ? argv[1] : "7", nullptr, 0)));
}

CHILD_MAIN(speak) {
    std::fputs("out\n", stdout);
    std::fputs("err\n", stderr);
    const bool isGood = std::fflush(stdout) == 0 && std::fflush(stderr) == 0;
    return isGood ? 3 : 4;
}

CHILD_MAIN(waitAtGate) {
    const HANDLE gate = ::OpenEventA(SYNCHRONIZE, FALSE, argv[1]);
    if (!gate || ::WaitForSingleObject(gate, 60'000) != WAIT_OBJECT_0) return 1;
    if (argc > 2) std::ofstream(argv[2]) << "done";
    return 5;
}

CHILD_MAIN(writeFile) {
    std::ofstream(argv[1]) << (argc > 2 ? argv[2] : "");
    return 0;
}

TEST(SynchronousProcess, GivesTheExitCodeOnce) {
    struct Case {
        const char* code;
        long expected;
    };
    const Case cases[] = {{"0", 0},
                          {"1", 1},
                          {"255", 255},
                          {"0x7FFFFFFE", 0x7FFFFFFE},
                          {"0xFFFFFFFF", 0x7FFFFFFF},
                          {"0x80000000", 0x7FFFFFFF},
                          {"259", kRunning}};
    for (const auto& [code, expected] : cases) {
        SCOPED_TRACE(code);
        ZelSynchronousProcess process(SV::String(quotedSelf()),
                                      SV::String(std::string("--child exitWith ") + code),
                                      kCmdHide);
        EXPECT_EQ(process.Wait(), kRunning) << "there is nothing to wait for yet";
        EXPECT_EQ(process.GetRetVal(), 0);
        ASSERT_TRUE(startProgram(process));
        EXPECT_EQ(waitFor(process), expected);
        EXPECT_EQ(process.Wait(), kRunning);
        EXPECT_EQ(process.GetRetVal(), expected == kRunning ? 0 : expected);
        const bool isStillUnderWay = expected == kRunning;
        EXPECT_EQ(process.Execute(false), !isStillUnderWay);
        if (!isStillUnderWay) waitFor(process);
    }
}

TEST(SynchronousProcess, IsBusyUntilItsProgramEnds) {
    const Gate gate;
    ZelSynchronousProcess process(SV::String(quotedSelf()),
                                  SV::String("--child waitAtGate " + gate.name()), kCmdHide);
    ASSERT_TRUE(startProgram(process, true));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(process.Wait(), kRunning);
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - start;
    EXPECT_GT(waited.count(), 0.9);
    EXPECT_LT(waited.count(), 5);
    EXPECT_FALSE(process.Execute(true));
    gate.open();
    EXPECT_EQ(waitFor(process), 5);
    EXPECT_EQ(process.Wait(), kRunning);
    EXPECT_EQ(process.GetRetVal(), 5);
}

TEST(SynchronousProcess, LeavesItsProgramRunningWhenItGoes) {
    const TempDir dir;
    const Gate gate;
    const std::string path = dir.path("done");
    {
        ZelSynchronousProcess process(
            SV::String(quotedSelf()),
            SV::String("--child waitAtGate " + gate.name() + " \"" + path + "\""), kCmdHide);
        ASSERT_TRUE(startProgram(process));
    }
    EXPECT_FALSE(fs::exists(path));
    gate.open();
    waitForFile(path);
}

TEST(SynchronousProcess, StartsProgramsOfEveryKind) {
    const std::string folder = programFolder();
    const std::string window = folder + "\\test_window_program.exe";
    struct Case {
        const char* why;
        std::string command;
        std::string parameters;
        ZelCmdShow show;
        long expected;
    };
    const std::string quoted = quotedSelf();
    const Case cases[] = {
        {"console program", quoted, "--child exitWith 9", kCmdHide, 9},
        {"all in the command", quoted + " --child exitWith 8", "", kCmdHide, 8},
        {"program with windows, in quotes", "\"" + window + "\"", "", kCmdShowNormal, 41},
        {"program with windows, hidden", window, "x", kCmdHide, 40},
        {"any show mode", window, "", static_cast<ZelCmdShow>(7), 47},
        {"interpreter", "cmd", "/c exit 6", kCmdHide, 6},
        {"interpreter, nested quotes", "cmd", "/c \"" + quoted + " --child exitWith \"12\"\"",
         kCmdHide, 12},
        {"an extension is not needed", folder + "\\test_window_program", "", kCmdHide, 40},
    };
    for (const auto& [why, command, parameters, show, expected] : cases) {
        SCOPED_TRACE(why);
        ZelSynchronousProcess process{SV::String(command), SV::String(parameters), show};
        ASSERT_TRUE(startProgram(process));
        EXPECT_EQ(waitFor(process), expected);
    }
}

TEST(SynchronousProcess, TakesTheInterpreterForAnEmptyCommand) {
    const std::string commandLine = quotedSelf() + " --child exitWith";
    {
        const Variable interpreter("COMSPEC", commandLine.c_str());
        for (const char* const parameters : {"", "77"}) {  // which are not looked at
            ZelSynchronousProcess process("", parameters, kCmdHide);
            ASSERT_TRUE(startProgram(process));
            EXPECT_EQ(waitFor(process), 7);
        }
    }
    const Variable none("COMSPEC", nullptr);
    EXPECT_FALSE(ZelSynchronousProcess("", "", kCmdHide).Execute(false));
    EXPECT_FALSE(ZelSynchronousProcess("", "/c exit 0", kCmdHide).Execute(false));
}

TEST(SynchronousProcess, SaysWhatCannotBeStarted) {
    const TempDir dir;
    const std::string self = quotedSelf();
    struct Case {
        const char* why;
        std::string command;
    };
    const Case cases[] = {
        {"not there", dir.path("nothing.exe")},
        {"a folder", dir.root().string()},
        {"no program", dir.write("text.exe", "This is a text.")},
        {"nothing but a blank", " "},
        {"nothing but a clause", "1>x"},
        {"too long", self + " --child exitWith 1" + std::string(32'768 - self.size(), ' ')},
        {"much too long", self + std::string(200'000, 'x')},
    };
    for (const auto& [why, command] : cases) {
        SCOPED_TRACE(why);
        ZelSynchronousProcess process{SV::String(command), "", kCmdHide};
        EXPECT_FALSE(process.Execute(false));
        EXPECT_EQ(process.Wait(), kRunning);
        EXPECT_EQ(process.GetRetVal(), 0);
    }
    const std::string start = self + " --child exitWith 1";
    ZelSynchronousProcess longest{SV::String(start + std::string(32'766 - start.size(), ' ')), "",
                                  kCmdHide};
    ASSERT_TRUE(startProgram(longest));
    EXPECT_EQ(waitFor(longest), 1);
}

TEST(SynchronousProcess, LeavesUnquotedBlanksToTheSystem) {
    const TempDir dir;
    const fs::path program = fs::path(programFolder()) / "test_window_program.exe";
    const fs::path withBlank = dir.root() / "a b.exe";
    fs::copy_file(program, withBlank);
    ZelSynchronousProcess alone{SV::String(withBlank.string()), "", kCmdShowNormal};
    ASSERT_TRUE(startProgram(alone));
    EXPECT_EQ(waitFor(alone), 41);
    fs::copy_file("C:\\windows\\system32\\cmd.exe", dir.root() / "a.exe");
    ZelSynchronousProcess shadowed{SV::String(withBlank.string() + " /c exit 9"), "", kCmdHide};
    ASSERT_TRUE(startProgram(shadowed));
    EXPECT_EQ(waitFor(shadowed), 9) << "a.exe has taken its place";
}

TEST(SynchronousProcess, RedirectsBothStreamsInAllCombinations) {
    struct Case {
        const char* clauses;
        const char* out;  // behind a run with "old" in both files
        const char* err;
    };
    const Case cases[] = {
        {"", "old", "old"},
        {" 1>o", "out\n", "old"},
        {" 1>>o", "oldout\n", "old"},
        {" 2>e", "old", "err\n"},
        {" 2>>e", "old", "olderr\n"},
        {" 1>o 2>e", "out\n", "err\n"},
        {" 1>o 2>>e", "out\n", "olderr\n"},
        {" 2>e 1>>o", "oldout\n", "err\n"},
        {" 2>>e 1>>o", "oldout\n", "olderr\n"},
        {" 1>\"o\" 2>>\"e\"", "out\n", "olderr\n"},
    };
    const TempDir dir;
    const CurrentDirectory inDir(dir.root().string());
    for (const bool isOn : {true, false}) {
        for (const auto& [clauses, out, err] : cases) {
            SCOPED_TRACE(std::string(isOn ? "on:" : "off:") + clauses);
            for (const char* const name : {"o", "e"}) dir.write(name, "old");
            ZelSynchronousProcess process(SV::String(quotedSelf()),
                                          SV::String(std::string("--child speak") + clauses),
                                          kCmdHide);
            process.SetUseRedirection(isOn);
            ASSERT_TRUE(startProgram(process)) << ::GetLastError();
            EXPECT_EQ(waitFor(process), 3);
            EXPECT_EQ(textOf(dir.path("o")), isOn ? out : "old");
            EXPECT_EQ(textOf(dir.path("e")), isOn ? err : "old");
        }
    }
}

TEST(SynchronousProcess, FindsRedirectFilesByAnyName) {
    const TempDir dir;
    fs::create_directory(dir.root() / "out dir");
    const std::string path = dir.path("out dir\\x.txt");
    std::string doubled;
    for (const char c : path) doubled.append(c == '\\' ? 2 : 1, c);
    for (const std::string& name : {path, doubled}) {
        SCOPED_TRACE(name);
        ZelSynchronousProcess process(
            "cmd", SV::String("/c echo one& echo two 1>>\"" + name + "\""), kCmdHide);
        process.SetUseRedirection(true);
        ASSERT_TRUE(startProgram(process));
        EXPECT_EQ(waitFor(process), 0);
    }
    EXPECT_EQ(textOf(path), "one\ntwo \none\ntwo \n");
    const CurrentDirectory inDir(dir.root().string());
    EXPECT_EQ(outputOf("--child speak 2>&1"), "out\n");
    EXPECT_EQ(textOf(dir.path("&1")), "err\n");
}

TEST(SynchronousProcess, RunsOnWhenARedirectFileCannotBeOpened) {
    const TempDir dir;
    const CurrentDirectory inDir(dir.root().string());
    fs::create_directory("folder");
    dir.write("locked", "old");
    ::SetFileAttributesA("locked", FILE_ATTRIBUTE_READONLY);
    // Who may do everything, as Wine lets root, may write all the same.
    const bool isLocked = !std::ofstream("locked", std::ios::app);
    dir.write("used", "old");
    std::FILE* const user = ::_fsopen("used", "ab", _SH_DENYRW);
    ASSERT_TRUE(user);
    struct Case {
        const char* why;
        const char* clauses;
        const char* name;
        const char* content;
    };
    const Case cases[] = {
        {"a folder", "1>folder 2>e", "e", "err\n"},
        {"a read-only file", "1>>locked 2>e", "locked", isLocked ? "old" : "oldout\n"},
        {"a file in use", "1>>used 2>e", "e", "err\n"},
        {"a path that is not there", "2>no\\e 1>o", "o", "out\n"},
        {"the same for both", "1>>both 2>>both", "both", "out\nerr\n"},
    };
    for (const auto& [why, clauses, name, content] : cases) {
        SCOPED_TRACE(why);
        ZelSynchronousProcess process(SV::String(quotedSelf()),
                                      SV::String(std::string("--child speak ") + clauses),
                                      kCmdHide);
        process.SetUseRedirection(true);
        ASSERT_TRUE(startProgram(process));
        EXPECT_GE(waitFor(process), 3);  // with a stream that has no handle writing may fail
        EXPECT_EQ(textOf(name), content);
    }
    std::fclose(user);
    ::SetFileAttributesA("locked", FILE_ATTRIBUTE_NORMAL);
    if (fs::exists("Z:\\dev\\full")) {
        ZelSynchronousProcess full(SV::String(quotedSelf()),
                                   R"(--child speak 1>>"Z:\dev\full" 2>e)", kCmdHide);
        full.SetUseRedirection(true);
        ASSERT_TRUE(startProgram(full));
        EXPECT_EQ(waitFor(full), 4) << "the disk is full for the program, not for us";
    }
}

TEST(SynchronousProcess, LetsItsProgramInheritTheRedirectFilesOnly) {
    const TempDir dir;
    const Gate gate;
    const CurrentDirectory inDir(dir.root().string());
    const auto before = inheritableHandles();
    ZelTextFileReader reader{SV::String(dir.write("text", "a\nb\n"))};
    ASSERT_TRUE(reader.Init());
    ZelSynchronousProcess process(SV::String(quotedSelf()),
                                  SV::String("--child waitAtGate " + gate.name() + " 1>o 2>e"),
                                  kCmdHide);
    process.SetUseRedirection(true);
    ASSERT_TRUE(startProgram(process));
    EXPECT_EQ(inheritableHandles(), before) << "of the next program, too";
    gate.open();
    EXPECT_EQ(waitFor(process), 5);
    EXPECT_EQ(inheritableHandles(), before);
}

namespace {

// Says how many files its programs would inherit besides their standard streams.
class TracingApplication : public ZelMDIApplication {
public:
    TracingApplication() : ZelMDIApplication("test", false, "log") {}
    bool getMDIClientImage(SV::Image&, int&) override { return false; }
    int initApplication() override { return 0; }
    int runApplication() override {
        std::printf("%d", static_cast<int>(inheritableHandles().size()));
        return 0;
    }
};

}  // namespace

CHILD_MAIN(countInheritable) {
    TracingApplication application;
    application.Run(argc, argv);
    return 0;
}

TEST(SynchronousProcess, LetsItsProgramInheritNoTraceFile) {
    const TempDir dir;
    const std::string without = runChild("countInheritable").out;
    EXPECT_NE(without, "");
    EXPECT_EQ(runChild("countInheritable", {"-trace", "-trf" + dir.path("trace")}).out, without);
    EXPECT_TRUE(fs::exists(dir.path("trace")));
}

TEST(SynchronousProcess, KeepsNoHandles) {
    const TempDir dir;
    const CurrentDirectory inDir(dir.root().string());
    const auto runMany = [](int count) {
        for (int i = 0; i < count; ++i) {
            ZelSynchronousProcess process(SV::String(programFolder() + "\\test_window_program.exe"),
                                          "1>o 2>>e", kCmdHide);
            process.SetUseRedirection(true);
            ASSERT_TRUE(startProgram(process));
            EXPECT_EQ(waitFor(process), 40);
            ZelSynchronousProcess failing("nowhere\\x.exe 1>p", "", kCmdHide);
            failing.SetUseRedirection(true);
            EXPECT_FALSE(failing.Execute(false));
        }
    };
    runMany(3);  // what the system keeps for later is there now
    const std::size_t before = openHandles().size();
    ASSERT_GT(before, 0u);
    runMany(200);
    EXPECT_EQ(openHandles().size(), before);
}

CHILD_MAIN(announce) {
    ZelCmdline::init(argc, argv, true, "");
    for (const char* const command :
         {"\"x:\\a b\\c.exe\"", "\"x:\\a\" \"b\"", "\"", "\"\"", "x:\\p 1>o"}) {
        ZelSynchronousProcess(command, "-a", kCmdHide).Execute(false);
    }
    const BoxWatcher watcher(IDOK);  // of the shell
    ZelAsynchronousProcess("x:\\no\\file.txt", "-b", kCmdShowNormal).Execute(nullptr);
    ZelAsynchronousProcess("\"x:\\no\"").Execute(nullptr);
    std::printf("%ld", ZelAsynchronousProcess::GetExecuteCount());
    return 0;
}

TEST(Processes, AnnounceThemselvesWithoutOuterQuotes) {
    const ChildResult result = runChild("announce", {"-console"}, {"", {"COMSPEC=x:\\cmd"}});
    EXPECT_EQ(result.err,
              "[zproc] Synchronous exec: x:\\a b\\c.exe -a\n"
              "[zproc] Synchronous exec: \"x:\\a\" \"b\" -a\n"
              "[zproc] Synchronous exec: \" -a\n"
              "[zproc] Synchronous exec: x:\\cmd\n"
              "[zproc] Synchronous exec: x:\\p  -a\n"
              "[zproc] Asynchronous exec: x:\\no\\file.txt -b\n"
              "[zproc] Asynchronous exec: x:\\no \n");
    EXPECT_EQ(result.out, "2");
}

TEST(AsynchronousProcess, LetsTheShellOpenIt) {
    const TempDir dir;
    const std::string path = dir.path("written");
    const Variable self("ZBASIC_TEST_SELF", programPath().c_str());
    const long before = ZelAsynchronousProcess::GetExecuteCount();
    const std::string parameters = "--child writeFile \"" + path + "\"";
    EXPECT_TRUE(ZelAsynchronousProcess("%ZBASIC_TEST_SELF%", SV::String(parameters), kCmdHide)
                    .Execute(nullptr));
    waitForFile(path);
    const BoxWatcher watcher(IDOK);  // the shell tells the user
    EXPECT_FALSE(ZelAsynchronousProcess(SV::String(dir.path("missing.txt"))).Execute(nullptr));
    EXPECT_EQ(ZelAsynchronousProcess::GetExecuteCount(), before + 2);
}
