// The host with windows: seen from inside, as a part of the program does, and from outside.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "host/host_program.h"
#include "hostapp.h"
#include "hostframe.h"
#include "model_events.h"
#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "time_texts.h"
#include "user_break.h"

#include <windows.h>

using zelhost::HostFrame;

namespace {

constexpr char kFrameClass[] = "SvMDIFrame";
constexpr char kChildClass[] = "SvMDIChild";

HWND frameOf(DWORD processId) {
    HWND frame = nullptr;
    while ((frame = ::FindWindowExA(nullptr, frame, kFrameClass, nullptr)) != nullptr) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(frame, &owner);
        if (owner == processId && ::IsWindowVisible(frame)) return frame;
    }
    return nullptr;
}

std::string textOf(HWND window) {
    char text[256] = "";
    ::GetWindowTextA(window, text, sizeof text);
    return text;
}

std::vector<HWND> childrenOf(HWND frame) {
    std::vector<HWND> children;
    const HWND client = ::FindWindowExA(frame, nullptr, "MDICLIENT", nullptr);
    HWND child = nullptr;
    while ((child = ::FindWindowExA(client, child, kChildClass, nullptr)) != nullptr) {
        children.push_back(child);
    }
    return children;
}

// "&File(&Open|--|E&xit)|&View(&English*)": "--" is a separator, "*" a check mark. Menus of other
// processes cannot be read.
std::string menuText(HMENU menu) {
    std::string text;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        char entry[128] = "";
        const auto position = static_cast<UINT>(i);
        ::GetMenuStringA(menu, position, entry, sizeof entry, MF_BYPOSITION);
        const HMENU popup = ::GetSubMenu(menu, i);
        if (!text.empty()) text += "|";
        text += *entry ? entry : "--";
        if (::GetMenuState(menu, position, MF_BYPOSITION) & MF_CHECKED && !popup) text += "*";
        if (popup) text += "(" + menuText(popup) + ")";
    }
    return text;
}

// On a console of this process alone; returns when it has been heard of.
void pressControlC() {
    ::FreeConsole();
    ::AllocConsole();
    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    for (int i = 0; i < 500 && !zelhost::isBreakWanted(); ++i) ::Sleep(10);
}

// Prints the events, objects to saving the model "forbidden", closes the window on opening the
// model "last", presses Escape while the model "stopped" is saved, Ctrl+C on opening the model
// "interrupted", and acts once the models are there.
class Listener : public ZelEventListener {
public:
    using Action = void (*)(HWND frame);

    explicit Listener(Action action) : m_action(action) {
        for (const ZelEventType type :
             {ZelEvent_OpenModel, ZelEvent_BeforeSaveModel, ZelEvent_SaveModel,
              ZelEvent_AfterCreateModelWindow, ZelEvent_AfterDiscardModelWindow}) {
            listen(type, static_cast<Handler>(&Listener::onModel));
        }
        listen(ZelEvent_AppInitialized, static_cast<Handler>(&Listener::onEvent));
        listen(ZelEvent_AfterAppInitialized, static_cast<Handler>(&Listener::onReady));
        listen(ZelEvent_AppExit, static_cast<Handler>(&Listener::onEvent));
    }

private:
    void listen(ZelEventType type, Handler handler) { setEventHandler(type, handler, 100); }
    void onEvent(ZelEvent* event) {
        std::printf("%s\n", event->getEventName());
        std::fflush(stdout);
    }
    // As from a user who does not wait.
    static void exportAtOnce() {
        ::PostMessageA(SV::Application::GetAppWindow()->GetHandle(), WM_COMMAND, HostFrame::kExport,
                       0);
    }
    void onModel(ZelEvent* event) {
        const auto* const of = static_cast<zelhost::ModelEvent*>(event);
        std::printf("%s %s\n", event->getEventName(), of->GetName().c_str());
        const bool isForbidden = of->GetName() == "forbidden";
        if (isForbidden && event->getEventType() == ZelEvent_BeforeSaveModel) {
            event->setResultValue(1);
        }
        const bool isStopped = of->GetName() == "stopped";
        if (isStopped && event->getEventType() == ZelEvent_BeforeSaveModel) {
            ::PostMessageA(::GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
        }
        const bool isInterrupted = of->GetName() == "interrupted";
        if (isInterrupted && event->getEventType() == ZelEvent_OpenModel) pressControlC();
        const bool isAwaited = of->GetName() == "awaited";
        if (isAwaited && event->getEventType() == ZelEvent_AfterCreateModelWindow) exportAtOnce();
        const bool isLast = of->GetName() == "last";
        if (isLast && event->getEventType() == ZelEvent_OpenModel) {
            SV::Application::GetAppWindow()->Close();
        }
    }
    void onReady(ZelEvent* event) {
        onEvent(event);
        const SV::Window* const window = SV::Application::GetAppWindow();
        if (m_action && window) m_action(window->GetHandle());
    }

    Action m_action;
};

int runHostHere(int argc, char** argv, Listener::Action action) {
    zelhost::HostApplication application(true);
    const Listener listener(action);
    application.Run(argc, argv);
    return 0;
}

void command(HWND frame, int id) { ::SendMessageA(frame, WM_COMMAND, static_cast<WPARAM>(id), 0); }

}  // namespace

