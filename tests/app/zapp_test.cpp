#include "zbasic/zapp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/speaking_application.h"
#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/resource.h"
#include "sv/window.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"

#include <windows.h>

CHILD_MAIN(appPhases) { return runApplication(argc, argv, nullptr); }

TEST(ZelApp, PhasesFollowEachOther) {
    struct Case {
        const char* why;
        std::vector<std::string> arguments;
        unsigned long exitCode;
        const char* out;
    };
    const Case cases[] = {
        {"all is well", {}, 0, "init\nrun\nexit: end(0), after main 1\nreturned\n"},
        {"the body fails", {"-run7"}, 7, "init\nrun\nexit: end(7), after main 1\n"},
        {"initialisation fails", {"-init3"}, 3, "init\nexit: end(3), after main 1\n"},
    };
    for (const auto& [why, arguments, exitCode, out] : cases) {
        SCOPED_TRACE(why);
        const ChildResult result = runChild("appPhases", arguments);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.out, out);
    }
}

namespace {

void printSettings(SpeakingApplication& application) {
    const SV::Font& font = application.GetAppFont();
    std::printf("font %s %d charset %d color %d/%d\n", font.GetFace().c_str(),
                font.GetSize().height, font.GetCharSet(), font.GetTextColor(), font.GetFillColor());
    std::printf("language %d\n", ZelInternational::GetCurrentLanguageID());
    const SV::International& texts = application.GetAppInternational();
    std::printf("buttons %s %s %s\n", texts.GetOKText().c_str(), texts.GetCancelText().c_str(),
                texts.GetHelpText().c_str());
    std::printf("cwd %s %s %s\n", Zel_GetStartCWD(true).c_str(), Zel_GetStartCWD(false).c_str(),
                Zel_GetStartCWDFilename("x.txt").c_str());
    std::printf("gui %d suppressed %d %d log %s\n", ZelApplicationInterface::IsWithGUI(),
                SV::Application::IsModalDialogSuppression(),
                SV::Application::IsShowWindowSuppression(),
                SV::Application::GetModalDialogSuppressionLogfileName().c_str());
}

}  // namespace

CHILD_MAIN(appSettings) { return runApplication(argc, argv, printSettings); }

CHILD_MAIN(appWithoutGui) { return runApplication(argc, argv, printSettings, false); }

TEST(ZelApp, SettingsComeFromTheCommandLine) {
    struct Case {
        const char* argument;
        const char* expected;  // a line of the child's output
    };
    // One pixel a point: the virtual screen has 96 dots an inch.
    const Case cases[] = {
        {"", "font Segoe UI 12 charset 1 color 20/21"},
        {"-h3", "font Segoe UI 12 charset"},
        {"-h4", "font Segoe UI 4 charset"},
        {"-h48", "font Segoe UI 48 charset"},
        {"-h49", "font Segoe UI 12 charset"},
        {"-fArial", "font Arial 12 charset"},
        {"-charset238", "charset 238 color"},
        {"-lang1031", "language 1031"},
        {"-lang0", "language 1033"},
        {"-langGerman", "language 1031"},
        {"-langDeutsch", "language 1031"},
        {"-langDeutschland", "language 1031"},
        {"-langde", "language 1031"},
        {"-langKlingon", "language 1033"},
        {"-lang1031", "buttons OK Abbrechen Hilfe"},
        {"", "buttons OK Cancel Help"},
        {"", "gui 1 suppressed 0 0 log \n"},
        {"-no_dialogs", "gui 1 suppressed 1 0"},
        {"-no_windows", "gui 1 suppressed 0 1"},
    };
    for (const auto& [argument, expected] : cases) {
        SCOPED_TRACE(argument);
        const ChildResult result = runChild("appSettings", {argument});
        expectPart(expected, result.out);
    }
    const ChildResult silent = runChild("appWithoutGui", {"-logC:\\d.txt"});
    expectPart("gui 0 suppressed 1 1 log C:\\d.txt\n", silent.out);
}

TEST(ZelApp, WritesPidAndTraceFilesAndRemembersWhereItStarted) {
    const TempDir dir;
    const ChildResult result = runChild(
        "appSettings", {"-pidfile" + dir.path("pid.txt"), "-trace", "-trf" + dir.path("trace.txt")},
        {dir.root().string(), {}});
    const std::string pid = readFile(dir.root() / "pid.txt");
    EXPECT_GT(std::atoi(pid.c_str()), 0);
    EXPECT_TRUE(pid.ends_with("\n")) << pid;
    EXPECT_TRUE(std::filesystem::exists(dir.root() / "trace.txt"));
    const std::string root = dir.root().string();
    expectPart("cwd " + root + "\\ " + root + " " + root + "\\x.txt\n", result.out);
    // Files that cannot be written are passed over.
    EXPECT_EQ(runChild("appSettings", {"-pidfileC:\\no\\such\\f", "-trfC:\\no\\such\\f"}).exitCode,
              0u);
}

