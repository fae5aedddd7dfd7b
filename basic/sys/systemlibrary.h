// Libraries of the system that are loaded when they are needed.

#pragma once

#include <windows.h>

// Starting a program must not pay for them. Once loaded it stays so until the process ends: what
// it began (threads of the shell, say) may outlive the call.
class SystemLibrary {
public:
    explicit SystemLibrary(const char* name)
        : m_module(::LoadLibraryExA(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {}

    // Null when the library or the function is not there.
    template <typename Function>
    Function* find(const char* name) const {
        if (!m_module) return nullptr;
        return reinterpret_cast<Function*>(
            reinterpret_cast<void*>(::GetProcAddress(m_module, name)));
    }

private:
    const HMODULE m_module;
};
