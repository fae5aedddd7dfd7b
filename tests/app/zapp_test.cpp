#include "zbasic/zapp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "sv/resource.h"
#include "sv/window.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

// Says on standard output what start-up and shut-down do.
class SpeakingApplication : public ZelMDIApplication {
public:
    explicit SpeakingApplication(bool withGUI = true)
        : ZelMDIApplication("tester", withGUI, "log") {}

    int initApplication() override {
        std::puts("init");
        createResourceManager("zbasic", true);
        return ZelCmdline::Instance().getInt("init");
    }
    int runApplication() override {
        std::puts("run");
        if (body) body(*this);
        return ZelCmdline::Instance().getInt("run");
    }
    bool getMDIClientImage(SV::Image& image, int& mode) override {
        image = background;
        mode = backgroundMode;
        return !background.IsEmpty();
    }
    void setBackground(const SV::Image& image, int mode) {
        m_clientImage = SV::Bitmap(image);
        m_clientImageMode = mode;
    }
    SV::Size clientImageSize() const { return m_clientImage.GetSize(); }
    using ZelApplicationInterface::_handleException;

    void (*body)(SpeakingApplication&) = nullptr;
    SV::Image background;
    int backgroundMode = kNoImage;
};

class ExitListener : public ZelEventListener {
public:
    ExitListener() {
        setEventHandler(ZelEvent_AppExit,
                        static_cast<void (ZelEventListener::*)(ZelEvent*)>(&ExitListener::onExit),
                        100);
    }
    void onExit(ZelEvent* event) {
        const auto* const exit = static_cast<ZelExitAppEvent*>(event);
        std::printf("exit: %s, after main %d\n", exit->GetReason().c_str(),
                    ZelApplicationInterface::IsAfterMain());
        std::fflush(stdout);
    }
};

int runApplication(int argc, char** argv, void (*body)(SpeakingApplication&), bool withGUI = true) {
    SpeakingApplication application(withGUI);
    const ExitListener listener;
    application.body = body;
    application.Run(argc, argv);
    std::puts("returned");
    return 0;
}

}  // namespace

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

CHILD_MAIN(appSettings) {
    return runApplication(argc, argv, [](SpeakingApplication& application) {
        const SV::Font& font = application.GetAppFont();
        std::printf("font %s %d charset %d color %d/%d\n", font.GetFace().c_str(),
                    font.GetSize().height, font.GetCharSet(), font.GetTextColor(),
                    font.GetFillColor());
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
    });
}

CHILD_MAIN(appWithoutGui) {
    return runApplication(
        argc, argv,
        [](SpeakingApplication&) {
            std::printf("gui %d suppressed %d %d log %s\n", ZelApplicationInterface::IsWithGUI(),
                        SV::Application::IsModalDialogSuppression(),
                        SV::Application::IsShowWindowSuppression(),
                        SV::Application::GetModalDialogSuppressionLogfileName().c_str());
        },
        false);
}

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
        EXPECT_NE(result.out.find(expected), std::string::npos) << result.out;
    }
    const ChildResult silent = runChild("appWithoutGui", {"-logC:\\d.txt"});
    EXPECT_NE(silent.out.find("gui 0 suppressed 1 1 log C:\\d.txt\n"), std::string::npos)
        << silent.out;
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
    EXPECT_NE(result.out.find("cwd " + root + "\\ " + root + " " + root + "\\x.txt\n"),
              std::string::npos)
        << result.out;
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
        EXPECT_NE(result.out.find("exit: exception (minidump), after main 0\nhandled 0\n"),
                  std::string::npos)
            << result.out;
        EXPECT_NE(result.out.find("<tester> " + std::string(message) + kEnd), std::string::npos)
            << result.out;
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
        EXPECT_NE(result.out.find("owned 1\nsecond 0\nexit: exception (minidump), after main 0\n"
                                  "first 0\n[tester-10002]\nSystem object (e.g. window) could not "
                                  "be created.\nError code: 1\n"
                                  "exit: exception (minidump), after main 0\nnext 0\nboxes 2\n"),
                  std::string::npos)
            << result.out;
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
    EXPECT_NE(result.out.find("handled 1, moved 1\ntext January\nmissing 0\n"
                              "<Zelkit: error loading resource file>\n"),
              std::string::npos)
        << result.out;
}

namespace {

// Writes a debug line around that of the library about the end.
class ExitNeighbour : public ZelEventListener {
public:
    ExitNeighbour(const char* line, ZelEventPriority priority) : m_line(line) {
        setEventHandler(ZelEvent_AppExit, static_cast<Handler>(&ExitNeighbour::onExit), priority);
    }
    void onExit(ZelEvent*) { ZelDebugOut(m_line); }

private:
    const char* m_line;
};

class OtherEvent : public ZelEvent {
public:
    explicit OtherEvent(ZelEventType type) : ZelEvent(type) {}
};

}  // namespace