CHILD_MAIN(hostMenus) {
    return runHostHere(argc, argv, [](HWND frame) {
        std::printf("%s\n", menuText(::GetMenu(frame)).c_str());
        command(frame, HostFrame::kGerman);
        std::printf("%s\n", menuText(::GetMenu(frame)).c_str());
        command(frame, HostFrame::kEnglish);
        std::printf("%s\n", menuText(::GetMenu(frame)).c_str());
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostWindow, MenusFollowTheLanguageAtOnce) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    ChildOptions options;
    options.directory = dir.root().string();
    const ChildResult result = runChild("hostMenus", {"m.gml", "-lang1033"}, options);
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "");
    const std::string english =
        "&File(&Open...\tCtrl+O|&Export\tCtrl+E|Open exported "
        "&file(*.gml|*.graphml|*.nodes.csv|*.edges.csv|*.png)"
        "|--|E&xit)|&View(&English*|&German|--|&Filter by date...\tCtrl+D|--|&Tile "
        "windows|&Cascade windows|--|&1 m.gml*)|&Plug-ins(figures)|&Help(&About zelhost\tF1)\n";
    const std::string german =
        "&Datei(\xD6&ffnen...\tStrg+O|&Exportieren\tStrg+E|Exportierte &Datei \xF6"
        "ffnen(*.gml|*.graphml|*.nodes.csv|*.edges.csv|*.png)|--|&Beenden)|&Ansicht(&Englisch|&"
        "Deutsch*|--|Nach Datum &filtern...\tStrg+D|--|"
        "&Nebeneinander|\xDC&berlappend|--|&1 m.gml*)|&Zusatzmodule(figures)|&Hilfe(&\xDC"
        "ber zelhost\tF1)\n";
    const std::string start = "AfterAppInitialized\n";
    const std::size_t place = result.out.find(start);
    ASSERT_NE(place, std::string::npos) << result.out;
    EXPECT_EQ(result.out.substr(place + start.size()),
              english + german + english + "AfterDiscardModelWindow m\nAppExit\n");
}

namespace {

RECT areaOf(HWND window) {
    RECT area = {};
    ::GetWindowRect(window, &area);
    return area;
}

}  // namespace

