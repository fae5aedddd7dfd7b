// Windows, what the user is shown, and the program as a whole.

#include <new>
#include <utility>

#include "hardening/allocation_paths.h"
#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "sv/control.h"
#include "sv/image.h"
#include "zbasic/zapp.h"
#include "zbasic/zdattime.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

constexpr SV::ResId kDayMonth(ZelDayMonthControl::kResource, SV::ResId::kDialog);
constexpr int kDayField = 101;

BOOL CALLBACK countFrame(HWND window, LPARAM count) {
    char name[20] = "";
    ::GetClassNameA(window, name, sizeof name);
    if (name == std::string_view("SvMDIFrame")) ++*reinterpret_cast<long*>(count);
    return TRUE;
}

// Of this thread, those that nobody destroyed included.
long frameCount() {
    long count = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), countFrame, reinterpret_cast<LPARAM>(&count));
    return count;
}

void makeFrame(Answer& answer) {
    SV::MDIFrame frame(kText);
    const SV::MDIChild child(frame, kText);
    SV::Menu file, bar(SV::Menu::Kind::kBar);
    file.Append(1, kText);
    bar.Append(std::move(file), kText);
    frame.SetMenu(std::move(bar));
    answer.add(frame.GetText()).add(child.GetText()).add(frameCount());
}

Step stacking() {
    const auto frame = std::make_shared<SV::MDIFrame>(kText);
    return [frame](Answer& answer) {
        try {
            Zel_PushParentWindow(frame.get());
        } catch (const std::bad_alloc&) {
            answer.add(Zel_GetTopParentWindow() ? "lost" : "not there");
            return;
        }
        try {
            Zel_PopParentWindow();
        } catch (const std::bad_alloc&) {
        }
        answer.add(Zel_GetTopParentWindow() ? "lost" : "taken");
    };
}

// With English texts and dialogs.
struct DayMonth {
    DayMonth() {
        SV::Resource::SetResManager(&language);
        control = std::make_unique<ZelDayMonthControl>(&frame, kDayMonth, 0, 0);
    }

    SV::ResMgr language{SV::String("language\\1033\\zbasic18.dll")};
    SV::MDIFrame frame{kText};
    std::unique_ptr<ZelDayMonthControl> control;
};

Step typing() {
    return [days = std::make_shared<DayMonth>()](Answer& answer) {
        const HWND field = ::GetDlgItem(days->control->GetHandle(), kDayField);
        for (const char* const typed : {"12", "-99999999999999999999", "99999999999999999999"}) {
            ::SetWindowTextA(field, typed);
            ::SendMessageA(field, WM_KILLFOCUS, 0, 0);
            answer.add(days->control->GetDay());
        }
        SV::GetpApp()->Reschedule();  // would throw what was thrown meanwhile
    };
}

int g_boxes = 0;

// Stands in for message boxes.
int WINAPI sayYes(HWND, const char*, const char*, UINT) {
    ++g_boxes;
    return IDYES;
}

// Boxes are shown (but see above) as long as it lives.
struct BoxesAreShown {
    BoxesAreShown() { SV::Application::SetModalDialogSuppression(false); }
    BoxesAreShown(const BoxesAreShown&) = delete;
    BoxesAreShown& operator=(const BoxesAreShown&) = delete;
    ~BoxesAreShown() { SV::Application::SetModalDialogSuppression(true); }

    const ImportPatch ofLibrary{"sv18.dll", "MessageBoxA", reinterpret_cast<void*>(&sayYes)};
    const ImportPatch ofAssertions{"zbasic18.dll", "MessageBoxA", reinterpret_cast<void*>(&sayYes)};
};

Step withBoxes(void (*step)(Answer&)) {
    const auto shown = std::make_shared<BoxesAreShown>();
    const auto frame = std::make_shared<SV::MDIFrame>(kText);
    return [shown, frame, step](Answer& answer) { step(answer); };
}

void reportWhileBusy(Answer& answer) {
    SV::GetpApp()->Wait(true);
    try {
        displayErrorMessage("zsource.cxx", 1);
    } catch (const std::bad_alloc&) {
        answer.add(kThrows);
    }
    answer.add(SV::GetpApp()->IsWait() ? "still busy" : "lost");
}

// It is shown once in a process.
void tellOfDeadNetwork(Answer& answer) {
    static const int before = g_boxes;
    displayDeadNetworkMessage();
    answer.add(g_boxes - before == 1 ? "shown" : "lost");
}

long g_bitmaps = 0;
decltype(&::CreateDIBSection) g_createSection = &::CreateDIBSection;

