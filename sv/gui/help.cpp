#include "sv/help.h"

#include <cstdint>

#include <windows.h>
#include <shellapi.h>

namespace SV {

bool Help::Show() const {
    if (m_mode == kOff || m_fileName.empty()) return false;
    // Loaded when it is needed: the shell brings half of the system with it.
    const HMODULE shell = ::LoadLibraryExA("shell32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!shell) return false;
    void* const address = reinterpret_cast<void*>(::GetProcAddress(shell, "ShellExecuteA"));
    const auto execute = reinterpret_cast<decltype(&::ShellExecuteA)>(address);
    std::intptr_t result = 0;  // a handle in name only: above 32 means that the viewer was started
    if (execute) {
        result = reinterpret_cast<std::intptr_t>(
            execute(nullptr, "open", m_fileName.c_str(), nullptr, nullptr, SW_SHOWNORMAL));
    }
    ::FreeLibrary(shell);
    return result > 32;
}

}  // namespace SV
