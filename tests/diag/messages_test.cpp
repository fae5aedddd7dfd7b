// Boxes are really shown and answered, by processes of their own: what was shown once per process
// does not come again.

#undef NDEBUG  // the assertion macro is tested, whatever this build is
#include "zbasic/ztrace.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "sv/resource.h"
#include "sv/window.h"
#include "zbasic/zcmdline.h"

#include <windows.h>

namespace {

constexpr unsigned long kBrokeIntoDebugger = 0x80000003UL;

void print(const BoxWatcher& watcher) {
    for (const SeenBox& box : watcher.seen()) {
        std::printf("<%s>\n%s\n", box.caption.c_str(), box.text.c_str());
        if (!box.hasErrorIcon) std::printf("(no error icon)");
        for (const std::string& button : box.buttons) std::printf("[%s]", button.c_str());
        std::printf("\n");
    }
}

// The application window, with the option "window".
std::optional<SV::MDIFrame> openWindow() {
    if (!ZelCmdline::Instance().isFlag("window")) return std::nullopt;
    return std::optional<SV::MDIFrame>(std::in_place, "The program");
}

// A child process, and the dumps that it leaves behind.
struct Outcome {
    ChildResult result;
    std::vector<std::string> dumps;
};

// Where no dump is looked at, there is no place for one either: it takes seconds under Wine.
enum class Dumps { kAllowed, kNoPlace };

Outcome runAndCountDumps(const std::string& name, const std::vector<std::string>& arguments,
                         std::vector<std::string> environment = {}, Dumps dumps = Dumps::kAllowed) {
    const TempDir directory;
    const std::string path =
        dumps == Dumps::kAllowed ? directory.root().string() : directory.path("missing");
    environment.insert(environment.end(), {"TEMP=" + path, "TMP=" + path});
    Outcome outcome = {runChild(name, arguments, {"", environment}), {}};
    for (const auto& entry : std::filesystem::directory_iterator(directory.root())) {
        outcome.dumps.push_back(entry.path().filename().string());
    }
    return outcome;
}

// A text of the given size, so that the tests see where a buffer would end.
const std::string kLongText(20'000, 'L');

}  // namespace

CHILD_MAIN(assertion) {
    ZelCmdline::init(argc, argv, true, "");
    SV::Application::SetModalDialogSuppression(ZelCmdline::Instance().modalDialogSuppression());
    const BoxWatcher watcher(IDOK);
    const bool wantsDebugger = ZEL_Assert_Fail("Grid.cxx", 12, "n > 0", "the grid is empty");
    print(watcher);
    return wantsDebugger ? 1 : 0;
}

TEST(Assertion, ShowsABoxAndWritesADebugLine) {
    const auto [result, dumps] = runAndCountDumps("assertion", {"-console"});
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_EQ(result.out,
              "<Assertion failed>\n"
              "Assertion failed!\nFile Grid.cxx line 12:\n\nExpression: 'n > 0'\n\n"
              "User message:\n  'the grid is empty'\n\n"
              "[OK]\n");
    EXPECT_EQ(result.err, "[assertion] Grid.cxx (12): n > 0\n");
    EXPECT_TRUE(dumps.empty());
}

TEST(Assertion, ReportsABoxThatWasSuppressedAsFailed) {
    const auto [result, dumps] = runAndCountDumps("assertion", {"-console", "-no_dialogs"});
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "[assertion] Grid.cxx (12): n > 0\n"
              "            MessageBox errorcode: 0\n");
    EXPECT_TRUE(dumps.empty());
}

TEST(Assertion, WritesADumpWhenTheEnvironmentAsks) {
    const auto [result, dumps] =
        runAndCountDumps("assertion", {"-no_dialogs"}, {"ZEL_DUMP_ASSERTION=no"});
    ASSERT_EQ(dumps.size(), 1U);
    EXPECT_NE(dumps[0].find("_Grid.cxx_12_"), std::string::npos) << dumps[0];
}

CHILD_MAIN(assertionMacro) {
    ZelCmdline::init(argc, argv, true, "");
    SV::Application::SetModalDialogSuppression(true);
    int evaluated = 0;
    ZEL_ASSERT(++evaluated == 1, "holds");
    ZEL_ASSERT(++evaluated == 1, kLongText.c_str());
    if (evaluated == 2) ZEL_Assert_Fail(kLongText.c_str(), 1, kLongText.c_str(), nullptr);
    return 0;
}

