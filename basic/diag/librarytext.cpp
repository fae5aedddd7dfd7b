#include "diag/librarytext.h"

#include <string>

#include "sv/resource.h"

#include <windows.h>

namespace {

HMODULE ownModule() {
    static const char anchor = 0;  // an address within the library
    HMODULE module = nullptr;
    ::GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        &anchor, &module);
    return module;
}

SV::String toCodePage(const wchar_t* text, int length) {
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text, length, out.data(), size, nullptr, nullptr);
    return SV::String(out);
}

SV::String ownText(std::uint32_t number) {
    const wchar_t* text = nullptr;
    // With no buffer size the text itself is handed out, not a copy: no limit to its length.
    const int length = ::LoadStringW(ownModule(), number, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? toCodePage(text, length) : SV::String();
}

}  // namespace

SV::String libraryText(std::uint32_t number) {
    SV::String text;
    if (SV::Resource::FindString(number, text)) return text;
    return ownText(number);
}

std::uint64_t libraryTextGeneration() { return SV::Resource::GetGeneration(); }
