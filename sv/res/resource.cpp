#include "sv/resource.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "sv/application.h"
#include "sv/path.h"

#include <windows.h>

namespace SV {

namespace {

ResMgr* g_current = nullptr;
std::uint64_t g_generation = 1;

// All living managers in the order of loading.
std::vector<const ResMgr*>& managers() {
    static std::vector<const ResMgr*> all;
    return all;
}

// The exception's detail has 32 bits, an address 64: the name goes to a page of the lowest 4 GiB.
unsigned long nameForException(const String& fileName) {
    constexpr std::size_t kPageSize = 4096;
    constexpr std::uintptr_t kFirst = 0x10000000, kLast = 0xF0000000, kStep = 0x1000000;
    static char* page = nullptr;
    for (std::uintptr_t hint = kFirst; !page && hint <= kLast; hint += kStep) {
        page = static_cast<char*>(::VirtualAlloc(reinterpret_cast<void*>(hint), kPageSize,
                                                 MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    }
    if (!page) return 0;
    const std::size_t length = std::min(fileName.size(), kPageSize - 1);
    std::memcpy(page, fileName.data(), length);
    page[length] = '\0';
    return static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(page));
}

HMODULE loadAsData(const String& fileName) {
    const String path = IsAbsolutePath(fileName) ? fileName : GetProgramDirectory() + fileName;
    return ::LoadLibraryExA(path.c_str(), nullptr,
                            LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
}

}  // namespace

ResMgr::ResMgr(const String& fileName) : m_fileName(fileName) {
    managers().reserve(managers().size() + 1);  // nothing may fail between loading and knowing it
    m_module = loadAsData(fileName);
    managers().push_back(this);
    ++g_generation;
    if (m_module) return;
    if (Application* const application = GetpApp()) {
        application->Exception(Application::kResourceFileFailed, nameForException(fileName));
    }
}

ResMgr::~ResMgr() {
    std::erase(managers(), this);
    ++g_generation;
    if (g_current == this) g_current = nullptr;
    if (m_module) ::FreeLibrary(static_cast<HMODULE>(m_module));
}

bool ResMgr::FindString(std::uint32_t number, String& text) const {
    if (!m_module) return false;
    const wchar_t* wide = nullptr;  // a size of 0 asks for the place instead of a copy
    const int length =
        ::LoadStringW(static_cast<HMODULE>(m_module), number, reinterpret_cast<wchar_t*>(&wide), 0);
    if (length <= 0) return false;
    constexpr int kMostBytes = 3;  // that a UTF-16 unit takes in any code page, UTF-8 included
    std::string narrow(static_cast<std::size_t>(kMostBytes * length), '\0');
    const int size = ::WideCharToMultiByte(CP_ACP, 0, wide, length, narrow.data(),
                                           kMostBytes * length, nullptr, nullptr);
    text.assign(narrow.data(), static_cast<std::size_t>(size));
    return true;
}

const void* ResMgr::FindDialog(std::uint32_t number) const {
    const auto module = static_cast<HMODULE>(m_module);
    // The number takes the place of a name.
    const auto* const name = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(number));
    const HRSRC found = module ? ::FindResourceA(module, name, RT_DIALOG) : nullptr;
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    return loaded ? ::LockResource(loaded) : nullptr;
}

ResMgr* Resource::GetResManager() { return g_current; }

void Resource::SetResManager(ResMgr* manager) {
    if (manager == g_current) return;
    g_current = manager;
    ++g_generation;
}

std::uint64_t Resource::GetGeneration() { return g_generation; }

bool Resource::FindString(std::uint32_t number, String& text) {
    if (g_current && g_current->FindString(number, text)) return true;
    return std::ranges::any_of(
        managers(), [&](const ResMgr* manager) { return manager->FindString(number, text); });
}

const void* Resource::FindDialog(std::uint32_t number) {
    const void* dialog = g_current ? g_current->FindDialog(number) : nullptr;
    for (const ResMgr* manager : managers()) {
        if (!dialog) dialog = manager->FindDialog(number);
    }
    return dialog;
}

String Resource::GetString(const ResId& id) {
    ResMgr* const first = g_current;
    String text;
    while (!g_current || !g_current->FindString(id.number, text)) {
        Application* const application = GetpApp();
        if (!application || !application->Exception(Application::kResourceMissing, id.number))
            break;
    }
    SetResManager(first);
    return text;
}

}  // namespace SV