CHILD_MAIN(appConsole) {
    ::FreeConsole();  // the test program's; the application opens its own
    const ExitNeighbour before("601\n", 601);
    const ExitNeighbour behind("599\n", 599);
    return runApplication(argc, argv, [](SpeakingApplication&) {
        ZelDebugOut("[zel] a debug line\n");
        ZelAppChangeStartupPhaseEvent("[host] libraries").trigger();
        OtherEvent(ZelEvent_AppChangeStartupPhase).trigger();  // carries no text to show
        OtherEvent(ZelEvent_AppInitialized).trigger();
        ZelWindowStackChangedEvent(3, true, "Model").trigger();
        ZelWindowStackChangedEvent(-2, false, "").trigger();
        OtherEvent(ZelEvent_ZelWindowStackChanged).trigger();
        char title[200] = "";
        ::GetConsoleTitleA(title, sizeof title);
        std::printf("title %s\n", title);
        const bool isRaised = ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
        ::Sleep(300);  // the handler runs on a thread of the system's
        std::printf("raised %d\n", isRaised);
    });
}

TEST(ZelApp, TheDynamicConsoleShowsWhatGoesOn) {
    const ChildResult result = runChild("appConsole", {"-console", "-langKlingon"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_NE(result.out.find("title [Zelkit 1.8_230922] - dynamic console\n"), std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("[exception] Ctrl+C was pressed\n"), std::string::npos) << result.out;
    EXPECT_NE(result.err.find("[locale] The locale 'Klingon' could not be resolved!\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(result.err.substr(std::min(result.err.size(), result.err.find("[zel]"))),
              "[zel] a debug line\n"
              "[host] libraries\n"
              "[zel] Application initialized\n"
              "[zel] WinStack: += 3 [Model]\n"
              "[zel] WinStack: -= -2 []\n"
              "601\n"
              "[zel] Application shutdown event recognized\n"
              "599\n");
}

namespace {

// Notes every event of one type as a line of text.
class NotingListener : public ZelEventListener {
public:
    NotingListener(ZelEventType type, std::string (*describe)(ZelEvent*)) : m_describe(describe) {
        setEventHandler(
            type, static_cast<void (ZelEventListener::*)(ZelEvent*)>(&NotingListener::onEvent),
            100);
    }
    void onEvent(ZelEvent* event) { seen.push_back(m_describe(event)); }

    std::vector<std::string> seen;

private:
    std::string (*m_describe)(ZelEvent*);
};

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
    const ZelThemeManager& theme = ZelThemeManager::Instance();
    const NotingListener listener(ZelEvent_SystemSettingsChanged, [](ZelEvent* event) {
        const auto* const change = static_cast<ZelSystemSettingsChangedEvent*>(event);
        return std::to_string(static_cast<int>(change->GetChangeType())) + " " +
               std::to_string(
                   ZelThemeManager::Instance().GetColor(ZelThemeManager::kWorkspace).GetRef());
    });
    const std::string before = std::to_string(theme.GetColor(ZelThemeManager::kWorkspace).GetRef());
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

namespace {

SV::Image filledImage(SV::Size size, std::uint32_t color) {
    SV::Image image(size);
    for (int y = 0; y < size.height; ++y) std::fill_n(image.GetRow(y), size.width, color);
    return image;
}

constexpr COLORREF kGreen = RGB(0, 200, 0);
constexpr COLORREF kBlue = RGB(0, 0, 200);

// Green with a blue pixel in its upper left corner.
SV::Image markedImage(SV::Size size) {
    SV::Image image = filledImage(size, 0x00C800);
    image.GetRow(0)[0] = 0x0000C8;
    return image;
}

}  // namespace

TEST(ZelMdiClient, PaintsTheBackgroundInEveryMode) {
    SpeakingApplication application;
    SV::MDIFrame frame("painted");
    ::MoveWindow(frame.GetClient(), 0, 0, 104, 64, FALSE);  // 100 x 60 inside its edge
    RECT area;
    ::GetClientRect(frame.GetClient(), &area);
    ASSERT_EQ(area.right, 100);
    ASSERT_EQ(area.bottom, 60);
    frame.Show();
    application.Reschedule();
    ::MoveWindow(frame.GetClient(), 0, 0, 104, 64, FALSE);
    application.Reschedule();

    const COLORREF workspace =
        ZelThemeManager::Instance().GetColor(ZelThemeManager::kWorkspace).GetRef();
    struct Pixel {
        int x, y;
        COLORREF color;
    };
    struct Case {
        const char* why;
        int mode;
        SV::Size size;
        std::vector<Pixel> pixels;
    };
    const Case cases[] = {
        {"none", 0, {10, 10}, {{1, 1, workspace}, {50, 30, workspace}, {98, 58, workspace}}},
        {"stretched", 1, {98, 58}, {{1, 1, kBlue}, {2, 1, kGreen}, {98, 58, kGreen}}},
        {"fitted: from the middle of a larger one",
         2,
         {100, 60},
         {{1, 1, kGreen}, {98, 58, kGreen}}},
        {"fitted: of just that size", 2, {98, 58}, {{1, 1, kBlue}, {98, 58, kGreen}}},
        {"centred",
         3,
         {18, 18},
         {{40, 20, kBlue},
          {57, 37, kGreen},
          {58, 37, workspace},
          {39, 20, workspace},
          {1, 1, workspace}}},
        {"tiled", 4, {20, 20}, {{1, 1, kBlue}, {21, 1, kBlue}, {81, 41, kBlue}, {22, 2, kGreen}}},
    };
    for (const auto& [why, mode, size, pixels] : cases) {
        SCOPED_TRACE(why);
        application.setBackground(markedImage(size), mode);
        application.PaintMDIClient(frame.GetClient());
        const HDC device = ::GetDC(frame.GetClient());
        for (const auto& [x, y, color] : pixels) {
            EXPECT_EQ(::GetPixel(device, x, y), color) << x << "," << y;
        }
        const COLORREF border = ::GetPixel(device, 0, 0);
        EXPECT_NE(border, workspace);
        EXPECT_EQ(::GetPixel(device, 99, 59), border);
        EXPECT_EQ(::GetPixel(device, 50, 0), border);
        ::ReleaseDC(frame.GetClient(), device);
    }
}

TEST(ZelMdiClient, PreparesTheBackgroundForTheScreen) {
    const SV::Size screen = {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    SpeakingApplication application;
    EXPECT_FALSE(application.MakeMDIClientImg(false)) << "no picture";

    application.background = filledImage({64, 64}, 0x00C800);
    application.backgroundMode = ZelMDIApplication::kTiled;
    EXPECT_TRUE(application.MakeMDIClientImg(false));
    EXPECT_EQ(application.clientImageSize(), (SV::Size{64, 64})) << "small ones stay as they are";

    application.background = filledImage({screen.width + 10, screen.height + 6}, 0x00C800);
    EXPECT_TRUE(application.MakeMDIClientImg(false));
    EXPECT_EQ(application.clientImageSize(), screen) << "cropped";
    EXPECT_FALSE(application.MakeMDIClientImg(false)) << "done already";
    EXPECT_FALSE(application.MakeMDIClientImg(true)) << "no second screen";

    SpeakingApplication fitted;
    fitted.background = filledImage({screen.width / 4, screen.height / 2}, 0x00C800);
    fitted.backgroundMode = ZelMDIApplication::kFitted;
    EXPECT_TRUE(fitted.MakeMDIClientImg(false));
    EXPECT_EQ(fitted.clientImageSize(), screen) << "scaled by the larger ratio, then cropped";
}

namespace {

PHANDLER_ROUTINE g_consoleHandler = nullptr;

BOOL WINAPI keepConsoleHandler(PHANDLER_ROUTINE handler, BOOL isAdded) {
    if (isAdded) g_consoleHandler = handler;
    return TRUE;
}

}  // namespace

// The system calls the handler on a thread of its own; nothing but a user, or his logging off,
// makes it report more than Ctrl+C.
CHILD_MAIN(appConsoleEvents) {
    ::FreeConsole();
    const ImportPatch patch("zbasic18.dll", "SetConsoleCtrlHandler",
                            reinterpret_cast<const void*>(&keepConsoleHandler));
    return runApplication(argc, argv, [](SpeakingApplication&) {
        for (const DWORD event : {CTRL_BREAK_EVENT, CTRL_CLOSE_EVENT}) {
            std::printf("goes on %d\n", g_consoleHandler(event));
        }
        g_consoleHandler(static_cast<DWORD>(ZelCmdline::Instance().getInt("event")));
        std::puts("came back");
    });
}

TEST(ZelApp, TheDynamicConsoleEndsTheProgramWhenTheUserLogsOff) {
    const struct {
        int event;
        const char* line;
    } kCases[] = {{CTRL_LOGOFF_EVENT, "[exception] LogOff Event received\n"},
                  {CTRL_SHUTDOWN_EVENT, "[exception] ShutDown Event received\n"},
                  {99, ""}};
    for (const auto& [event, line] : kCases) {
        SCOPED_TRACE(event);
        const ChildResult result =
            runChild("appConsoleEvents", {"-console", "-event" + std::to_string(event)});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_EQ(result.out.substr(std::min(result.out.size(), result.out.find("run\n"))),
                  std::string("run\n[exception] Crtl+Break was pressed\ngoes on 1\n"
                              "[exception] Close Event received\ngoes on 1\n") +
                      line + "exit: console, after main 0\n");
    }
}