TEST(Assertion, MacroReportsOnlyWhatDoesNotHold) {
    const ChildResult result = runChild("assertionMacro", {"-console"});
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_NE(result.err.find("): ++evaluated == 1\n"), std::string::npos);
    EXPECT_EQ(result.err.find("++evaluated"), result.err.rfind("++evaluated"));
    EXPECT_NE(result.err.find("[assertion] " + kLongText + " (1): " + kLongText + "\n"),
              std::string::npos);
}

CHILD_MAIN(errorWithoutApplication) {
    ZelCmdline::init(argc, argv, true, "");
    displayErrorMessage("GRID.cxx", 5);
    return 0;
}

TEST(InternalError, NeedsAnApplication) {
    const auto [result, dumps] = runAndCountDumps("errorWithoutApplication", {"-console"});
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(dumps.empty());
}

CHILD_MAIN(error) {
    ZelCmdline::init(argc, argv, true, "");
    SV::Application application;
    const bool isPlain = ZelCmdline::Instance().isFlag("plain");
    const SV::ResMgr texts(isPlain ? "test_plaintext.dll" : "test_texts.dll");
    SV::Application::SetModalDialogSuppression(ZelCmdline::Instance().modalDialogSuppression());
    const BoxWatcher watcher(ZelCmdline::Instance().isFlag("cancel") ? IDCANCEL : IDOK);
    application.Wait(ZelCmdline::Instance().isFlag("busy"));
    const auto window = openWindow();
    displayErrorMessage("GRID.cxx", 5);
    print(watcher);
    std::printf("busy: %d\n", application.IsWait());
    return 0;
}

struct ErrorCase {
    const char* why;
    std::vector<std::string> arguments;
    const char* out;
    unsigned long exitCode = 0;
    Dumps dumps = Dumps::kNoPlace;
};

const ErrorCase kErrors[] = {
    {"without a window; cancelling means nothing without the hint",
     {"-cancel"},
     "<Unexpected program failure>\nFault grid-5 [1.8.0.230922] (not %s).\n[OK]\nbusy: 0\n"},
    {"with a window; who was busy stays so",
     {"-window", "-busy"},
     "<The program>\nFault grid-5 [1.8.0.230922] (not %s).\n[OK]\nbusy: 1\n"},
    {"a text without a place for the code",
     {"-plain"},
     "<Unexpected program failure>\nA fault, 100%.\n[OK]\nbusy: 0\n"},
    {"release assertions offer to debug",
     {"-assert"},
     "<Unexpected program failure>\nFault grid-5 [1.8.0.230922] (not %s).\n\n"
     " Press Cancel to debug!\n[OK][Cancel]\nbusy: 0\n"},
    {"accepted", {"-assert", "-cancel"}, "", kBrokeIntoDebugger, Dumps::kAllowed},
    {"suppressed", {"-no_dialogs", "-assert"}, "busy: 0\n", 0, Dumps::kAllowed},
};

TEST(InternalError, IsShownDumpedAndWrittenToTheDebugOutput) {
    for (const auto& [why, arguments, out, exitCode, allowed] : kErrors) {
        SCOPED_TRACE(why);
        std::vector<std::string> all = {"-console"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto [result, dumps] = runAndCountDumps("error", all, {}, allowed);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, "[dEM] GRID.cxx (5): grid-5 [1.8.0.230922]\n");
        if (allowed == Dumps::kNoPlace) continue;
        ASSERT_EQ(dumps.size(), 1U);
        EXPECT_NE(dumps[0].find("_GRID.cxx_5_"), std::string::npos) << dumps[0];
    }
}

CHILD_MAIN(errorBehindAnotherWindow) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    SV::MDIFrame frame("The program");
    frame.Show();
    const HWND other = ::CreateWindowExA(0, "STATIC", "another", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                         0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    ::SetForegroundWindow(other);
    std::printf("behind: %d\n", ::GetForegroundWindow() == other);
    SV::Application::SetModalDialogSuppression(true);
    displayErrorMessage("GRID.cxx", 5);
    std::printf("in front: %d\n", ::GetForegroundWindow() == frame.GetHandle());
    ::DestroyWindow(other);
    return 0;
}

TEST(InternalError, BringsTheApplicationWindowToTheFront) {
    EXPECT_EQ(runAndCountDumps("errorBehindAnotherWindow", {}, {}, Dumps::kNoPlace).result.out,
              "behind: 1\nin front: 1\n");
}

CHILD_MAIN(errorNames) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    SV::Application::SetModalDialogSuppression(true);
    displayErrorMessage("\xC4rger.cxx", 4'000'000'000U);
    displayErrorMessage("cpp", 1);
    return 0;
}

