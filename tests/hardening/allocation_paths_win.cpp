#include <cstdio>
#include <string>
#include <string_view>

#include "hardening/allocation_paths.h"
#include "hardening/outcome.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "sv/resource.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zfileman.h"
#include "zbasic/zinter.h"
#include "zbasic/zplugin.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztrace.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace {

std::string plugin(const char* name) { return programFolder() + "\\test_plugins\\" + name; }

Step withLog(int backups, const char* content) {
    const auto folder = std::make_shared<TempDir>();
    return [folder, backups, content](Answer& answer) {
        const std::string path = folder->write("a_log_with_a_long_name.log", content);
        ZelBasicFileLogger log(true, true, backups);
        answer.add(log.open(path.c_str(), true)).add(log.addText("%s", "short"));
        answer.add(log.addText("%02000d\n%s", 1, "more")).add(log.close());
        answer.add(log.open(path.c_str(), true)).add(log.deleteFromDisc());
    };
}

Step loading(const char* file) {
    return [path = plugin(file)](Answer& answer) {
        ZelPluginManager& manager = ZelPluginManager::Instance();
        manager.DiscardPlugins();
        answer.add(manager.LoadSinglePlugin(path.c_str()));
        ZelBasicPluginList plugins;
        manager.GetAllPlugins(plugins, true);
        for (const ZelBasicPlugin* const loaded : plugins) answer.add(loaded->getPluginName());
        answer.add(manager.DiscardPlugins());
        answer.add(::GetModuleHandleA(path.c_str()) ? "mapped" : "unmapped");
    };
}

constexpr std::uint16_t kLanguages[] = {1031, 1033};

DWORD handleCount() {
    DWORD count = 0;
    ::GetProcessHandleCount(::GetCurrentProcess(), &count);
    return count;
}

// As if the process had just started.
class CommandLine : public ZelCmdline {
public:
    CommandLine(int argc, char** argv) { _init(argc, argv); }
};

void readCommandLine(Answer& answer) {
    char program[] = "program.exe";
    char file[] = "a model with a long name.gml";
    char value[] = "-uA user whose name is longer than the object";
    char flag[] = "-profiling";
    char* arguments[] = {program, file, value, flag};
    const CommandLine line(4, arguments);
    answer.add(line.getParam(1)).add(line.getLoginUserName()).add(line.isFlag("profiling"));
    answer.add(line.getValue("u"));
}

