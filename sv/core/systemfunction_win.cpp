#include "sv/systemfunction.h"

#include <windows.h>

namespace SV {

void* FindSystemFunction(const char* library, const char* name) {
    const HMODULE module = ::LoadLibraryExA(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module ? reinterpret_cast<void*>(::GetProcAddress(module, name)) : nullptr;
}

}  // namespace SV
