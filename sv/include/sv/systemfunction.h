// Functions of the system's libraries that are looked for when they are needed.

#pragma once

#include "sv/export.h"

namespace SV {

// Null when the system's own folder has no such library, or that no such function. The library
// stays loaded: what it begins (threads of the shell, say) may outlive the call. Any thread.
SV_API void* FindSystemFunction(const char* library, const char* name);

// The same with the function's type. Starting a program need not pay for a library that few of its
// runs call:
//
//     if (auto* const execute = SV::SystemFunction<decltype(::ShellExecuteA)>("shell32.dll", ...))
template <class Function>
Function* SystemFunction(const char* library, const char* name) {
    return reinterpret_cast<Function*>(FindSystemFunction(library, name));
}

}  // namespace SV