// Raises the failure that its first option names, with a watcher that answers the box.
CHILD_MAIN(appException) {
    return runApplication(argc, argv, [](SpeakingApplication& application) {
        const BoxWatcher watcher(IDOK);
        const ZelCmdline& line = ZelCmdline::Instance();
        const long code = line.getLong("code");
        const auto detail = static_cast<unsigned long>(line.getLong("detail"));
        std::printf("handled %d\n", application._handleException(code, detail));
        for (const SeenBox& box : watcher.seen()) {
            std::printf("<%s> %s\n", box.caption.c_str(), box.text.c_str());
        }
    });
}

TEST(ZelApp, AFatalFailureIsShownAndDumped) {
    const char* const kEnd =
        "\n\nThis is a severe error!!\n\nThe application will shut down immediately!\n\n"
        "Please inform your administrator!!\n";
    struct Case {
        std::vector<std::string> arguments;
        const char* message;
    };
    const Case cases[] = {
        {{"-code256", "-detail77"},
         "[tester-10001]\nInternal error loading a resource.\nResource ID: 77"},
        {{"-code512", "-detail8"},
         "[tester-10002]\nSystem object (e.g. window) could not be created.\nError code: 8"},
        {{"-code1024"}, "[tester-10004]\nInternal error loading a resource file."},
        {{"-code-5", "-detail1"}, "[tester-10003]\nGeneral exception -5 occured.\nResource ID: 1"},
    };
    for (const auto& [arguments, message] : cases) {
        SCOPED_TRACE(message);
        const TempDir dumps;
        // A dump takes seconds: one of them is really written, the others find no folder.
        const bool isDumped = arguments.size() == 1;
        const std::string folder = isDumped ? dumps.root().string() : dumps.path("missing");
        const ChildResult result =
            runChild("appException", arguments, {"", {"TEMP=" + folder, "TMP=" + folder}});
        expectPart("exit: exception (minidump), after main 0\nhandled 0\n", result.out);
        expectPart("<tester> " + std::string(message) + kEnd, result.out);
        const auto files = std::filesystem::directory_iterator(dumps.root());
        const bool isThere = std::any_of(begin(files), end(files), [](const auto& file) {
            return file.path().filename().string().find("_zapp_630_") != std::string::npos;
        });
        EXPECT_EQ(isThere, isDumped);
    }
}

namespace {

std::optional<BoxWatcher> g_watcher;

// Raises a second failure as soon as the box of the first is shown, and only then has boxes
// answered.
void CALLBACK raiseSecond(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = ::FindWindowA("#32770", "tester");
    DWORD process = 0;
    if (!box || !::IsWindowVisible(box)) return;
    ::GetWindowThreadProcessId(box, &process);
    if (process != ::GetCurrentProcessId()) return;
    ::KillTimer(nullptr, timer);
    g_watcher.emplace(IDOK);
    const SV::Window* const top = Zel_GetTopParentWindow();
    std::printf("owned %d\n", ::GetWindow(box, GW_OWNER) == (top ? top->GetHandle() : nullptr));
    auto* const application = static_cast<SpeakingApplication*>(SV::GetpApp());
    std::printf("second %d\n", application->_handleException(512, 2));
}

}  // namespace

CHILD_MAIN(appSecondException) {
    return runApplication(argc, argv, [](SpeakingApplication& application) {
        SV::MDIFrame lower("lower"), upper("upper");
        if (ZelCmdline::Instance().getInt("windows") != 0) {
            Zel_PushParentWindow(&lower);
            Zel_PushParentWindow(&upper);
        }
        ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, raiseSecond);
        std::printf("first %d\n", application._handleException(512, 1));
        for (const SeenBox& box : g_watcher->seen()) {
            std::printf("%s\n", box.text.substr(0, box.text.find("\n\n")).c_str());
        }
        // Over: the next one is handled again.
        std::printf("next %d\n", application._handleException(512, 3));
        std::printf("boxes %zu\n", g_watcher->seen().size());
        g_watcher.reset();
    });
}

TEST(ZelApp, AFailureWhileAnotherIsShownIsNotHandled) {
    const TempDir dir;
    const std::string missing = dir.path("missing");  // no dump, which takes seconds
    for (const char* windows : {"-windows0", "-windows1"}) {
        SCOPED_TRACE(windows);
        const ChildResult result =
            runChild("appSecondException", {windows}, {"", {"TEMP=" + missing, "TMP=" + missing}});
        expectPart(
            "owned 1\nsecond 0\nexit: exception (minidump), after main 0\n"
            "first 0\n[tester-10002]\nSystem object (e.g. window) could not "
            "be created.\nError code: 1\n"
            "exit: exception (minidump), after main 0\nnext 0\nboxes 2\n",
            result.out);
    }
}

