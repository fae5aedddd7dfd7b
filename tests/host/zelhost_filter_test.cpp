// What the host's windows show of a model: the filter in each window, and that by date.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "host/host_program.h"
#include "host/host_windows.h"
#include "hostapp.h"
#include "hostframe.h"

using zelhost::HostFrame;

namespace {

// The window of the first model.
struct FilterWindow {
    explicit FilterWindow(HWND frame)
        : window(childrenOf(frame).at(0)),
          field(::FindWindowExA(window, nullptr, "EDIT", nullptr)),
          label(::FindWindowExA(window, nullptr, "STATIC", nullptr)),
          outcome(::FindWindowExA(window, label, "STATIC", nullptr)) {}

    bool isBusy() const { return textOf(outcome) == "..."; }

    const HWND window;
    const HWND field;
    const HWND label;
    const HWND outcome;
};

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

// For what timers bring, which needs messages to be handled.
template <typename Condition>
void handleMessagesUntil(Condition isMet) {
    for (int i = 0; i < 2000 && !isMet(); ++i) {
        ::Sleep(10);
        SV::GetpApp()->Reschedule();
    }
}

// Types, and prints what the window says after the pause that it waits for.
void type(const FilterWindow& filter, const char* letters) {
    ::SetWindowTextA(filter.outcome, "");
    for (const char* letter = letters; *letter; ++letter) {
        ::SendMessageA(filter.field, WM_CHAR, static_cast<unsigned char>(*letter), 0);
    }
    handleMessagesUntil([&] { return !textOf(filter.outcome).empty() && !filter.isBusy(); });
    SV::GetpApp()->Reschedule();
    std::printf("%s %s %s\n", textOf(filter.label).c_str(), textOf(filter.outcome).c_str(),
                hasPicture(filter.window) ? "(picture)" : "(nothing)");
}

}  // namespace

CHILD_MAIN(hostFilter) {
    return runHostHere(argc, argv, [](HWND frame) {
        const FilterWindow filter(frame);
        type(filter, "a");
        type(filter, "*");
        command(frame, HostFrame::kGerman);
        type(filter, "\b\bx");
        command(frame, HostFrame::kEnglish);
        type(filter, "\b");
        command(frame, HostFrame::kExport);
        command(frame, HostFrame::kExit);
    });
}

TEST(ZelhostFilter, FiltersThePictureWhileOneTypes) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 label \"A\" ] node [ id 2 label \"ab\" ] node [ id 3 ] ]");
    const std::string printed = printedBehindStart(runChild(
        "hostFilter", {"m.gml", "-oout", "-lang1033", "-no_dialogs"}, {dir.root().string()}));
    EXPECT_EQ(printed.substr(0, printed.find("BeforeSave")),
              "Filter (* and ?): 1 of 3 nodes (picture)\n"
              "Filter (* and ?): 2 of 3 nodes (picture)\n"
              "Filter (* und ?): 0 von 3 Knoten (nothing)\n"
              "Filter (* and ?): 3 of 3 nodes (picture)\n");
    // The filter is for the eye: what is exported is the model.
    const std::string nodes = readFile(dir.path("out\\m.nodes.csv"));
    EXPECT_NE(nodes.find("2;ab;ab"), std::string::npos) << nodes;
}

CHILD_MAIN(hostFiltersMany) {
    return runHostHere(argc, argv, [](HWND frame) {
        const FilterWindow filter(frame);
        ::SetWindowTextA(filter.field, "1*");
        handleMessagesUntil([&] { return filter.isBusy(); });
        std::printf("%s\n", textOf(filter.outcome).c_str());
        ::SetWindowTextA(filter.field, "19999?");  // before the first is drawn
        const ULONGLONG start = ::GetTickCount64();
        handleMessagesUntil([&] { return ::GetTickCount64() - start > 200; });  // a pause
        handleMessagesUntil([&] { return !filter.isBusy(); });
        std::printf("%s\n", textOf(filter.outcome).c_str());
        ::SetWindowTextA(filter.field, "2*");
        handleMessagesUntil([&] { return filter.isBusy(); });
        command(frame, HostFrame::kExit);  // in the middle of it
    });
}

TEST(ZelhostFilter, FiltersLargeModelsBesideItsWindow) {
    const TempDir dir;
    dir.write("m.gml", largeModel());
    EXPECT_EQ(printedBehindStart(
                  runChild("hostFiltersMany", {"m.gml", "-lang1033"}, {dir.root().string()})),
              "...\n10 of 200000 nodes\nAfterDiscardModelWindow m\nAppExit\n");
}

TEST(ZelhostFilter, ShowsTheNodesOfTheLastDays) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 changed \"2024:05:01 23:59:59\" ]\n"
              "node [ id 2 duration \"x\" changed \"2024:05:02 00:00:00\" ] ]");
    AnsweredHost host(dir, {"m.gml", "-oout", "-lang1033"});
    const std::string remark =
        "m.gml(2): a duration must be like \"00:001:02:03:04\" (years, days, hours, minutes, "
        "seconds): \"x\"\n";
    EXPECT_EQ(host.nextBox().text,
              remark +
                  "\nA model of which only times are wrong is open all the same; correct its file "
                  "if they are to count.");
    post(host.frame, HostFrame::kFilter);
    EXPECT_EQ(host.nextBox().caption, "Filter by date");
    // Only then is the dialog gone, whose loop would carry out the next command.
    waitUntil([&] { return childrenOf(host.frame).size() > 1; });
    post(host.frame, HostFrame::kExport);  // the new window is the active one
    EXPECT_EQ(host.nextBox().caption, "Export");
    ASSERT_EQ(childrenOf(host.frame).size(), 2u);
    const HWND filtered = childrenOf(host.frame)[0];
    EXPECT_EQ(textOf(filtered), "m.gml - changed since Thursday, May 02, 2024");
    post(host.frame, HostFrame::kGerman);
    post(host.frame, HostFrame::kAbout);
    host.nextBox();
    EXPECT_EQ(textOf(filtered), "m.gml - ge\xE4ndert seit Donnerstag, 02. Mai 2024");
    EXPECT_EQ(readFile(dir.path("out\\m_since_2024-05-02.nodes.csv")),
              "\xEF\xBB\xBFid;caption;duration;changed\n2;2;x;2024:05:02 00:00:00\n");
    const ChildResult result = host.close();
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

TEST(ZelhostFilter, TakesWhatDialogsOfferWhenTheyAreNotShown) {
    const TempDir dir;
    dir.write("m.gml",
              "graph [ node [ id 1 changed \"2024:05:01 23:59:59\" ]\n"
              "node [ id 2 changed \"2024:05:02 00:00:00\" ] ]");
    const std::string printed = printedBehindStart(runChild(
        "hostFiltersUnseen", {"m.gml", "-lang1033", "-no_dialogs", "-log_no_dialogsboxes.txt"},
        {dir.root().string()}));
    EXPECT_NE(printed.find("m.gml - changed since Thursday, May 02, 2024\nm.gml\n"),
              std::string::npos)
        << printed;
    EXPECT_EQ(readFile(dir.path("boxes.txt")), "Filter by date\r\n");
}
