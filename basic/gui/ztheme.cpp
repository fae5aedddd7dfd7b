#include "zbasic/zgui.h"

#include <windows.h>

namespace {

SV::Color systemColor(int index) { return SV::Color::FromRef(::GetSysColor(index)); }

}  // namespace

ZelThemeManager& ZelThemeManager::Instance() {
    static ZelThemeManager manager;
    return manager;
}

ZelThemeManager::ZelThemeManager() { SysThemeChanged(); }

void ZelThemeManager::SysThemeChanged() {
    m_text = systemColor(COLOR_WINDOWTEXT);
    m_workspace = systemColor(COLOR_APPWORKSPACE);
    m_window = systemColor(COLOR_WINDOW);
}

SV::Color ZelThemeManager::GetColor(std::int32_t number) const {
    switch (number) {
        case kText:
            return m_text;
        case kWorkspace:
            return m_workspace;
        default:
            return m_window;
    }
}