CHILD_MAIN(hostArranges) {
    return runHostHere(argc, argv, [](HWND frame) {
        for (const int id : {HostFrame::kTile, HostFrame::kCascade}) {
            command(frame, id);
            const std::vector<HWND> windows = childrenOf(frame);
            const RECT first = areaOf(windows.at(0));
            const RECT second = areaOf(windows.at(1));
            RECT common;
            std::printf("%s\n", ::IntersectRect(&common, &first, &second) ? "overlap" : "apart");
        }
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostWindow, ArrangesItsWindows) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("n.gml", kSmallModel);
    ChildOptions options;
    options.directory = dir.root().string();
    const ChildResult result = runChild("hostArranges", {"m.gml", "n.gml"}, options);
    EXPECT_NE(result.out.find("\napart\noverlap\n"), std::string::npos) << result.out;
}

CHILD_MAIN(hostDurations) {
    return runHostHere(argc, argv, [](HWND frame) {
        for (const int id : {HostFrame::kEnglish, HostFrame::kGerman}) {
            command(frame, id);
            for (const char* const text : {"00:000:02:03:04", "00:001:02:03:04", "00:364:00:00:00",
                                           "01:000:00:00:01", "12:001:23:59:59"}) {
                std::printf("%s\n", zelhost::shownDuration(ZelCoreTime(text)).c_str());
            }
        }
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostWindow, ShowsDurationsInWords) {
    const ChildResult result = runChild("hostDurations");
    const std::string start = "AfterAppInitialized\n";
    const std::size_t place = result.out.find(start);
    ASSERT_NE(place, std::string::npos) << result.out;
    EXPECT_EQ(result.out.substr(place + start.size()),
              "02:03:04\n1 day 02:03:04\n364 days 00:00:00\n1 year 00:00:01\n"
              "12 years 1 day 23:59:59\n"
              "02:03:04\n1 Tag 02:03:04\n364 Tage 00:00:00\n1 Jahr 00:00:01\n"
              "12 Jahre 1 Tag 23:59:59\nAppExit\n");
}

namespace {

HWND partOf(HWND child, const char* windowClass, HWND behind = nullptr) {
    return ::FindWindowExA(child, behind, windowClass, nullptr);
}

// Whether anything is drawn in the middle of the window.
bool hasPicture(HWND child) {
    RECT area = {};
    ::GetClientRect(child, &area);
    const HDC device = ::GetDC(child);
    bool hasInk = false;
    for (int x = 0; x < area.right; ++x) {
        for (int y = area.bottom / 4; y < area.bottom; ++y) {
            hasInk = hasInk || ::GetPixel(device, x, y) != RGB(255, 255, 255);
        }
    }
    ::ReleaseDC(child, device);
    return hasInk;
}

// Types, and prints what the window says after the pause that it waits for.
void type(HWND child, const char* letters) {
    const HWND field = partOf(child, "EDIT");
    const HWND label = partOf(child, "STATIC");
    const HWND outcome = partOf(child, "STATIC", label);
    ::SetWindowTextA(outcome, "");
    for (const char* letter = letters; *letter; ++letter) {
        ::SendMessageA(field, WM_CHAR, static_cast<unsigned char>(*letter), 0);
    }
    const auto isShown = [&] { return !textOf(outcome).empty() && textOf(outcome) != "..."; };
    for (int i = 0; i < 500 && !isShown(); ++i) {
        ::Sleep(10);  // a timer ends it, which needs messages to be handled
        SV::GetpApp()->Reschedule();
    }
    SV::GetpApp()->Reschedule();
    std::printf("%s %s %s\n", textOf(label).c_str(), textOf(outcome).c_str(),
                hasPicture(child) ? "(picture)" : "(nothing)");
}

}  // namespace

CHILD_MAIN(hostFilter) {
    return runHostHere(argc, argv, [](HWND frame) {
        const HWND child = childrenOf(frame).at(0);
        type(child, "a");
        type(child, "*");
        command(frame, HostFrame::kGerman);
        type(child, "\b\bx");
        command(frame, HostFrame::kEnglish);
        type(child, "\b");
        command(frame, HostFrame::kExport);
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostWindow, FiltersThePictureWhileOneTypes) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 label \"A\" ] node [ id 2 label \"ab\" ] node [ id 3 ] ]");
    ChildOptions options;
    options.directory = dir.root().string();
    const ChildResult result =
        runChild("hostFilter", {"m.gml", "-oout", "-lang1033", "-no_dialogs"}, options);
    EXPECT_EQ(result.exitCode, 0u);
    const std::string start = "AfterAppInitialized\n";
    const std::size_t place = result.out.find(start);
    ASSERT_NE(place, std::string::npos) << result.out;
    EXPECT_EQ(result.out.substr(place + start.size(),
                                result.out.find("BeforeSave", place) - place - start.size()),
              "Filter (* and ?): 1 of 3 nodes (picture)\n"
              "Filter (* and ?): 2 of 3 nodes (picture)\n"
              "Filter (* und ?): 0 von 3 Knoten (nothing)\n"
              "Filter (* and ?): 3 of 3 nodes (picture)\n");
    // The filter is for the eye: what is exported is the model.
    const std::string nodes = readFile(dir.path("out\\m.nodes.csv"));
    EXPECT_NE(nodes.find("2;ab;ab"), std::string::npos) << nodes;
}

// Large enough for its export to take many times as long as the program lets messages wait.
std::string largeModel() {
    std::string gml = "graph [\n";
    for (int i = 0; i < 200000; ++i) gml += "node [ id " + std::to_string(i) + " ]\n";
    return gml + "]\n";
}

// Handles messages until the outcome of the filter is "...", or is not.
void waitForOutcome(HWND outcome, bool isBusy) {
    for (int i = 0; i < 2000 && (textOf(outcome) == "...") != isBusy; ++i) {
        ::Sleep(10);
        SV::GetpApp()->Reschedule();
    }
}

CHILD_MAIN(hostFiltersMany) {
    return runHostHere(argc, argv, [](HWND frame) {
        const HWND child = childrenOf(frame).at(0);
        const HWND field = partOf(child, "EDIT");
        const HWND outcome = partOf(child, "STATIC", partOf(child, "STATIC"));
        ::SetWindowTextA(field, "1*");
        waitForOutcome(outcome, true);
        std::printf("%s\n", textOf(outcome).c_str());
        ::SetWindowTextA(field, "19999?");  // before the first is drawn
        for (int i = 0; i < 20; ++i) {      // until the pause is noticed
            ::Sleep(10);
            SV::GetpApp()->Reschedule();
        }
        waitForOutcome(outcome, false);
        std::printf("%s\n", textOf(outcome).c_str());
        ::SetWindowTextA(field, "2*");
        waitForOutcome(outcome, true);
        command(frame, HostFrame::kExit);  // in the middle of it
    });
}

TEST(ZelhostWindow, FiltersLargeModelsBesideItsWindow) {
    const TempDir dir;
    dir.write("m.gml", largeModel());
    ChildOptions options;
    options.directory = dir.root().string();
    const ChildResult result = runChild("hostFiltersMany", {"m.gml", "-lang1033"}, options);
    EXPECT_EQ(result.exitCode, 0u);
    const std::string start = "AfterAppInitialized\n";
    const std::size_t place = result.out.find(start);
    ASSERT_NE(place, std::string::npos) << result.out;
    EXPECT_EQ(result.out.substr(place + start.size()),
              "...\n10 of 200000 nodes\nAfterDiscardModelWindow m\nAppExit\n");
}

CHILD_MAIN(hostEvents) {
    return runHostHere(argc, argv, [](HWND frame) { command(frame, HostFrame::kExit); });
}

TEST(ZelhostWindow, TellsListenersAndHeedsTheirVeto) {
    struct Case {
        const char* why;
        std::vector<std::string> models;
        unsigned long exitCode;
        const char* events;
        const char* err;
        std::vector<std::string> files;
    };
    const Case cases[] = {
        {"all is well",
         {"m.gml"},
         0,
         "OpenModel m\nAfterCreateModelWindow m\nBeforeSaveModel m\nSaveModel m\n"
         "AppInitialized\nAfterAppInitialized\nAfterDiscardModelWindow m\nAppExit\n",
         "",
         exportsOf("m")},
        {"a listener forbids saving",
         {"forbidden.gml"},
         1,
         "OpenModel forbidden\nAfterCreateModelWindow forbidden\nBeforeSaveModel forbidden\n"
         "AppInitialized\nAfterAppInitialized\nAfterDiscardModelWindow forbidden\nAppExit\n",
         "forbidden.gml: not saved: a listener of the program objects\n",
         {}},
        {"a command before the model is exported",
         {"awaited.gml"},
         0,
         "OpenModel awaited\nAfterCreateModelWindow awaited\nBeforeSaveModel awaited\n"
         "SaveModel awaited\nAppInitialized\nAfterAppInitialized\n"
         "AfterDiscardModelWindow awaited\nAppExit\n",
         "",
         exportsOf("awaited")},
        {"the window is closed before the second model",
         {"last.gml", "m.gml"},
         3,
         "OpenModel last\nBeforeSaveModel last\n"
         "AppInitialized\nAfterAppInitialized\nAppExit\n",
         "last.gml: stopped by the user\n",
         {}},
        {"Escape while the first model is exported",
         {"stopped.gml", "m.gml"},
         3,
         "OpenModel stopped\nAfterCreateModelWindow stopped\nBeforeSaveModel stopped\n"
         "AppInitialized\nAfterAppInitialized\nAfterDiscardModelWindow stopped\nAppExit\n",
         "stopped.gml: stopped by the user\n",
         {}},
        {"Ctrl+C before the first model is exported",
         {"interrupted.gml", "m.gml"},
         3,
         "OpenModel interrupted\nAfterCreateModelWindow interrupted\nBeforeSaveModel interrupted\n"
         "AppInitialized\nAfterAppInitialized\nAfterDiscardModelWindow interrupted\nAppExit\n",
         "interrupted.gml: stopped by the user\n",
         {}},
    };
    for (const auto& [why, models, exitCode, events, err, files] : cases) {
        SCOPED_TRACE(why);
        const TempDir dir;
        ChildOptions options;
        options.directory = dir.root().string();
        std::vector<std::string> arguments = {"-oout", "-no_dialogs"};
        for (const std::string& model : models) {
            dir.write(model, model == "stopped.gml" ? largeModel() : kSmallModel);
            arguments.push_back(model);
        }
        std::filesystem::create_directory(dir.path("out"));
        const ChildResult result = runChild("hostEvents", arguments, options);
        EXPECT_EQ(result.exitCode, exitCode);
        const std::regex summaryLine("(  .*|.* nodes, .*)\n");
        EXPECT_EQ(std::regex_replace(result.out, summaryLine, ""), events);
        const std::regex progressLine("[^\n]*: (drawing|writing .*|.* %) *\n");
        EXPECT_EQ(std::regex_replace(result.err, progressLine, ""), err);
        EXPECT_EQ(filesIn(dir.path("out")), files);
    }
}

namespace {

// The frame of a program that has just been started.
HWND waitForFrame(const RunningProgram& program) {
    HWND frame = nullptr;
    while (!(frame = frameOf(program.id())) && !program.hasEnded()) {
        ::Sleep(20);  // there is no event to wait for: the window belongs to another program
    }
    EXPECT_TRUE(frame);
    return frame;
}

void post(HWND frame, int id) { ::PostMessageA(frame, WM_COMMAND, static_cast<WPARAM>(id), 0); }

}  // namespace

TEST(ZelhostWindow, ShowsModelsAndAnswersTheMenu) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("n.gml", kSmallModel);
    dir.write("bad.gml", "");
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), {"m.gml", "bad.gml", "n.gml", "-oout", "-lang1031"},
                           options);
    const BoxWatcher watcher(IDOK, program.id());
    const HWND frame = waitForFrame(program);

    const SeenBox problems = watcher.waitFor(1)[0];
    EXPECT_EQ(problems.caption, "zelhost: Probleme");
    EXPECT_EQ(problems.text,
              "bad.gml: die Datei ist leer\n\nPr\xFC"
              "fen Sie, ob es die Datei gibt, ob Sie sie lesen d\xFC"
              "rfen und ob sie ein Graphmodell in GML ist. \xD6"
              "ffnen Sie sie dann erneut (Datei > \xD6"
              "ffnen).");
    EXPECT_EQ(textOf(frame), "zelhost");
    std::vector<std::string> titles;
    for (const HWND child : childrenOf(frame)) titles.push_back(textOf(child));
    EXPECT_EQ(titles, (std::vector<std::string>{"n.gml", "m.gml"}));

    post(frame, HostFrame::kAbout);
    const SeenBox german = watcher.waitFor(2)[1];
    EXPECT_EQ(german.caption,
              "\xDC"
              "ber zelhost");
    EXPECT_EQ(german.text.find("zelhost "), 0u) << german.text;
    EXPECT_NE(german.text.find("Sprache: Deutsch"), std::string::npos) << german.text;
    post(frame, HostFrame::kEnglish);
    post(frame, HostFrame::kAbout);
    const SeenBox english = watcher.waitFor(3)[2];
    EXPECT_EQ(english.caption, "About zelhost");
    EXPECT_NE(english.text.find("Language: English"), std::string::npos) << english.text;

    std::filesystem::remove(dir.path("out\\n.png"));
    post(frame, HostFrame::kExport);
    const SeenBox exported = watcher.waitFor(4)[3];
    EXPECT_EQ(exported.caption, "Export");  // without the access key of the menu
    EXPECT_EQ(exported.text, "The files of the model \"n\" were written to\n" + dir.path("out"));
    EXPECT_TRUE(std::filesystem::exists(dir.path("out\\n.png")));

    post(frame, HostFrame::kFirstPlugin);
    const SeenBox figures = watcher.waitFor(5)[4];
    EXPECT_EQ(figures.caption, "figures");
    EXPECT_EQ(figures.text.find("nodes: 2\nedges: 1\n"), 0u) << figures.text;
    for (const HWND child : childrenOf(frame)) ::SendMessageA(child, WM_CLOSE, 0, 0);
    post(frame, HostFrame::kFirstPlugin);
    EXPECT_EQ(watcher.waitFor(6)[5].text,
              "The command \"figures\" failed.\nthere is no such model\n\n"
              "No model is open.\nOpen one first (File > Open).");

    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    const ChildResult result = program.wait();
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.err, "bad.gml: the file is empty\n");
    EXPECT_EQ(watcher.seen().size(), 6u);
}

