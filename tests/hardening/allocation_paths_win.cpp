#include <string>

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

// As if the process had just started.
class CommandLine : public ZelCmdline {
public:
    CommandLine(int argc, char** argv) { _init(argc, argv); }
};

void readCommandLine(Answer& answer) {
    char program[] = "program.exe";
    char file[] = "a model with a long name.gml";
    char value[] = "-uA user whose name is longer than the object";
    char flag[] = "-console";
    char* arguments[] = {program, file, value, flag};
    const CommandLine line(4, arguments);
    answer.add(line.getParam(1)).add(line.getLoginUserName()).add(line.isFlag("console"));
    answer.add(line.getValue("u"));
}

const std::vector<AllocationPath> kPaths = {
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

// Debug output would be gathered in memory of our own.
struct Place {
    Place() {
        for (const char* const name : {"TEMP", "TMP"}) {
            ::SetEnvironmentVariableA(name, place.folder().root().string().c_str());
        }
    }

    FaultyPlace place;
    ImportPatch debugger{"zbasic18.dll", "IsDebuggerPresent", reinterpret_cast<void*>(&noDebugger)};
};

}  // namespace

const std::vector<AllocationPath>& platformPaths() { return kPaths; }

std::shared_ptr<void> placeForPaths() {
    ZelInternational::InitAvailableLanguages();
    return std::make_shared<Place>();
}
