// The host with windows, run by the test program: what it does to itself, and what parts of a
// program hear from it.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <new>
#include <regex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "host/host_program.h"
#include "host/host_windows.h"
#include "hostapp.h"
#include "hostframe.h"
#include "model_events.h"
#include "time_texts.h"
#include "user_break.h"

using zelhost::HostFrame;

namespace {

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

TEST(ZelhostInside, MenusFollowTheLanguageAtOnce) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    const ChildResult result = runChild("hostMenus", {"m.gml", "-lang1033"}, {dir.root().string()});
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
    EXPECT_EQ(printedBehindStart(result),
              english + german + english + "AfterDiscardModelWindow m\nAppExit\n");
}

CHILD_MAIN(hostArranges) {
    return runHostHere(argc, argv, [](HWND frame) {
        for (const int id : {HostFrame::kTile, HostFrame::kCascade}) {
            command(frame, id);
            const std::vector<HWND> windows = childrenOf(frame);
            RECT first, second, common;
            ::GetWindowRect(windows.at(0), &first);
            ::GetWindowRect(windows.at(1), &second);
            std::printf("%s\n", ::IntersectRect(&common, &first, &second) ? "overlap" : "apart");
        }
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostInside, ArrangesItsWindows) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    dir.write("n.gml", kSmallModel);
    const ChildResult result = runChild("hostArranges", {"m.gml", "n.gml"}, {dir.root().string()});
    EXPECT_EQ(printedBehindStart(result).find("apart\noverlap\n"), 0u) << result.out;
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

TEST(ZelhostInside, ShowsDurationsInWords) {
    EXPECT_EQ(printedBehindStart(runChild("hostDurations")),
              "02:03:04\n1 day 02:03:04\n364 days 00:00:00\n1 year 00:00:01\n"
              "12 years 1 day 23:59:59\n"
              "02:03:04\n1 Tag 02:03:04\n364 Tage 00:00:00\n1 Jahr 00:00:01\n"
              "12 Jahre 1 Tag 23:59:59\nAppExit\n");
}

namespace {

// On a console of this process alone; returns when it has been heard of.
void pressControlC() {
    ::FreeConsole();
    ::AllocConsole();
    ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    for (int i = 0; i < 500 && !zelhost::isBreakWanted(); ++i) ::Sleep(10);
}

// What happens at some moment in the life of the model of that name.
class Incident : public ZelEventListener {
public:
    using Happen = void (*)(ZelEvent* event);

    Incident(std::string_view model, ZelEventType moment, Happen happen)
        : m_model(model), m_happen(happen) {
        setEventHandler(moment, static_cast<Handler>(&Incident::onModel), 50);
    }

private:
    void onModel(ZelEvent* event) {
        if (static_cast<zelhost::ModelEvent*>(event)->GetName() == m_model) m_happen(event);
    }

    std::string_view m_model;
    Happen m_happen;
};

}  // namespace

CHILD_MAIN(hostWithoutMemory) {
    static bool isMemoryOut = false;
    const Incident incident("m", ZelEvent_BeforeSaveModel, [](ZelEvent*) {
        if (isMemoryOut) throw std::bad_alloc();
    });
    const BoxWatcher boxes(IDOK);
    static const BoxWatcher& watcher = boxes;
    static std::thread user;
    runHostHere(argc, argv, [](HWND frame) {
        isMemoryOut = true;
        user = std::thread([frame] {
            post(frame, HostFrame::kExport);
            watcher.waitFor(1);
            post(frame, HostFrame::kExport);
            post(frame, HostFrame::kExit);
        });
    });
    user.join();
    for (const SeenBox& box : boxes.seen()) std::printf("%s\n", box.text.c_str());
    return 0;
}

TEST(ZelhostInside, GoesOnWhereMemoryRunsOut) {
    const TempDir dir;
    dir.write("m.gml", kSmallModel);
    const ChildResult result =
        runChild("hostWithoutMemory", {"m.gml", "-lang1033"}, {dir.root().string()});
    const std::string save = "BeforeSaveModel m\n";
    EXPECT_EQ(printedBehindStart(result),
              save + save + "AfterDiscardModelWindow m\nAppExit\n" +
                  "There is not enough memory for what was to be done.\n\nClose other models and "
                  "programs, then try again. What fails for the same reason later is only noted in "
                  "the file zelhost.log in the start folder.\n");
}

CHILD_MAIN(hostEvents) {
    const Incident incidents[] = {
        {"forbidden", ZelEvent_BeforeSaveModel, [](ZelEvent* event) { event->setResultValue(1); }},
        {"awaited", ZelEvent_AfterCreateModelWindow,  // as from a user who does not wait
         [](ZelEvent*) { post(SV::Application::GetAppWindow()->GetHandle(), HostFrame::kExport); }},
        {"last", ZelEvent_OpenModel, [](ZelEvent*) { SV::Application::GetAppWindow()->Close(); }},
        {"stopped", ZelEvent_BeforeSaveModel,
         [](ZelEvent*) { ::PostMessageA(::GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0); }},
        {"interrupted", ZelEvent_OpenModel, [](ZelEvent*) { pressControlC(); }},
        {"greedy", ZelEvent_OpenModel, [](ZelEvent*) { throw std::bad_alloc(); }},
    };
    return runHostHere(argc, argv, [](HWND frame) { command(frame, HostFrame::kExit); });
}

TEST(ZelhostInside, TellsListenersAndHeedsTheirVeto) {
    struct Case {
        const char* why;
        std::vector<std::string> models;  // the first is "*" below
        unsigned long exitCode;           // 0: that one is exported, else nothing
        std::string events;
        const char* err;
    };
    const std::string opened = "OpenModel *\nAfterCreateModelWindow *\nBeforeSaveModel *\n";
    const std::string ready = "AppInitialized\nAfterAppInitialized\n";
    const std::string end = ready + "AfterDiscardModelWindow *\nAppExit\n";
    const std::string saved = opened + "SaveModel *\n" + end;
    const std::string unseen = "OpenModel *\nBeforeSaveModel *\n" + ready + "AppExit\n";
    const char* const objection = "*.gml: not saved: a listener of the program objects\n";
    const char* const stopped = "*.gml: stopped by the user\n";
    const Case cases[] = {
        {"all is well", {"m"}, 0, saved, ""},
        {"a listener forbids saving", {"forbidden"}, 1, opened + end, objection},
        {"a command before the model is exported", {"awaited"}, 0, saved, ""},
        {"the window is closed before the second model", {"last", "m"}, 3, unseen, stopped},
        {"Escape while the first model is exported", {"stopped", "m"}, 3, opened + end, stopped},
        {"memory runs out for the first model",
         {"greedy"},
         1,
         "OpenModel *\n" + ready + "AppExit\n",
         "*.gml: there is not enough memory for this graph: close other models and programs\n"},
        {"Ctrl+C before the first is exported", {"interrupted", "m"}, 3, opened + end, stopped},
    };
    const std::regex star("\\*");
    const std::regex summaryLine("(  .*|.* nodes, .*)\n");
    for (const auto& [why, models, exitCode, events, err] : cases) {
        SCOPED_TRACE(why);
        const TempDir dir;
        std::vector<std::string> arguments = {"-oout", "-no_dialogs"};
        for (const std::string& model : models) {
            arguments.push_back(model + ".gml");
            dir.write(arguments.back(), kSmallModel);
        }
        std::filesystem::create_directory(dir.path("out"));
        const ChildResult result = runChild("hostEvents", arguments, {dir.root().string()});
        const std::string& first = models[0];
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(std::regex_replace(result.out, summaryLine, ""),
                  std::regex_replace(events, star, first));
        EXPECT_EQ(withoutProgress(result.err), std::regex_replace(std::string(err), star, first));
        EXPECT_EQ(filesIn(dir.path("out")),
                  exitCode == 0 ? exportsOf(first) : std::vector<std::string>());
    }
}