TEST(InternalError, MakesItsCodeOfNameAndLine) {
    const std::string version = " [1.8.0.230922]\n";
    EXPECT_EQ(runAndCountDumps("errorNames", {"-console"}, {}, Dumps::kNoPlace).result.err,
              "[dEM] \x8Erger.cxx (4000000000): \x84rger-4000000000" + version +
                  "[dEM] cpp (1): -1" + version);
}

CHILD_MAIN(deadNet) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    std::optional<SV::ResMgr> texts;
    if (!ZelCmdline::Instance().isFlag("own")) texts.emplace("test_texts.dll");
    SV::Application::SetModalDialogSuppression(ZelCmdline::Instance().modalDialogSuppression());
    SV::Application::SetModalDialogSuppressionLogfileName(ZelCmdline::Instance().getValue("log"));
    const BoxWatcher watcher(ZelCmdline::Instance().isFlag("cancel") ? IDCANCEL : IDOK);
    const auto window = openWindow();
    Zel_SetDeadNet(true);
    displayErrorMessage("GRID.cxx", 5);
    displayErrorMessage("GRID.cxx", 6);
    displayDeadNetworkMessage();
    print(watcher);
    return 0;
}

const ErrorCase kDeadNets[] = {
    {"shown once", {}, "<Unexpected program failure>\nThe line is dead.\n[OK]\n"},
    {"with a window", {"-window"}, "<The program>\nThe line is dead.\n[OK]\n"},
    {"release assertions offer to debug",
     {"-assert"},
     "<Unexpected program failure>\nThe line is dead.\n\n Press Cancel to debug!\n[OK][Cancel]\n"},
    {"accepted", {"-assert", "-cancel"}, "", kBrokeIntoDebugger},
    {"suppressed", {"-no_dialogs"}, ""},
};

TEST(DeadNetwork, IsToldOnceInsteadOfEveryError) {
    for (const auto& [why, arguments, out, exitCode, unused] : kDeadNets) {
        SCOPED_TRACE(why);
        std::vector<std::string> all = {"-console"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto [result, dumps] = runAndCountDumps("deadNet", all);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(dumps.empty());
    }
}

TEST(DeadNetwork, GoesToTheLogOnceWhenSuppressed) {
    const TempDir directory;
    runChild("deadNet", {"-no_dialogs", "-log" + directory.path("dialogs.txt")});
    EXPECT_EQ(readFile(directory.path("dialogs.txt")),
              "displayDeadNetworkMessage()\r\nThe line is dead.\r\n");
}

TEST(DeadNetwork, HasATextWithoutAResourceFile) {
    const TempDir directory;
    runChild("deadNet", {"-own", "-no_dialogs", "-log" + directory.path("dialogs.txt")});
    const std::string log = readFile(directory.path("dialogs.txt"));
    EXPECT_NE(log.find(" connection "), std::string::npos) << log;
}

CHILD_MAIN(exitNotice) {
    ZelCmdline::init(argc, argv, true, "");
    SV::Application::SetModalDialogSuppression(ZelCmdline::Instance().modalDialogSuppression());
    SV::Application::SetModalDialogSuppressionLogfileName(ZelCmdline::Instance().getValue("log"));
    const BoxWatcher watcher(ZelCmdline::Instance().isFlag("cancel") ? IDCANCEL : IDOK);
    const auto window = openWindow();
    displayExitMessage();
    displayExitMessage();
    print(watcher);
    return 0;
}

const ErrorCase kExits[] = {
    {"nothing for users", {}, ""},
    {"shown once with release assertions",
     {"-assert"},
     "<Unexpected program failure>\n--- E X I T ---\n\nPress Cancel to debug.\n[OK][Cancel]\n"},
    {"with a window",
     {"-assert", "-window"},
     "<The program>\n--- E X I T ---\n\nPress Cancel to debug.\n[OK][Cancel]\n"},
    {"accepted", {"-assert", "-cancel"}, "", kBrokeIntoDebugger},
    {"suppressed", {"-no_dialogs", "-assert"}, ""},
};

TEST(ExitNotice, IsForDevelopers) {
    for (const auto& [why, arguments, out, exitCode, unused] : kExits) {
        SCOPED_TRACE(why);
        const ChildResult result = runChild("exitNotice", arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, out);
    }
}

TEST(ExitNotice, GoesToTheLogOnceWhenSuppressed) {
    const TempDir directory;
    runChild("exitNotice", {"-no_dialogs", "-log" + directory.path("dialogs.txt")});
    EXPECT_EQ(readFile(directory.path("dialogs.txt")), "--- E X I T ---\r\n");
}
