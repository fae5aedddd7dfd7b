// Plug-ins: DLLs in the folder "plugins" beside the program that extend it. How to write one:
// `zbasic/zplugin_api.h`.

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "sv/string.h"
#include "zbasic/zexport.h"

struct HINSTANCE__;  // what HMODULE points to

// Of the script interpreter, which is no part of this library: only passed through.
class ZelRyoParser;
class ZelScriptResult;
class ZelMessage;

class ZelBasicFileLogger;

// Owner of one loaded DLL. Not to be used by two threads at a time.
class ZBASIC_API ZelDLLLoader {
public:
    ZelDLLLoader() = default;
    ZelDLLLoader(const ZelDLLLoader&) = delete;
    ZelDLLLoader& operator=(const ZelDLLLoader&) = delete;
    virtual ~ZelDLLLoader();  // unloads

    // Unloads what is loaded and loads the file as the system's `LoadLibraryA` finds it; `loadExt`
    // with the flags of `LoadLibraryExA`. True when that succeeded. Loading runs code of the DLL.
    bool load(const char* fileName);
    bool loadExt(const char* fileName, unsigned long flags);
    // False when nothing is loaded; the last error then stays as it was.
    bool unload();

    // From a successful `load` to `unload`.
    bool isLoaded() const { return m_module != nullptr; }
    // The system's code for the last `load`, `unload` or look-up; 0 when that succeeded.
    unsigned long getLastError() const { return m_lastError; }
    // As given to the last `load`, also when that failed; `unload` empties it.
    const SV::String& getFilename() const { return m_fileName; }

protected:
    // The export of that name; null when there is none or nothing is loaded.
    void* _getGenericFunctionPtr(const char* name);
    // Takes the thread's last error when the call before has failed, else 0.
    void _rememberLastError(bool failed);

private:
    friend class ZelPluginManager;
    friend class ZelPluginZelScript;

    bool finishLoading(const char* what, const SV::String& fileName);

    HINSTANCE__* m_module = nullptr;
    std::uint32_t m_lastError = 0;
    SV::String m_fileName;
};

// What a plug-in is for. A DLL may answer other numbers and is refused then.
enum ZelPluginType : std::int32_t {
    kZelPluginGeneral = 101,  // only announces itself
    kZelPluginScript = 102,   // adds commands to the script language
};

// The edition that a script plug-in is for. The web-service host takes every plug-in.
enum ZelPluginZelScriptExecutionType : std::int32_t {
    kZelPluginForWVTK = 42,
    kZelPluginForQXTK = 43,
    kZelPluginForBoth = 44,
};

// What became of one DLL.
enum ZelPluginLoadResult : std::int32_t {
    kZelPluginLoaded = 0,
    kZelPluginNoDLL = 1,         // the system could not load it
    kZelPluginNoVersion = 2,     // an export lacks
    kZelPluginOtherVersion = 3,  // made for another version of the library
    kZelPluginNoType = 4,        // an export lacks
    kZelPluginUnknownType = 5,
    kZelPluginNotUsable = 6,  // an export for its type lacks, or it is not for this program
};

// One plug-in, and the owner of the DLL that it comes from: deleting it unloads the DLL. Main
// thread only. The order of the virtual operations is relied on by callers.
class ZBASIC_API ZelBasicPlugin {
public:
    ZelBasicPlugin(const ZelBasicPlugin&) = delete;
    ZelBasicPlugin& operator=(const ZelBasicPlugin&) = delete;
    virtual ~ZelBasicPlugin();
    // Called once, behind the checks that all plug-ins go through; false: not usable here.
    virtual bool init() = 0;

    ZelPluginType getPluginType() const { return m_type; }      // its kind
    const SV::String& getPluginName() const { return m_name; }  // of its kind: "General"
    // As `ZelDLLLoader::getFilename`.
    const SV::String& getPluginFilename() const { return m_loader->getFilename(); }

protected:
    // Takes over the loader, which must not be null.
    ZelBasicPlugin(ZelPluginType type, ZelDLLLoader* loader, SV::String name);

    // For look-ups; stays the plug-in's.
    ZelDLLLoader& loader() const { return *m_loader; }

private:
    ZelPluginType m_type;
    std::unique_ptr<ZelDLLLoader> m_loader;
    SV::String m_name;
};

