// The names in lists and in other languages, and the control for a day of the year.

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "support/child.h"
#include "sv/application.h"
#include "sv/resource.h"
#include "sv/window.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zdattime.h"

#include <windows.h>
#include <commctrl.h>

namespace {

constexpr char kEnglish[] = "language\\1033\\zbasic18.dll";
constexpr SV::ResId kDayMonth(ZelDayMonthControl::kResource, SV::ResId::kDialog);
constexpr char kGerman[] = "language\\1031\\zbasic18.dll";

// Texts and dialogs come from one language while it lives.
class Language {
public:
    explicit Language(const char* file) : m_file(file) { SV::Resource::SetResManager(&m_file); }

private:
    SV::ResMgr m_file;
};

class DayMonth : public ::testing::Test {
protected:
    HWND part(int id) const { return ::GetDlgItem(control.GetHandle(), id); }
    HWND field() const { return part(101); }
    HWND buttons() const { return part(102); }
    HWND list() const { return part(103); }
    void press(HWND window, WPARAM key) {
        ::SendMessageA(window, WM_KEYDOWN, key, 0);
        ::SendMessageA(window, WM_KEYUP, key, 0);
    }
    void click(HWND window, int x, int y) {
        ::SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        ::SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    void type(const char* text) {
        ::SendMessageA(field(), EM_SETSEL, 0, -1);
        for (const char* c = text; *c; ++c)
            ::SendMessageA(field(), WM_CHAR, static_cast<WPARAM>(*c), 0);
    }
    void leave() { ::SendMessageA(field(), WM_KILLFOCUS, 0, 0); }
    std::string shown() const {
        char text[32] = "";
        ::GetWindowTextA(field(), text, sizeof text);
        return text;
    }

    const Language language{kEnglish};
    SV::MDIFrame frame{"Days"};
    ZelDayMonthControl control{&frame, kDayMonth, 0, 0};
};

}  // namespace

// Selects months that there are not; internal errors go to standard error.
CHILD_MAIN(dayMonthFault) {
    char console[] = "-console";
    char* arguments[] = {argv[0], console, nullptr};
    ZelCmdline::init(2, arguments, false, "");
    SV::Application application;
    SV::Application::SetModalDialogSuppression(true);
    const Language language(kEnglish);
    SV::MDIFrame frame("Days");
    ZelDayMonthControl control(&frame, kDayMonth, 0, 0);
    control.SetMonth(7);
    control.SetMonth(12);
    control.SetMonthString("august");
    std::printf("%d\n", control.GetMonth());
    return 0;
}

TEST(DayMonthFault, IsReportedAndChangesNothing) {
    ChildOptions options;
    options.environment = {"TEMP=Z:\\no such folder", "TMP=Z:\\no such folder"};
    const ChildResult result = runChild("dayMonthFault", {}, options);
    EXPECT_EQ(result.out, "7\n");
    const std::string report = "[dEM] zdattime.cpp (984): zdattime-984 ";
    EXPECT_EQ(result.err.find(report), 0u) << result.err;
    EXPECT_NE(result.err.find(report, 1), std::string::npos) << result.err;
}

TEST(Names, FollowTheLanguage) {
    EXPECT_EQ(ZelDate::MonthToStr(2), "March");
    EXPECT_EQ(ZelDate::GetMaximumWeekdayLength(), 9);
    auto german = std::make_unique<Language>(kGerman);
    EXPECT_EQ(ZelDate::MonthToStr(2), "M\xE4rz");
    EXPECT_EQ(ZelDate::WeekdayToStr(SV::Sunday), "Sonntag");
    int month = 0;
    EXPECT_TRUE(ZelDate::StrToMonth("M\xE4rz", month));
    EXPECT_FALSE(ZelDate::StrToMonth("March", month));
    // The picture is in upper case, names are not.
    EXPECT_EQ(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), "ddd, dd. mmm yyyy"),
              "Donnerstag, 07. M\xE4rz 2024");
    EXPECT_EQ(ZelDate::GetMaximumWeekdayLength(), 9) << "a length stays, here Donnerstag has 10";
    {
        const Language english(kEnglish);
        EXPECT_EQ(ZelDate::MonthToStr(2), "March");
    }
    EXPECT_EQ(ZelDate::MonthToStr(2), "M\xE4rz") << "the only file that is left";
    german.reset();
    EXPECT_EQ(ZelDate::MonthToStr(2), "March") << "the library's own";
}