namespace {

// The dialog that the program shows; null when none comes within half a minute.
HWND waitForDialog(const RunningProgram& program) {
    for (int i = 0; i < 1500 && !program.hasEnded(); ++i) {
        HWND dialog = nullptr;
        while ((dialog = ::FindWindowExA(nullptr, dialog, "#32770", nullptr)) != nullptr) {
            DWORD owner = 0;
            ::GetWindowThreadProcessId(dialog, &owner);
            if (owner == program.id() && ::IsWindowVisible(dialog)) return dialog;
        }
        ::Sleep(20);
    }
    return nullptr;
}

void answer(HWND dialog, int button) {
    ::PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    for (int i = 0; i < 1500 && ::IsWindow(dialog); ++i) ::Sleep(20);
}

}  // namespace

TEST(ZelhostWindow, OpensTheModelThatTheUserChooses) {
    const TempDir dir;
    dir.write("n.gml", kSmallModel);
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), {"-lang1033"}, options);
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
    for (int i = 0; i < 1500 && childrenOf(frame).empty(); ++i) ::Sleep(20);
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
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), arguments, options);
    const BoxWatcher watcher(IDOK, program.id());
    const HWND frame = waitForFrame(program);
    EXPECT_EQ(watcher.waitFor(1)[0].text,
              shown +
                  "und 2 weitere: siehe die Datei zelhost.log im Startordner\n\n"
                  "Berichtigen Sie die Datei in der Zeile, die in Klammern steht, und \xF6"
                  "ffnen Sie sie erneut (Datei > \xD6"
                  "ffnen).");
    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.wait().exitCode, 1u);
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

