#include "host/host_windows.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "host/host_program.h"
#include "hostapp.h"
#include "model_events.h"

namespace {

constexpr char kStarted[] = "AfterAppInitialized\n";

// Prints the events, and acts once the models are there.
class Listener : public ZelEventListener {
public:
    explicit Listener(HostAction action) : m_action(action) {
        for (const ZelEventType type :
             {ZelEvent_OpenModel, ZelEvent_BeforeSaveModel, ZelEvent_SaveModel,
              ZelEvent_AfterCreateModelWindow, ZelEvent_AfterDiscardModelWindow}) {
            setEventHandler(type, static_cast<Handler>(&Listener::onModel), 100);
        }
        for (const ZelEventType type :
             {ZelEvent_AppInitialized, ZelEvent_AfterAppInitialized, ZelEvent_AppExit}) {
            setEventHandler(type, static_cast<Handler>(&Listener::onProgram), 100);
        }
    }

private:
    void onModel(ZelEvent* event) {
        std::printf("%s %s\n", event->getEventName(),
                    static_cast<zelhost::ModelEvent*>(event)->GetName().c_str());
    }
    void onProgram(ZelEvent* event) {
        std::printf("%s\n", event->getEventName());
        std::fflush(stdout);
        const SV::Window* const window = SV::Application::GetAppWindow();
        const bool isReady = event->getEventType() == ZelEvent_AfterAppInitialized;
        if (isReady && window) m_action(window->GetHandle());
    }

    HostAction m_action;
};

HWND windowOf(unsigned long processId, const char* windowClass) {
    HWND window = nullptr;
    while ((window = ::FindWindowExA(nullptr, window, windowClass, nullptr)) != nullptr) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(window, &owner);
        if (owner == processId && ::IsWindowVisible(window)) return window;
    }
    return nullptr;
}

}  // namespace

std::string textOf(HWND window) {
    char text[256] = "";
    ::GetWindowTextA(window, text, sizeof text);
    return text;
}

std::vector<HWND> childrenOf(HWND frame) {
    std::vector<HWND> children;
    const HWND client = ::FindWindowExA(frame, nullptr, "MDICLIENT", nullptr);
    HWND child = nullptr;
    while ((child = ::FindWindowExA(client, child, "SvMDIChild", nullptr)) != nullptr) {
        children.push_back(child);
    }
    return children;
}

int runHostHere(int argc, char** argv, HostAction action) {
    zelhost::HostApplication application(true);
    const Listener listener(action);
    application.Run(argc, argv);
    return 0;
}

void command(HWND frame, int id) { ::SendMessageA(frame, WM_COMMAND, static_cast<WPARAM>(id), 0); }

std::string printedBehindStart(const ChildResult& result) {
    EXPECT_EQ(result.exitCode, 0u) << result.err;
    const std::size_t place = result.out.find(kStarted);
    EXPECT_NE(place, std::string::npos) << result.out;
    return place == std::string::npos ? "" : result.out.substr(place + sizeof kStarted - 1);
}

void post(HWND frame, int id) { ::PostMessageA(frame, WM_COMMAND, static_cast<WPARAM>(id), 0); }

HWND waitForWindow(const RunningProgram& program, const char* windowClass) {
    HWND window = nullptr;
    waitUntil([&] {
        window = windowOf(program.id(), windowClass);
        return window || program.hasEnded();
    });
    EXPECT_TRUE(window) << windowClass;
    return window;
}

HWND waitForFrame(const RunningProgram& program) { return waitForWindow(program, "SvMDIFrame"); }

AnsweredHost::AnsweredHost(const TempDir& dir, const std::vector<std::string>& arguments)
    : program(hostProgram(), arguments, {dir.root().string()}),
      watcher(IDOK, program.id()),
      frame(waitForFrame(program)) {}

SeenBox AnsweredHost::nextBox() {
    const std::vector<SeenBox> boxes = watcher.waitFor(m_boxes + 1);
    return boxes[m_boxes++];
}

ChildResult AnsweredHost::close() {
    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    return program.wait();
}
