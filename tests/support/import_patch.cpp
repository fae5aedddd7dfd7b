#include "support/import_patch.h"

#include <gtest/gtest.h>

#include <cstring>

#include <windows.h>

namespace {

constexpr const char* kModules[] = {"zbasic18.dll", "sv18.dll", "msvcrt.dll", "libstdc++-6.dll",
                                    "dbghelp.dll"};

unsigned long g_error = 0;
std::intptr_t g_result = 0;
int g_count = 0;

// Takes arguments of any number: on this processor it is the caller who cleans them up.
std::intptr_t fail() {
    ++g_count;
    ::SetLastError(g_error);
    return g_result;
}

std::string g_debugOutput;

BOOL WINAPI debuggerIsPresent() { return TRUE; }
void WINAPI takeDebugOutput(const char* text) { g_debugOutput += text; }

void exchange(void** slot, void* value) {
    DWORD before = 0;
    ::VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
    *slot = value;
    ::VirtualProtect(slot, sizeof *slot, before, &before);
}

template <class T>
T* at(HMODULE module, std::uint64_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<unsigned char*>(module) + offset);
}

// The places of a loaded module that hold the address of a function imported by this name.
std::vector<void**> slotsOf(const char* moduleName, const char* function) {
    std::vector<void**> slots;
    const HMODULE module = ::GetModuleHandleA(moduleName);
    if (!module) return slots;
    const auto* const dos = at<IMAGE_DOS_HEADER>(module, 0);
    const auto* const headers =
        at<IMAGE_NT_HEADERS>(module, static_cast<std::uint64_t>(dos->e_lfanew));
    const auto& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress);
    for (; imports.Size != 0 && library->Name; ++library) {
        const auto* name = at<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* slot = at<void*>(module, library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const entry = at<IMAGE_IMPORT_BY_NAME>(module, name->u1.AddressOfData);
            const auto* const text = reinterpret_cast<const char*>(entry->Name);
            if (std::strcmp(text, function) == 0) slots.push_back(slot);
        }
    }
    return slots;
}

}  // namespace

ImportPatch::ImportPatch(const char* module, const char* function, const void* replacement) {
    for (void** const slot : slotsOf(module, function)) {
        m_places.push_back({slot, *slot});
        exchange(slot, const_cast<void*>(replacement));
    }
    EXPECT_FALSE(m_places.empty()) << module << " imports no " << function;
}

ImportPatch::~ImportPatch() {
    for (const auto& [slot, before] : m_places) exchange(slot, before);
}

FailingCall::FailingCall(const std::string& function, unsigned long error, std::intptr_t result) {
    g_error = error;
    g_result = result;
    g_count = 0;
    for (const char* const module : kModules) {
        for (const std::string& name : {function, function + "A", function + "W"}) {
            if (slotsOf(module, name.c_str()).empty()) continue;
            m_patches.push_back(std::make_unique<ImportPatch>(module, name.c_str(),
                                                              reinterpret_cast<void*>(&fail)));
        }
    }
    EXPECT_FALSE(m_patches.empty()) << "nobody imports " << function;
}

FailingCall::~FailingCall() { g_count = 0; }

int FailingCall::count() { return g_count; }

DebugOutput::DebugOutput()
    : m_presence("zbasic18.dll", "IsDebuggerPresent", reinterpret_cast<void*>(&debuggerIsPresent)),
      m_output("zbasic18.dll", "OutputDebugStringA", reinterpret_cast<void*>(&takeDebugOutput)) {
    g_debugOutput.clear();
}

std::string DebugOutput::text() { return g_debugOutput; }