TEST(ZelhostWindow, ShowsTheNodesOfTheLastDays) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 changed \"2024:05:01 23:59:59\" ]\n"
              "node [ id 2 duration \"x\" changed \"2024:05:02 00:00:00\" ] ]");
    dir.write("plain.gml", kSmallModel);
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), {"m.gml", "-oout", "-lang1033"}, options);
    const BoxWatcher watcher(IDOK, program.id());
    const HWND frame = waitForFrame(program);
    const std::string remark =
        "m.gml(2): a duration must be like \"00:001:02:03:04\" (years, days, hours, minutes, "
        "seconds): \"x\"\n";
    EXPECT_EQ(watcher.waitFor(1)[0].text,
              remark +
                  "\nA model of which only times are wrong is open all the same; correct its file "
                  "if they are to count.");
    post(frame, HostFrame::kFilter);
    const SeenBox dialog = watcher.waitFor(2)[1];
    EXPECT_EQ(dialog.caption, "Filter by date");
    // Only then is the dialog gone, whose loop would carry out the next command.
    while (childrenOf(frame).size() < 2 && !program.hasEnded()) ::Sleep(20);
    post(frame, HostFrame::kExport);  // the new window is the active one
    EXPECT_EQ(watcher.waitFor(3)[2].caption, "Export");
    ASSERT_EQ(childrenOf(frame).size(), 2u);
    EXPECT_EQ(textOf(childrenOf(frame)[0]), "m.gml - changed since Thursday, May 02, 2024");
    post(frame, HostFrame::kGerman);
    post(frame, HostFrame::kAbout);
    watcher.waitFor(4);
    EXPECT_EQ(textOf(childrenOf(frame)[0]), "m.gml - ge\xE4ndert seit Donnerstag, 02. Mai 2024");
    EXPECT_EQ(readFile(dir.path("out\\m_since_2024-05-02.nodes.csv")),
              "\xEF\xBB\xBFid;caption;duration;changed\n2;2;x;2024:05:02 00:00:00\n");
    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    const ChildResult result = program.wait();
    EXPECT_EQ(result.exitCode, 0u) << "what is kept as it is is no failure";
    EXPECT_EQ(result.err, remark);
}