// A plug-in without operations: all that it does, it does while its DLL is loaded.
class ZBASIC_API ZelPluginGeneral : public ZelBasicPlugin {
public:
    // As the base class: takes over the loader.
    explicit ZelPluginGeneral(ZelDLLLoader* loader);

    bool init() override;  // true
};

// Each operation asks the DLL. What it throws ends here: the result then is that of a plug-in that
// has nothing (0, an empty text, false). So it is before a successful `init`.
class ZBASIC_API ZelPluginZelScript : public ZelBasicPlugin {
public:
    // As the base class: takes over the loader.
    explicit ZelPluginZelScript(ZelDLLLoader* loader);

    // False when one of the six exports lacks, or the plug-in is not for this edition: in the
    // edition WVTK one that is not accessible, in QXTK one that is for WVTK alone.
    bool init() override;

    // The edition that it is for; may be another number.
    ZelPluginZelScriptExecutionType getExecutionType() const;

    const char* getMessagePortName() const;  // lives as long as the DLL is loaded

    // Has the plug-in deal with a request that begins with one of its commands; false: it did not.
    // The answer goes into the message or the result. What these and the parser are is between
    // host and plug-in.
    bool handleRequest(const char* request, ZelRyoParser& parser, ZelMessage* message) const;
    bool handleRequest(const char* request, ZelRyoParser& parser, ZelScriptResult& result) const;

    // Whether `command` is one of its commands.
    bool IsCommandExisting(const char* command) const;
    // All its commands, with `separator` between.
    SV::String GetAllCommands(char separator) const;

    // Whether its commands are for the edition that runs; any execution type but the three is for
    // none.
    bool isAccessibleInCurrentApp() const;

private:
    template <typename Function>
    bool find(const char* name, Function*& function);

    int (*m_getExecutionType)() = nullptr;
    const char* (*m_getMessagePortName)() = nullptr;
    bool (*m_handleMessage)(const char*, ZelRyoParser&, ZelMessage*) = nullptr;
    bool (*m_handleDirect)(const char*, ZelRyoParser&, ZelScriptResult&) = nullptr;
    bool (*m_isCommandExisting)(const char*) = nullptr;
    void (*m_getAllCommands)(SV::String*, char) = nullptr;
};

// Plug-ins of somebody else.
using ZelBasicPluginList = std::vector<ZelBasicPlugin*>;

// The plug-ins of the process, which it owns until they are discarded or the process ends. A DLL
// stays loaded exactly as long as its plug-in; one that fails a check is unloaded at once. With the
// option "plug_log" every step is a line of the file
// "_plugin_manager.log" in the current directory, which is made anew. Main thread only.
//
// Code of every DLL that is found runs in this process, with all its rights, before any check: who
// can write into the folder controls the program.
class ZBASIC_API ZelPluginManager {
public:
    // The options must have been parsed before the first call.
    static ZelPluginManager& Instance();

    // Loads every "*.dll" of the folder "plugins" beside the program, in the order of the names'
    // bytes. False when there is no such folder.
    bool LoadPlugins();
    // Tries one file, of any name.
    ZelPluginLoadResult LoadSinglePlugin(const char* fileName);
    // Deletes all plug-ins, which unloads their DLLs: nothing of them may be in use. True.
    bool DiscardPlugins();

    // Fills `out` in the order of loading. The pointers are good until the plug-ins are discarded.
    // `isReplacing`: what `out` held before is dropped first.
    void GetAllPlugins(ZelBasicPluginList& out, bool isReplacing) const;
    void GetAllPluginsOfType(ZelPluginType type, ZelBasicPluginList& out, bool isReplacing) const;

private:
    struct Entry;

    ZelPluginManager();
    ~ZelPluginManager();

    ZelPluginLoadResult _TryToLoadPlugin(const char* fileName);
    ZelPluginLoadResult keepIfValid(std::unique_ptr<ZelDLLLoader> loader);
    ZelPluginLoadResult keepIfUsable(Entry entry);
    bool hasExport(ZelDLLLoader& loader, const char* name, const char* indent, int (*&function)());
    void log(const char* format, ...);

    std::vector<Entry> m_plugins;
    std::unique_ptr<ZelBasicFileLogger> m_log;  // null without "plug_log"
};
