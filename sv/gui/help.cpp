#include "sv/help.h"

#include <cstdint>

#include "sv/systemfunction.h"

#include <windows.h>
#include <shellapi.h>

namespace SV {

bool Help::Show() const {
    if (m_mode == kOff || m_fileName.empty()) return false;
    // The shell brings half of the system with it.
    auto* const execute = SystemFunction<decltype(::ShellExecuteA)>("shell32.dll", "ShellExecuteA");
    if (!execute) return false;
    // A handle in name only: above 32 means that the viewer was started.
    const auto result = reinterpret_cast<std::intptr_t>(
        execute(nullptr, "open", m_fileName.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    return result > 32;
}

}  // namespace SV