CHILD_MAIN(hostFiltersUnseen) {
    return runHostHere(argc, argv, [](HWND frame) {
        command(frame, HostFrame::kFilter);
        for (const HWND child : childrenOf(frame)) std::printf("%s\n", textOf(child).c_str());
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostWindow, TakesWhatDialogsOfferWhenTheyAreNotShown) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 changed \"2024:05:01 23:59:59\" ]\n"
              "node [ id 2 changed \"2024:05:02 00:00:00\" ] ]");
    ChildOptions options;
    options.directory = dir.root().string();
    const ChildResult result =
        runChild("hostFiltersUnseen",
                 {"m.gml", "-lang1033", "-no_dialogs", "-log_no_dialogsboxes.txt"}, options);
    EXPECT_NE(result.out.find("m.gml - changed since Thursday, May 02, 2024\nm.gml\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(readFile(dir.path("boxes.txt")), "Filter by date\r\n");
}

TEST(ZelhostWindow, WritesWhatBoxesWouldSayToTheirLog) {
    const TempDir dir;
    dir.write("bad.gml", "");
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), {"bad.gml", "-no_dialogs", "-log_no_dialogsboxes.txt"},
                           options);
    const BoxWatcher watcher(IDOK, program.id());
    ::PostMessageA(waitForFrame(program), WM_CLOSE, 0, 0);
    EXPECT_EQ(program.wait().exitCode, 1u);
    EXPECT_TRUE(watcher.seen().empty());
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
    ChildOptions options;
    options.directory = dir.root().string();
    RunningProgram program(hostProgram(), {"m.gml", "-oout", "-lang1033"}, options);
    const BoxWatcher watcher(IDOK, program.id());
    const HWND frame = waitForFrame(program);
    while (childrenOf(frame).empty() || !std::filesystem::exists(dir.path("out\\m.png"))) {
        ::Sleep(20);
    }
    post(frame, HostFrame::kOpenExported + 1);
    for (int i = 0; i < 500 && !std::filesystem::exists(note); ++i) ::Sleep(20);
    std::filesystem::remove(dir.path("out\\m.png"));
    post(frame, HostFrame::kOpenExported + 4);
    const SeenBox missing = watcher.waitFor(1)[0];
    EXPECT_EQ(missing.text, "The model has not been exported yet; there is no file\n" +
                                dir.path("out\\m.png") +
                                "\n\nExport the model first (File > Export).");
    EXPECT_EQ(readFile(note), dir.path("out\\m.graphml"));
    ::PostMessageA(frame, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.wait().exitCode, 0u);
}
