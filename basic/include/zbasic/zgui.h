// GUI support: colours, the scale of the screen, boxes and their parent windows.

#pragma once

#include <cstdint>

#include "sv/color.h"
#include "sv/string.h"
#include "zbasic/zexport.h"

namespace SV {
class Window;
}

// Colours of the platform's look, taken from the system's settings. Main thread only.
class ZBASIC_API ZelThemeManager {
public:
    // Numbers of the theme's colours, as far as they have a meaning here.
    enum ColorNumber : std::int32_t {
        kText = 0,
        kWorkspace = 11,  // behind the child windows of an MDI frame
    };

    // The one of the process, which asks for the colours when it is made.
    static ZelThemeManager& Instance();

    // Numbers without a meaning give the window background colour.
    SV::Color GetColor(std::int32_t number) const;

    // The system's look has changed: colours are asked for anew.
    void SysThemeChanged();

private:
    ZelThemeManager();

    SV::Color m_text;
    SV::Color m_workspace;
    SV::Color m_window;
};

// Arithmetic with colours. Any thread may use it.
class ZBASIC_API ZelColor {
public:
    // `source` blended over `target`: `weight` (0 to 1) of the one, the rest of the other.
    static SV::Color srcOver(SV::Color source, SV::Color target, double weight);
};

// Whether the system is Windows Vista (6.0) or later, which brings the newer default font.
ZBASIC_API bool Zel_IsAtLeastWindowsVista();

// The screen's vertical dots per inch as a multiple of 96: 1.25 for 120. Asked for by the
// first call and kept for the life of the process. Any thread may ask.
ZBASIC_API double Zel_GetSystemDPIScaleY();

// The stack of windows that own the modal boxes of the moment; the one on top owns the
// next box. Each change triggers the event "ZelWindowStackChanged" with the depth and
// the window's title. Windows are not owned. Main thread only.
extern "C" {
ZBASIC_API void Zel_PushParentWindow(SV::Window* window);
ZBASIC_API void Zel_PopParentWindow();            // nothing happens to an empty stack
ZBASIC_API SV::Window* Zel_GetTopParentWindow();  // null for an empty stack
}

// A modal box with a message: what the four kinds below share. Main thread only.
//
// Its owner is `parent` (not owned), without one the window on top of the stack; its caption
// is the application window's title. The busy state is switched off while it is open.
// Under dialog suppression it is not shown but logged, and its first button is the answer.
class ZBASIC_API ZelMessageBox {
public:
    // The buttons that a box has.
    enum Buttons : std::uint32_t { kOk = 16, kOkCancel = 32, kYesNo = 64, kYesNoCancel = 128 };
    // The button that closed it.
    enum Answer : std::int32_t { kAnswerCancel = 0, kAnswerOk = 1, kAnswerYes = 2, kAnswerNo = 3 };

    // Opens the box and waits for the user. A box that the system cannot show is cancelled,
    // one with nothing to cancel counts as read (OK) or refused (No).
    Answer Execute() const;

protected:
    // An unknown `buttons` value gives an OK button.
    ZelMessageBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message,
                  std::uint32_t icon);
    ~ZelMessageBox() = default;

private:
    SV::Window* m_parent;
    std::uint32_t m_buttons;
    std::uint32_t m_icon;  // as the system numbers it
    SV::String m_message;
};

// A box about something that failed, with the system's icon and sound for that.
class ZBASIC_API ZelErrorBox : public ZelMessageBox {
public:
    // Opens nothing yet. `buttons` is one of `Buttons`; an unknown value gives an OK button.
    ZelErrorBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message);
};

// A box about something that may go wrong, with the system's icon and sound for that.
class ZBASIC_API ZelWarningBox : public ZelMessageBox {
public:
    // Opens nothing yet. `buttons` is one of `Buttons`; an unknown value gives an OK button.
    ZelWarningBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message);
};

// A box that only tells something, with the system's icon and sound for that.
class ZBASIC_API ZelInfoBox : public ZelMessageBox {
public:
    // Opens nothing yet. `buttons` is one of `Buttons`; an unknown value gives an OK button.
    ZelInfoBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message);
};

// A box that asks something, with the system's icon and sound for that.
class ZBASIC_API ZelQueryBox : public ZelMessageBox {
public:
    // Opens nothing yet. `buttons` is one of `Buttons`; an unknown value gives an OK button.
    ZelQueryBox(SV::Window* parent, std::uint32_t buttons, const SV::String& message);
};
