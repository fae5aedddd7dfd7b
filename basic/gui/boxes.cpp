#include "sv/application.h"
#include "sv/window.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace {

struct ButtonSet {
    std::uint32_t buttons;
    UINT style;
    ZelMessageBox::Answer first;   // the answer of a box that is suppressed
    ZelMessageBox::Answer unseen;  // that of one that cannot be shown
};

constexpr ButtonSet kButtonSets[] = {
    {ZelMessageBox::kOk, MB_OK, ZelMessageBox::kAnswerOk, ZelMessageBox::kAnswerOk},
    {ZelMessageBox::kOkCancel, MB_OKCANCEL, ZelMessageBox::kAnswerOk, ZelMessageBox::kAnswerCancel},
    {ZelMessageBox::kYesNo, MB_YESNO, ZelMessageBox::kAnswerYes, ZelMessageBox::kAnswerNo},
    {ZelMessageBox::kYesNoCancel, MB_YESNOCANCEL, ZelMessageBox::kAnswerYes,
     ZelMessageBox::kAnswerCancel},
};

const ButtonSet& buttonSet(std::uint32_t buttons) {
    for (const ButtonSet& set : kButtonSets) {
        if (set.buttons == buttons) return set;
    }
    return kButtonSets[0];
}

ZelMessageBox::Answer answerOf(int button, const ButtonSet& set) {
    switch (button) {
        case IDOK:
            return ZelMessageBox::kAnswerOk;
        case IDYES:
            return ZelMessageBox::kAnswerYes;
        case IDNO:
            return ZelMessageBox::kAnswerNo;
        case IDCANCEL:  // Escape gives it also to a box that has nothing but OK
            return set.style == MB_OK ? ZelMessageBox::kAnswerOk : ZelMessageBox::kAnswerCancel;
        default:
            return set.unseen;
    }
}

}  // namespace

ZelMessageBox::ZelMessageBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message,
                             std::uint32_t icon)
    : m_parent(parent), m_buttons(buttons), m_icon(icon), m_message(message) {}

ZelMessageBox::Answer ZelMessageBox::Execute() const {
    const ButtonSet& set = buttonSet(m_buttons);
    if (SV::Application::IsModalDialogSuppression()) {
        SV::Application::ModalDialogSuppressionLog(m_message);
        return set.first;
    }
    SV::Window* const owner = m_parent ? m_parent : Zel_GetTopParentWindow();
    const SV::Window* const window = SV::Application::GetAppWindow();
    const UINT modality = owner ? MB_APPLMODAL : MB_TASKMODAL;
    const int button = SV::ShowMessageBox(owner, m_message, window ? window->GetText() : "",
                                          m_icon | set.style | modality);
    return answerOf(button, set);
}

ZelErrorBox::ZelErrorBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message)
    : ZelMessageBox(parent, buttons, message, MB_ICONERROR) {}

ZelWarningBox::ZelWarningBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message)
    : ZelMessageBox(parent, buttons, message, MB_ICONWARNING) {}

ZelInfoBox::ZelInfoBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message)
    : ZelMessageBox(parent, buttons, message, MB_ICONINFORMATION) {}

ZelQueryBox::ZelQueryBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message)
    : ZelMessageBox(parent, buttons, message, MB_ICONQUESTION) {}
