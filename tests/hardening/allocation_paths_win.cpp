#include <string>

#include "hardening/allocation_paths.h"
#include "hardening/import_patch.h"
#include "hardening/outcome.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zfileman.h"
#include "zbasic/zinter.h"
#include "zbasic/zlocale.h"
#include "zbasic/zmatcher.h"
#include "zbasic/zmlstring.h"
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

const std::vector<AllocationPath> kPaths = {
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
    {"a whole file",
     [] {
         return withFile(std::string(1000, 'x') + "\xC3\xA4", [](Answer& answer,
                                                                 const SV::String& path) {
             SV::String content = "before";
             answer.add(ZelWholeFileReader::Read(content, path, false)).add(content.substr(998));
             const bool hasMessage = !ZelBasicFileManager::getErrorMessage().empty();
             answer.add(hasMessage ? "message" : "none");
         });
     },
     {"4  message"}},
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
     {kThrows, "4 0"}},
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
    {"a program that is missing",
     alone([](Answer& answer) {
         const TempDir folder;
         ZelSynchronousProcess process("a program that is missing.exe", "1>output 2>>error",
                                       kCmdHide);
         answer.add(process.Execute(false)).add(process.Wait());
     }),
     {kThrows}},
    {"resource files",
     alone([](Answer& answer) {
         ZelInternational::DeleteResMgrs();
         answer.add(ZelInternational::createResourceManager("zbasic", true));
         ZelInternational::updateResourceManagers();
         answer.add(Zel_GetToolName(true)).add(ZelRegEx::fmtErrMsg(REG_EPAREN));
     }),
     {kThrows}},
    {"another language",
     [] {
         ZelInternational::DeleteResMgrs();
         ZelInternational::createResourceManager("zbasic", true);
         return [](Answer& answer) {
             ZelInternational::SetCurrentLanguageID(1031);
             answer.add(ZelRegEx::fmtErrMsg(REG_EPAREN));
             ZelInternational::SetCurrentLanguageID(1033);
             answer.add(ZelRegEx::fmtErrMsg(REG_EPAREN));
         };
     },
     {kThrows}},
    {"names of languages",
     alone([](Answer& answer) {
         answer.add(ZelInternational::GetNativeLanguageName(1031));
         answer.add(ZelInternational::GetLanguageIDOfEnglishLanguageName("English"));
         answer.add(Locale::Zel_GetLanguageName()).add(Locale::Zel_GetCountryEnglishName());
     }),
     {kThrows}},
    {"texts in all languages",
     alone([](Answer& answer) {
         Zel_InitializeMultiLanguageStrings();
         answer.add(Zel_MultiLangFindResId("no text of theirs"));
         Zel_DeinitializeMultiLanguageStrings();
     }),
     {kThrows}},
    {"temporary names",
     alone([](Answer& answer) {
         const SV::String name = ZelSystemFileManager::fileCreateTempName("a_long_prefix", "txt");
         answer.add(name.size() > 40 ? "made" : "none").add(Zel_GetNewUUID().substr(0, 0));
     }),
     {kThrows},
     true},
    {"an internal error",
     alone([](Answer& answer) {
         displayErrorMessage("a source with a long name.cpp", 7);
         answer.add("goes on");
     }),
     {kThrows}},
    {"an assertion",
     alone([](Answer& answer) {
         answer.add(ZEL_Assert_Fail("a source.cpp", 7, "an expression", "a message"));
     }),
     {kThrows}},
    {"a dump without a place",
     alone([](Answer& answer) {
         answer.add(Fct_CreateMiniDump("a source with a long name.cpp", 7));
     }),
     {kThrows}},
    {"an expression with an error to show",
     alone([](Answer& answer) {
         ZelRegEx expression;
         answer.add(expression.regComp("(", 0, true)).add(!expression ? "none" : "made");
     }),
     {"12 none"}},
};

BOOL WINAPI noDebugger() { return FALSE; }

// Debug output would be gathered in memory of our own.
struct Place {
    FaultyPlace place;
    ImportPatch debugger{"zbasic18.dll", "IsDebuggerPresent", reinterpret_cast<void*>(&noDebugger)};
};

}  // namespace

const std::vector<AllocationPath>& platformPaths() { return kPaths; }

std::shared_ptr<void> placeForPaths() {
    ZelInternational::InitAvailableLanguages();
    return std::make_shared<Place>();
}
