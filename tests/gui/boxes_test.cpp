#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "sv/window.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace {

using Buttons = std::vector<std::string>;

struct AnswerCase {
    const char* why;
    std::uint32_t style;
    int pressed;
    Buttons buttons;
    ZelMessageBox::Answer expected;
};

const AnswerCase kAnswers[] = {
    {"OK only", 16, IDOK, {"OK"}, ZelMessageBox::kAnswerOk},
    {"a style that means nothing has OK only", 7, IDOK, {"OK"}, ZelMessageBox::kAnswerOk},
    {"OK of two", 32, IDOK, {"OK", "Cancel"}, ZelMessageBox::kAnswerOk},
    {"Cancel of two", 32, IDCANCEL, {"OK", "Cancel"}, ZelMessageBox::kAnswerCancel},
    {"Yes", 64, IDYES, {"&Yes", "&No"}, ZelMessageBox::kAnswerYes},
    {"No", 64, IDNO, {"&Yes", "&No"}, ZelMessageBox::kAnswerNo},
    {"Cancel of three", 128, IDCANCEL, {"&Yes", "&No", "Cancel"}, ZelMessageBox::kAnswerCancel},
};

class Suppressed {
public:
    explicit Suppressed(const SV::String& log) {
        SV::Application::SetModalDialogSuppression(true);
        SV::Application::SetModalDialogSuppressionLogfileName(log);
    }
    ~Suppressed() {
        SV::Application::SetModalDialogSuppression(false);
        SV::Application::SetModalDialogSuppressionLogfileName("");
    }
};

}  // namespace

TEST(Boxes, HaveTheirButtonsAndSayWhichWasPressed) {
    for (const auto& [why, style, pressed, buttons, expected] : kAnswers) {
        SCOPED_TRACE(why);
        const BoxWatcher watcher(pressed);
        EXPECT_EQ(ZelQueryBox(nullptr, style, "Save the model?").Execute(), expected);
        const SeenBox box = watcher.waitFor(1)[0];
        EXPECT_EQ(box.text, "Save the model?");
        EXPECT_EQ(box.buttons, buttons);
        EXPECT_FALSE(box.hasErrorIcon);
    }
}

TEST(Boxes, AreCaptionedLikeTheApplicationWindow) {
    SV::MDIFrame frame("The modeller");
    SV::Application::SetAppWindow(&frame);
    const BoxWatcher watcher(IDOK);
    EXPECT_EQ(ZelErrorBox(&frame, 16, "Broken").Execute(), ZelMessageBox::kAnswerOk);
    SV::Application::SetAppWindow(nullptr);
    const SeenBox box = watcher.waitFor(1)[0];
    EXPECT_EQ(box.caption, "The modeller");
    EXPECT_TRUE(box.hasErrorIcon);
}

TEST(Boxes, AreLoggedInsteadWhenDialogsAreSuppressed) {
    const TempDir directory;
    const std::string log = directory.path("dialogs.txt");
    const BoxWatcher watcher(IDCANCEL);
    {
        const Suppressed suppressed(log.c_str());
        EXPECT_EQ(ZelWarningBox(nullptr, 32, "First").Execute(), ZelMessageBox::kAnswerOk);
        EXPECT_EQ(ZelQueryBox(nullptr, 128, "Second").Execute(), ZelMessageBox::kAnswerYes);
    }
    EXPECT_TRUE(watcher.seen().empty());
    EXPECT_EQ(readFile(log), "First\r\nSecond\r\n");
}
