#include <string>

#include "sys/environment.h"

#include <windows.h>

std::optional<SV::String> environmentText(const char* name) {
    std::string text(MAX_PATH, '\0');
    for (;;) {
        ::SetLastError(ERROR_SUCCESS);
        const auto room = static_cast<DWORD>(text.size());
        const DWORD size = ::GetEnvironmentVariableA(name, text.data(), room);
        if (size == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
        text.resize(size);
        if (size < room) return SV::String(text);  // else the size that it needs, with NUL
    }
}
