// GUI support: the theme's colours, mixing of colours, and the parent windows of boxes.

#pragma once

#include <cstdint>

#include "sv/color.h"
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

class ZBASIC_API ZelColor {
public:
    // `source` blended over `target`: `weight` (0 to 1) of the one, the rest of the other.
    static SV::Color srcOver(SV::Color source, SV::Color target, double weight);
};

// The stack of windows that own the modal boxes of the moment; the one on top owns the
// next box. Each change triggers the event "ZelWindowStackChanged" with the depth and
// the window's title. Windows are not owned. Main thread only.
extern "C" {
ZBASIC_API void Zel_PushParentWindow(SV::Window* window);
ZBASIC_API void Zel_PopParentWindow();            // nothing happens to an empty stack
ZBASIC_API SV::Window* Zel_GetTopParentWindow();  // null for an empty stack
}
