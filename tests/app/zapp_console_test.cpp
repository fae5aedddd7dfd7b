// The console that an application opens for what goes on in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "app/speaking_application.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"
#include "zbasic/ztrace.h"

#include <windows.h>

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

TEST(ZelAppConsole, TheDynamicConsoleShowsWhatGoesOn) {
    const ChildResult result = runChild("appConsole", {"-console", "-langKlingon"});
    EXPECT_EQ(result.exitCode, 0u);
    expectPart("title [Zelkit 1.8_230922] - dynamic console\n", result.out);
    expectPart("[exception] Ctrl+C was pressed\n", result.out);
    expectPart("[locale] The locale 'Klingon' could not be resolved!\n", result.err);
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

TEST(ZelAppConsole, TheDynamicConsoleEndsTheProgramWhenTheUserLogsOff) {
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