const std::vector<AllocationPath> kPaths = {
    {"the languages that there are",
     alone([](Answer& answer) {
         ZelInternational::InitAvailableLanguages();
         const std::size_t count = ZelInternational::GetAvailableLanguages().size();
         answer.add(count > 1 ? "all" : "lost");
     }),
     {kThrows}},
    {"a command line", alone(readCommandLine), {kThrows}},
    {"versions",
     alone([](Answer& answer) {
         answer.add(Zel_GetPatchBuildVersionString()).add(Zel_GetDataVersion());
         answer.add(ZelApplicationInfo::GetInfo());
     }),
     {kThrows}},
    {"resources",
     [] {
         const std::string path = programFolder() + "\\language\\1031\\zbasic18.dll";
         return [path = SV::String(path)](Answer& answer) {
             const SV::ResMgr manager(path);
             SV::String text;
             answer.add(manager.IsLoaded()).add(manager.FindString(950, text)).add(text);
         };
     },
     {kThrows}},
    {"resources with their fall-back",
     [] {
         return [](Answer& answer) {
             answer.add(ZelInternational::createResourceManager("zbasic", true));
             const SV::ResMgr* const current = SV::Resource::GetResManager();
             answer.add(current ? current->GetFileName() : SV::String("none"));
             ZelInternational::DeleteResMgrs();
         };
     },
     {kThrows}},
    {"a log", [] { return withLog(0, ""); }, {kThrows}},
    {"numbers in a log and a trace",
     [] {
         const auto folder = std::make_shared<TempDir>();
         return [folder, path = folder->path("a_file_with_a_long_name.txt")](Answer& answer) {
             const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
                 std::fopen(path.c_str(), "w"), std::fclose);
             Zel_TraceSetHandle(file.get());
             Zel_EnableTracing(true);
             Zel_Trace("%.300f %s", 1e300 / 3, "text");
             Zel_EnableTracing(false);
             Zel_TraceSetHandle(nullptr);
             answer.add(std::ftell(file.get()));
             ZelBasicFileLogger log(true, true, 0);
             answer.add(log.open(path.c_str(), true)).add(log.addText("%.300f", 1e300 / 3));
         };
     },
     {kThrows}},
    {"a log of another day", [] { return withLog(2, "2024.02.29, 00:00:00: old\n"); }, {kThrows}},
    {"a log by name",
     [] {
         static int number = 0;
         const auto folder = std::make_shared<TempDir>();
         const std::string path = folder->path("log" + std::to_string(++number) + ".log");
         return [folder, path = SV::String(path)](Answer& answer) {
             Zel_AddToLog(path, "an entry that is too long to lie in the object itself");
             const std::string text = readFile(path.c_str());
             const auto start = text.rfind("an entry");
             answer.add(start == text.npos ? "lost" : text.substr(start, 40));
         };
     },
     {kThrows},
     true},
    {"the last file",
     [] {
         return withFile(
             "content of a file that is longer than a text in the object",
             [](Answer& answer, const SV::String& path) {
                 SV::String content;
                 ZelWholeFileReader::Install();
                 answer.add(ZelSystemFileManager::readStringFromFile(content, path, false));
                 answer.add(ZelSystemFileManager::IsContentOfLastFile(content));
             });
     },
     {kThrows, "4 0"},
     true},
    {"another language",
     [] {
         ZelInternational::createResourceManager("zbasic", true);
         const std::shared_ptr<void> files(nullptr,
                                           [](void*) { ZelInternational::DeleteResMgrs(); });
         return [files](Answer& answer) {
             SV::String text;
             for (const std::uint16_t id : kLanguages) {
                 ZelInternational::SetCurrentLanguageID(id);
                 answer.add(SV::Resource::FindString(10507, text)).add(text);
                 answer.add(SV::Resource::FindString(950, text)).add(text);
             }
         };
     },
     {kThrows}},
    {"a program that is missing",
     [] {
         const auto folder = std::make_shared<TempDir>();
         const SV::String parameters("1>\"" + folder->path("out") + "\" 2>\"" +
                                     folder->path("err") + "\"");
         return [folder, parameters](Answer& answer) {
             const DWORD before = handleCount();
             try {
                 ZelSynchronousProcess process("x:\\a program that is missing", parameters,
                                               kCmdHide);
                 process.SetUseRedirection(true);
                 answer.add(process.Execute(false)).add(process.Wait());
             } catch (const std::bad_alloc&) {
                 answer.add(kThrows);
             }
             answer.add(handleCount() == before ? "closed" : "lost");
         };
     },
     {"throws closed"}},
    {"a file that the shell does not find",
     [] {
         return [process = ZelAsynchronousProcess("x:\\a missing file")](Answer& answer) mutable {
             const long before = ZelAsynchronousProcess::GetExecuteCount();
             try {
                 answer.add(process.Execute(nullptr));
             } catch (const std::bad_alloc&) {
                 answer.add(kThrows);
             }
             const long count = ZelAsynchronousProcess::GetExecuteCount() - before;
             answer.add(count == 1 ? "counted" : "lost");
         };
     },
     {"throws counted"}},
    {"a library",
     [] {
         return [path = plugin("general.dll")](Answer& answer) {
             ZelDLLLoader loader;
             answer.add(loader.load(path.c_str())).add(loader.unload());
             answer.add(loader.loadExt(path.c_str(), LOAD_LIBRARY_AS_DATAFILE));
         };
     },
     {kThrows}},
    {"a plug-in", [] { return loading("general.dll"); }, {kThrows}},
    {"one of the script", [] { return loading("script44.dll"); }, {kThrows}},
    {"one of no type", [] { return loading("unknown_type.dll"); }, {kThrows}},
};

BOOL WINAPI noDebugger() { return FALSE; }

BOOL WINAPI writeNoDump(HANDLE, DWORD, HANDLE, int, void*, void*, void*) { return TRUE; }
BOOL WINAPI openNothing(void*) { return FALSE; }

// What takes the system seconds under Wine is not done.
FARPROC WINAPI findFunction(HMODULE module, const char* name) {
    void* quick = nullptr;
    if (name == std::string_view("MiniDumpWriteDump")) quick = reinterpret_cast<void*>(writeNoDump);
    if (name == std::string_view("ShellExecuteExA")) quick = reinterpret_cast<void*>(openNothing);
    return quick ? reinterpret_cast<FARPROC>(quick) : ::GetProcAddress(module, name);
}

// Debug output would be gathered in memory of our own.
struct Place {
    Place() {
        for (const char* const name : {"TEMP", "TMP"}) {
            ::SetEnvironmentVariableA(name, place.folder().root().string().c_str());
        }
    }

    FaultyPlace place;
    ImportPatch debugger{"zbasic18.dll", "IsDebuggerPresent", reinterpret_cast<void*>(&noDebugger)};
    ImportPatch dumps{"zbasic18.dll", "GetProcAddress", reinterpret_cast<void*>(&findFunction)};
    ImportPatch shell{"sv18.dll", "GetProcAddress", reinterpret_cast<void*>(&findFunction)};
};

}  // namespace

const std::vector<AllocationPath>& platformPaths() {
    static const std::vector<AllocationPath> paths = [] {
        std::vector<AllocationPath> all = kPaths;
        all.insert(all.end(), guiPaths().begin(), guiPaths().end());
        return all;
    }();
    return paths;
}

std::shared_ptr<void> placeForPaths() { return std::make_shared<Place>(); }