CHILD_MAIN(appNextManager) {
    return runApplication(argc, argv, [](SpeakingApplication& application) {
        application.createResourceManager("zbasic", true);  // besides that of the start
        SV::ResMgr* const first = SV::Resource::GetResManager();
        const bool isHandled = application._handleException(256, 1);
        std::printf("handled %d, moved %d\n", isHandled, SV::Resource::GetResManager() != first);
        std::printf("text %s\n", SV::Resource::GetString(SV::ResId(25100)).c_str());
        // A file that is in no folder raises 1024 twice inside; the box is about the file.
        const BoxWatcher watcher(IDOK);
        std::printf("missing %d\n", application.createResourceManager("nothing", true));
        for (const SeenBox& box : watcher.seen()) std::printf("<%s>\n", box.caption.c_str());
    });
}

TEST(ZelApp, GoesOnWithTheNextResourceFile) {
    const ChildResult result = runChild("appNextManager");
    expectPart(
        "handled 1, moved 1\ntext January\nmissing 0\n"
        "<Zelkit: error loading resource file>\n",
        result.out);
}

namespace {

// Notes every event of one type as a line of text.
class NotingListener : public ZelEventListener {
public:
    NotingListener(ZelEventType type, std::string (*describe)(ZelEvent*)) : m_describe(describe) {
        setEventHandler(type, static_cast<Handler>(&NotingListener::onEvent), 100);
    }
    void onEvent(ZelEvent* event) { seen.push_back(m_describe(event)); }

    std::vector<std::string> seen;

private:
    std::string (*m_describe)(ZelEvent*);
};

std::string workspaceColor() {
    return std::to_string(
        ZelThemeManager::Instance().GetColor(ZelThemeManager::kWorkspace).GetRef());
}

// Another colour of the system's behind MDI windows, for as long as it lives.
class OtherWorkspaceColor {
public:
    explicit OtherWorkspaceColor(COLORREF color) : m_before(::GetSysColor(COLOR_APPWORKSPACE)) {
        set(color);
    }
    OtherWorkspaceColor(const OtherWorkspaceColor&) = delete;
    OtherWorkspaceColor& operator=(const OtherWorkspaceColor&) = delete;
    ~OtherWorkspaceColor() { set(m_before); }

private:
    static void set(COLORREF color) {
        const int item = COLOR_APPWORKSPACE;
        ::SetSysColors(1, &item, &color);
    }

    const COLORREF m_before;
};

}  // namespace

TEST(ZelApp, TellsEverybodyOfChangedSettings) {
    SpeakingApplication application;
    const NotingListener listener(ZelEvent_SystemSettingsChanged, [](ZelEvent* event) {
        const auto* const change = static_cast<ZelSystemSettingsChangedEvent*>(event);
        return std::to_string(static_cast<int>(change->GetChangeType())) + " " + workspaceColor();
    });
    const std::string before = workspaceColor();
    {
        const OtherWorkspaceColor color(RGB(1, 2, 3));
        for (const int type : {1, 3, 77, 4}) {
            application.SysChange(static_cast<SV::SysChangeType>(type));
        }
    }
    application.SysChange(SV::SysChangeType::kVisualStyle);
    const std::string changed = std::to_string(RGB(1, 2, 3));
    // Only the fourth one is about the visual style, and the theme knows of it first.
    EXPECT_EQ(listener.seen, (std::vector<std::string>{"1 " + before, "3 " + before, "77 " + before,
                                                       "4 " + changed, "4 " + before}));
}

TEST(ZelWindowStack, AnnouncesEachChange) {
    const NotingListener listener(ZelEvent_ZelWindowStackChanged, [](ZelEvent* event) {
        const auto* const change = static_cast<ZelWindowStackChangedEvent*>(event);
        return (change->IsAdded() ? "+" : "-") + std::to_string(change->GetNumber()) + " " +
               change->GetText().c_str();
    });
    SpeakingApplication application;
    SV::MDIFrame lower("lower"), upper("upper");
    EXPECT_EQ(Zel_GetTopParentWindow(), nullptr);
    Zel_PopParentWindow();
    EXPECT_TRUE(listener.seen.empty()) << "nothing happens to an empty stack";

    Zel_PushParentWindow(&lower);
    Zel_PushParentWindow(&upper);
    EXPECT_EQ(Zel_GetTopParentWindow(), &upper);
    Zel_PushParentWindow(nullptr);
    EXPECT_EQ(Zel_GetTopParentWindow(), nullptr);
    Zel_PopParentWindow();
    EXPECT_EQ(Zel_GetTopParentWindow(), &upper);
    Zel_PopParentWindow();
    EXPECT_EQ(Zel_GetTopParentWindow(), &lower);
    Zel_PopParentWindow();
    Zel_PopParentWindow();
    EXPECT_EQ(Zel_GetTopParentWindow(), nullptr);
    EXPECT_EQ(listener.seen, (std::vector<std::string>{"+1 lower", "+2 upper", "+3 ", "-2 ",
                                                       "-1 upper", "-0 lower"}));
}

TEST(ZelScreen, AnswersForDefaultFonts) {
    EXPECT_TRUE(Zel_IsAtLeastWindowsVista());
    const HDC screen = ::GetDC(nullptr);
    EXPECT_EQ(Zel_GetSystemDPIScaleY() * 96, ::GetDeviceCaps(screen, LOGPIXELSY));
    ::ReleaseDC(nullptr, screen);
}