HBITMAP WINAPI countedSection(HDC device, const BITMAPINFO* info, UINT usage, void** bits,
                              HANDLE section, DWORD offset) {
    ++g_bitmaps;
    return g_createSection(device, info, usage, bits, section, offset);
}

BOOL WINAPI countedDelete(HGDIOBJ object) {
    if (::GetObjectType(object) == OBJ_BITMAP) --g_bitmaps;
    return ::DeleteObject(object);
}

struct CountedBitmaps {
    const ImportPatch made{"sv18.dll", "CreateDIBSection",
                           reinterpret_cast<void*>(&countedSection)};
    const ImportPatch deleted{"sv18.dll", "DeleteObject", reinterpret_cast<void*>(&countedDelete)};
};

Step drawing() {
    return [counted = std::make_shared<CountedBitmaps>()](Answer& answer) {
        {
            SV::Image image({20, 10});
            image.Rescale({40, 20});
            image.Crop(0, 0, 9, 9);
            const SV::Bitmap bitmap(image);
            const SV::VirtualDevice device({30, 30});
            const bool isWhole = image.GetSize().width == 10 && bitmap.GetSize().width == 10 &&
                                 device.GetBitmap().GetSize().width == 30;
            answer.add(isWhole ? "whole" : "without some");
        }
        answer.add(g_bitmaps == 0 ? "none left" : "lost");
    };
}

class Program : public ZelMDIApplication {
public:
    explicit Program(Answer& answer)
        : ZelMDIApplication("a program of the sweep", true, "a_log_of_dialogs_with_a_long_name"),
          m_answer(answer) {}

    int initApplication() override {
        m_answer.add(createResourceManager("zbasic", true)).add(MakeMDIClientImg(false));
        createHelpObject("a tool of the sweep");
        return 0;
    }
    int runApplication() override {
        m_answer.add(GetAppInternational().GetCancelText()).add(GetAppFont().GetFace());
        m_answer.add(Zel_GetStartCWD(false).empty() ? "lost" : "started");
        SysChange(SV::SysChangeType::kVisualStyle);
        return 0;
    }
    bool getMDIClientImage(SV::Image& image, int& mode) override {
        image = SV::Image({10, 10});
        mode = kCentred;
        return true;
    }

private:
    Answer& m_answer;
};

// The options lie where the command line is read from until the process ends.
Step running() {
    struct Arguments {
        TempDir folder;
        std::string traceFile = "-trf" + folder.path("a_trace_file_with_a_long_name.txt");
        std::string pidFile = "-pidfile" + folder.path("a_pid_file_with_a_long_name.txt");
        char program[16] = "program.exe", language[16] = "-lang1031", trace[16] = "-trace",
             font[40] = "-fA font that has a rather long name";
        char* list[6] = {program, language, trace, font, traceFile.data(), pidFile.data()};
    };
    static Arguments& arguments = *new Arguments;
    // The command line is read more than once in this process, which is reported.
    return [shown = std::make_shared<BoxesAreShown>()](Answer& answer) {
        Program program(answer);
        program.Run(6, arguments.list);
        Zel_EnableTracing(false);
        ZelInternational::SetCurrentLanguageID(1033);
    };
}

}  // namespace

const std::vector<AllocationPath>& guiPaths() {
    static const std::vector<AllocationPath> paths = {
        {"a frame with a child and a menu", alone(makeFrame), {kThrows}},
        {"a window on the stack", stacking, {"not there"}},
        {"a control",
         alone([](Answer& answer) { answer.add(DayMonth().control->GetMonthString()); }),
         {kThrows}},
        {"a number that is typed", typing, {}},
        {"pictures", drawing, {"without some none left"}},
        {"a box",
         [] {
             return withBoxes([](Answer& answer) {
                 const ZelQueryBox box(nullptr, ZelMessageBox::kYesNo, kText);
                 answer.add(box.Execute() == ZelMessageBox::kAnswerYes ? "yes" : "lost");
             });
         },
         {kThrows}},
        {"an assertion",
         [] {
             return withBoxes([](Answer& answer) {
                 answer.add(ZEL_Assert_Fail("source.cpp", 1, kText, kText));
             });
         },
         {kThrows}},
        {"an internal error", [] { return withBoxes(reportWhileBusy); }, {"throws still busy"}},
        {"a lost connection", [] { return withBoxes(tellOfDeadNetwork); }, {kThrows}},
        {"a minidump",
         alone([](Answer& answer) { answer.add(Fct_CreateMiniDump(kText, 1)); }),
         {kThrows}},
        // The last one: there is no current application object any more.
        {"a program",
         running,
         {kThrows, "1 0 Abbrechen A font that has a rather long name started"}},
    };
    return paths;
}
