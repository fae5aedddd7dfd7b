#include <cstdarg>
#include <set>
#include <utility>

#include "app/guardedcall.h"
#include "sv/dir.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zplugin.h"
#include "zbasic/ztools.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace {

constexpr char kLogFile[] = "_plugin_manager.log";

// The system shows no boxes about files that are no DLLs: such plug-ins are passed over.
class NoSystemBoxes {
public:
    NoSystemBoxes() {
        ::SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &m_before);
    }
    NoSystemBoxes(const NoSystemBoxes&) = delete;
    NoSystemBoxes& operator=(const NoSystemBoxes&) = delete;
    ~NoSystemBoxes() { ::SetThreadErrorMode(m_before, nullptr); }

private:
    DWORD m_before = 0;
};

// Keeps the code of a plug-in mapped that unloads itself while we call it or hold it.
class ModulePin {
public:
    explicit ModulePin(const void* address) {
        ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                             static_cast<const char*>(address), &m_module);
    }
    ModulePin(ModulePin&& other) noexcept : m_module(std::exchange(other.m_module, nullptr)) {}
    ModulePin& operator=(ModulePin&& other) noexcept {
        std::swap(m_module, other.m_module);
        return *this;
    }
    ~ModulePin() {
        // The plug-in may have given back our own count as well.
        HMODULE loaded = nullptr;
        ::GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<const char*>(m_module), &loaded);
        if (m_module && loaded == m_module) ::FreeLibrary(m_module);
    }

private:
    HMODULE m_module = nullptr;
};

// Relied on by callers: plug-ins come in the order of the bytes of their paths.
std::set<SV::String> findPlugins(const SV::String& folder) {
    std::set<SV::String> files;
    for (const SV::DirEntry& entry : SV::Dir(SV::DirEntry(folder + "*.dll"))) {
        if (!entry.IsDirectory()) files.insert(entry.GetFull());
    }
    return files;
}

// Memory is taken before the loader is released: `make_unique` would lose it without memory.
std::unique_ptr<ZelBasicPlugin> makePlugin(int type, std::unique_ptr<ZelDLLLoader> loader) {
    switch (type) {
        case kZelPluginGeneral:
            return std::unique_ptr<ZelBasicPlugin>(new ZelPluginGeneral(loader.release()));
        case kZelPluginScript:
            return std::unique_ptr<ZelBasicPlugin>(new ZelPluginZelScript(loader.release()));
        default:
            return nullptr;
    }
}

}  // namespace

struct ZelPluginManager::Entry {
    ModulePin pin;  // given back last
    std::unique_ptr<ZelBasicPlugin> plugin;
};

ZelPluginManager& ZelPluginManager::Instance() {
    static ZelPluginManager manager;
    return manager;
}

ZelPluginManager::ZelPluginManager() {
    if (!ZelCmdline::Instance().isFlag("plug_log")) return;
    auto log = std::make_unique<ZelBasicFileLogger>(true, false, 0);
    if (!log->open(kLogFile, false)) return;
    log->addText("Start logging\n");
    m_log = std::move(log);
}

ZelPluginManager::~ZelPluginManager() = default;

bool ZelPluginManager::LoadPlugins() {
    log("ZelPluginManager::LoadPlugins\n");
    const SV::String folder = Zel_GetProgramPath(true) + "plugins\\";
    if (!SV::DirEntry(folder).IsDirectory()) return false;
    for (const SV::String& file : findPlugins(folder)) _TryToLoadPlugin(file.c_str());
    return true;
}

ZelPluginLoadResult ZelPluginManager::LoadSinglePlugin(const char* fileName) {
    log("ZelPluginManager::LoadSinglePlugin (%s)\n", fileName);
    return _TryToLoadPlugin(fileName);
}

bool ZelPluginManager::DiscardPlugins() {
    log("ZelPluginManager::DiscardPlugins\n");
    m_plugins.clear();
    return true;
}

void ZelPluginManager::GetAllPlugins(ZelBasicPluginList& out, bool isReplacing) const {
    if (isReplacing) out.clear();
    for (const Entry& entry : m_plugins) out.push_back(entry.plugin.get());
}

void ZelPluginManager::GetAllPluginsOfType(ZelPluginType type, ZelBasicPluginList& out,
                                           bool isReplacing) const {
    if (isReplacing) out.clear();
    for (const Entry& entry : m_plugins) {
        if (entry.plugin->getPluginType() == type) out.push_back(entry.plugin.get());
    }
}

ZelPluginLoadResult ZelPluginManager::_TryToLoadPlugin(const char* fileName) {
    log("ZelPluginManager::_TryToLoadPlugin (%s)\n", fileName);
    auto loader = std::make_unique<ZelDLLLoader>();
    const NoSystemBoxes quiet;
    if (!loader->load(fileName)) {
        log("- DLL could not be loaded!\n");
        return kZelPluginNoDLL;
    }
    log("+ DLL loaded\n");
    return keepIfValid(std::move(loader));
}

ZelPluginLoadResult ZelPluginManager::keepIfValid(std::unique_ptr<ZelDLLLoader> loader) {
    ModulePin pin(loader->m_module);
    int (*function)() = nullptr;
    if (!hasExport(*loader, "ZelPluginFctGetVersion", "  ", function)) return kZelPluginNoVersion;
    const int version = guarded(0, function);
    if (version != Zel_GetVersionIdentifier()) {
        log("-     This plugin is for another version (%d)!\n", version);
        return kZelPluginOtherVersion;
    }
    log("+     Version matches\n");
    if (!hasExport(*loader, "ZelPluginFctGetType", "      ", function)) return kZelPluginNoType;
    const int type = guarded(0, function);
    std::unique_ptr<ZelBasicPlugin> plugin = makePlugin(type, std::move(loader));
    if (!plugin) {
        log("-         Its not a valid plugin type (%d)\n", type);  // sic
        return kZelPluginUnknownType;
    }
    log("+         Its a valid plugin type\n");  // sic
    return keepIfUsable({std::move(pin), std::move(plugin)});
}

ZelPluginLoadResult ZelPluginManager::keepIfUsable(Entry entry) {
    if (!entry.plugin->init()) {
        log("-           Failed to init plugin - maybe not for this application!\n");
        return kZelPluginNotUsable;
    }
    log("+           Plugin successfully loaded!\n");
    m_plugins.push_back(std::move(entry));
    return kZelPluginLoaded;
}

bool ZelPluginManager::hasExport(ZelDLLLoader& loader, const char* name, const char* indent,
                                 int (*&function)()) {
    function = reinterpret_cast<int (*)()>(loader._getGenericFunctionPtr(name));
    log(function ? "+ %sRetrieved '%s'\n" : "- %sCould not retrieve '%s'\n", indent, name);
    return function != nullptr;
}

void ZelPluginManager::log(const char* format, ...) {
    if (!m_log) return;
    std::va_list arguments;
    va_start(arguments, format);
    m_log->vaddText(format, arguments);
    va_end(arguments);
}