TEST_F(DayMonth, FillsLists) {
    EXPECT_FALSE(ZelDate::FillListBoxWithMonthNames(nullptr));
    EXPECT_FALSE(ZelDate::FillListBoxWithWeekdayNames(nullptr));
    ::CreateWindowA("LISTBOX", "", WS_CHILD, 0, 0, 80, 80, frame.GetHandle(),
                    reinterpret_cast<HMENU>(7), nullptr, nullptr);
    SV::ListBox box(frame, 7);
    box.Append("before");
    EXPECT_TRUE(ZelDate::FillListBoxWithMonthNames(&box));
    EXPECT_EQ(box.GetCount(), 12);
    EXPECT_EQ(box.GetEntry(8), "September");
    box.SelectPos(5);
    EXPECT_TRUE(ZelDate::FillListBoxWithWeekdayNames(&box));
    EXPECT_EQ(box.GetCount(), 7);
    EXPECT_EQ(box.GetEntry(6), "Sunday");
    EXPECT_EQ(box.GetEntry(7), "");
    EXPECT_EQ(box.GetSelectedPos(), 0);
}

TEST_F(DayMonth, KeepsTheDayWithinTheMonth) {
    struct Case {
        const char* why;
        int month;
        int day;
        int expected;
    };
    const Case cases[] = {
        {"the last one", 0, 31, 31}, {"too large", 0, 32, 31},     {"zero", 0, 0, 1},
        {"negative", 0, -7, 1},      {"a short month", 3, 31, 30}, {"February", 1, 29, 28}};
    EXPECT_EQ(control.GetDay(), 1);
    EXPECT_EQ(control.GetMonth(), 0);
    for (const auto& [why, month, day, expected] : cases) {
        control.SetMonth(month);
        control.SetDay(day);
        EXPECT_EQ(control.GetDay(), expected) << why;
        EXPECT_EQ(shown(), std::to_string(expected)) << why;
    }
    control.AllowFebruary29th(true);
    control.SetDay(29);
    EXPECT_EQ(control.GetDay(), 29);
    control.AllowFebruary29th(false);
    EXPECT_EQ(control.GetDay(), 28);
    control.SetMonthString("May");
    control.SetDay(31);
    EXPECT_EQ(control.GetMonthString(), "May");
    control.SetMonthString("June");
    EXPECT_EQ(control.GetDay(), 30) << "another month takes the day along";
}

TEST_F(DayMonth, IsUsedByKeyboard) {
    press(field(), VK_UP);
    EXPECT_EQ(control.GetDay(), 2);
    press(field(), VK_DOWN);
    press(field(), VK_DOWN);
    EXPECT_EQ(control.GetDay(), 1) << "no day 0";
    type("17");
    EXPECT_EQ(control.GetDay(), 17);
    type("4x5");
    EXPECT_EQ(control.GetDay(), 31) << "letters are no digits";
    EXPECT_EQ(shown(), "45") << "as long as it is typed";
    leave();
    EXPECT_EQ(shown(), "31");
    press(list(), VK_DOWN);
    EXPECT_EQ(control.GetMonth(), 1);
    EXPECT_EQ(shown(), "28");
    type("");
    press(field(), VK_DELETE);
    leave();
    EXPECT_EQ(shown(), "1");
}

TEST_F(DayMonth, IsUsedByMouse) {
    RECT area;
    ::GetClientRect(buttons(), &area);
    click(buttons(), area.right / 2, area.bottom / 4);
    EXPECT_EQ(control.GetDay(), 2);
    click(buttons(), area.right / 2, area.bottom * 3 / 4);
    EXPECT_EQ(control.GetDay(), 1);
}

TEST_F(DayMonth, IsEnabledAndResizedAsOne) {
    control.SetEnabled(false);
    for (const HWND window : {control.GetHandle(), field(), buttons(), list()}) {
        EXPECT_FALSE(::IsWindowEnabled(window));
    }
    control.SetEnabled(true);
    for (const HWND window : {control.GetHandle(), field(), buttons(), list()}) {
        EXPECT_TRUE(::IsWindowEnabled(window));
    }
    control.SetMFWidth(60);
    control.SetLBWidth(100);
    EXPECT_EQ(control.GetMFWidth(), 60);
    EXPECT_EQ(control.GetLBWidth(), 100);
    SV::Area area = control.GetArea();
    area.width += 50;
    control.SetArea(area);
    EXPECT_EQ(control.GetMFWidth(), 60);
    EXPECT_EQ(control.GetLBWidth(), 150);
    RECT open;
    ::SendMessageA(list(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
    EXPECT_GT(open.bottom - open.top, 100) << "the open list has room for its months";
    const ZelDayMonthControl given(&frame, kDayMonth, 70, 130);
    EXPECT_EQ(given.GetMFWidth(), 70);
    EXPECT_EQ(given.GetLBWidth(), 130);
}

TEST_F(DayMonth, OutlivesItsWindow) {
    ::DestroyWindow(frame.GetHandle());
    EXPECT_FALSE(control.GetHandle());
    control.SetDay(7);
    control.SetMonth(5);
    control.SetEnabled(false);
    control.SetMFWidth(10);
    EXPECT_EQ(control.GetDay(), 1);
}
