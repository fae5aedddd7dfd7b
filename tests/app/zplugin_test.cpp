// Real plug-ins, good and bad (plugins/), loaded by processes of their own.

#include "zbasic/zplugin.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "app/plugins/interpreter.h"
#include "support/child.h"
#include "support/program_copy.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

std::string plugin(const std::string& name) {
    return programFolder() + "\\test_plugins\\" + name + ".dll";
}

bool isMapped(const std::string& name) { return ::GetModuleHandleA((name + ".dll").c_str()); }

class OpenLoader : public ZelDLLLoader {
public:
    using ZelDLLLoader::_getGenericFunctionPtr;
    using ZelDLLLoader::_rememberLastError;
};

std::string withoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

// The log of a child that ran in `folder`, with the folder left out.
std::string logIn(const TempDir& folder) {
    std::string text = withoutReturns(readFile(folder.path("_plugin_manager.log")));
    const std::string root = folder.root().string() + "\\";
    for (std::size_t at = 0; (at = text.find(root, at)) != text.npos;) text.erase(at, root.size());
    return text;
}

}  // namespace

CHILD_MAIN(loader) {
    ZelCmdline::init(argc, argv, true, "");
    OpenLoader loader;
    const auto show = [&loader](bool answer) {
        std::printf("%d %lu <%s>%s\n", answer, loader.getLastError(),
                    fs::path(loader.getFilename().c_str()).filename().string().c_str(),
                    loader.isLoaded() ? " loaded" : "");
    };
    const auto find = [&](const char* name) {
        return loader._getGenericFunctionPtr(name) != nullptr;
    };
    show(loader.unload());
    show(loader.load(argv[1]));
    show(find("ZelPluginFctGetType"));
    show(find("no such export"));
    show(loader.load(loader.getFilename().c_str()));
    show(loader.loadExt(argv[1], LOAD_LIBRARY_AS_DATAFILE));
    show(loader.unload());
    show(loader.load("missing.dll"));
    show(loader.unload());
    show(find("ExitProcess"));
    show(loader.load(nullptr));
    ::SetLastError(5);
    loader._rememberLastError(true);
    show(isMapped("general"));
    loader._rememberLastError(false);
    show(true);
    return 0;
}

TEST(DLLLoader, OwnsOneModule) {
    const std::string dll = plugin("general");
    const ChildResult result = runChild("loader", {dll, "-console"});
    EXPECT_EQ(result.out,
              "0 0 <>\n"
              "1 0 <general.dll> loaded\n"
              "1 0 <general.dll> loaded\n"
              "0 127 <general.dll> loaded\n"
              "1 0 <general.dll> loaded\n"
              "1 0 <general.dll> loaded\n"
              "1 0 <>\n"
              "0 126 <missing.dll>\n"
              "0 126 <missing.dll>\n"
              "0 6 <missing.dll>\n"
              "0 126 <>\n"
              "0 5 <>\n"
              "1 0 <>\n");
    const std::string unload = "[zeldll] Unload '" + dll + "'\n";
    const std::string load = "[zeldll] Load '" + dll + "'\n";
    EXPECT_EQ(result.err, load + unload + load + unload + "[zeldll] LoadEx '" + dll + "'\n" +
                              unload + "[zeldll] Load 'missing.dll'\n[zeldll] Load ''\n");
}

// Tries the plug-ins argv[3]... in the edition argv[1] of a process in the folder argv[2].
CHILD_MAIN(loadPlugins) {
    ZelCmdline::init(argc, argv, true, "");
    Zel_SetApplicationType(static_cast<ZelApplicationType>(argv[1][0] - '0'));
    Zel_SetWS(argv[1][1] == 'w');
    ::SetCurrentDirectoryA(argv[2]);
    ZelPluginManager& manager = ZelPluginManager::Instance();
    for (int i = 3; i < argc && argv[i][0] != '-'; ++i) {
        const std::string name = argv[i];
        const ZelPluginLoadResult result = manager.LoadSinglePlugin(plugin(name).c_str());
        ZelBasicPluginList plugins;
        manager.GetAllPlugins(plugins, true);
        const bool isListed =
            !plugins.empty() && plugins.back()->getPluginFilename() == plugin(name).c_str();
        std::printf("%s %d%s%s\n", name.c_str(), result, isListed ? " listed" : "",
                    isMapped(name) ? " mapped" : "");
    }
    manager.DiscardPlugins();
    ZelBasicPluginList none(1);
    manager.GetAllPlugins(none, true);
    std::printf("%zu", none.size());
    for (int i = 3; i < argc && argv[i][0] != '-'; ++i) std::printf(" %d", isMapped(argv[i]));
    return 0;
}

struct FaultCase {
    const char* name;
    ZelPluginLoadResult result;
    std::vector<const char*> log;  // behind "+ DLL loaded"
};

const char kVersionFound[] = "+   Retrieved 'ZelPluginFctGetVersion'";
const char kVersionMatches[] = "+     Version matches";
const char kTypeFound[] = "+       Retrieved 'ZelPluginFctGetType'";
const char kTypeValid[] = "+         Its a valid plugin type";
const char kNotInited[] = "-           Failed to init plugin - maybe not for this application!";
const char kLoaded[] = "+           Plugin successfully loaded!";

const FaultCase kFaults[] = {
    {"general",
     kZelPluginLoaded,
     {kVersionFound, kVersionMatches, kTypeFound, kTypeValid, kLoaded}},
    {"script44",
     kZelPluginLoaded,
     {kVersionFound, kVersionMatches, kTypeFound, kTypeValid, kLoaded}},
    {"no_version", kZelPluginNoVersion, {"-   Could not retrieve 'ZelPluginFctGetVersion'"}},
    {"old_version",
     kZelPluginOtherVersion,
     {kVersionFound, "-     This plugin is for another version (108230921)!"}},
    {"no_type",
     kZelPluginNoType,
     {kVersionFound, kVersionMatches, "-       Could not retrieve 'ZelPluginFctGetType'"}},
    {"unknown_type",
     kZelPluginUnknownType,
     {kVersionFound, kVersionMatches, kTypeFound,
      "-         Its not a valid plugin type (103)"}},  // sic
    {"no_script_export",
     kZelPluginNotUsable,
     {kVersionFound, kVersionMatches, kTypeFound, kTypeValid, kNotInited}},
    {"throws_in_version",
     kZelPluginOtherVersion,
     {kVersionFound, "-     This plugin is for another version (0)!"}},
    {"throws_in_type",
     kZelPluginUnknownType,
     {kVersionFound, kVersionMatches, kTypeFound, "-         Its not a valid plugin type (0)"}},
    {"unloads_itself",
     kZelPluginLoaded,
     {kVersionFound, kVersionMatches, kTypeFound, kTypeValid, kLoaded}},
};

TEST(PluginManager, ChecksEachPluginAndLogsEveryStep) {
    const TempDir folder;
    std::vector<std::string> arguments = {"1", folder.root().string()};
    std::string out, unmapped, log = "Start logging\n";
    for (const auto& [name, result, lines] : kFaults) {
        arguments.push_back(name);
        out += name + (" " + std::to_string(result)) +
               (result == kZelPluginLoaded ? " listed mapped\n" : "\n");
        unmapped += " 0";
        for (const char* step : {"LoadSinglePlugin (", "_TryToLoadPlugin ("}) {
            log += std::string("ZelPluginManager::") + step + plugin(name) + ")\n";
        }
        log += "+ DLL loaded\n";
        for (const char* line : lines) log += std::string(line) + "\n";
    }
    arguments.push_back("-plug_log");
    EXPECT_EQ(runChild("loadPlugins", arguments).out, out + "0" + unmapped);
    EXPECT_EQ(logIn(folder), log + "ZelPluginManager::DiscardPlugins\n");
}

struct GateCase {
    const char* edition;  // type of the application, "w" for the web-service host
    const char* taken;    // of the execution types 42, 43, 44, 99
};

const GateCase kGates[] = {
    {"0", "42 44"}, {"1", "43 44 99"}, {"7", ""}, {"1w", "42 43 44 99"}, {"0w", "42 43 44 99"},
};

TEST(PluginManager, TakesScriptPluginsForTheEdition) {
    for (const auto& [edition, taken] : kGates) {
        std::string expected;
        for (const std::string type : {"42", "43", "44", "99"}) {
            const bool isTaken = std::string(taken).find(type) != std::string::npos;
            expected += "script" + type + (isTaken ? " 0 listed mapped\n" : " 6\n");
        }
        const TempDir folder;
        EXPECT_EQ(runChild("loadPlugins", {edition, folder.root().string(), "script42", "script43",
                                           "script44", "script99"})
                      .out,
                  expected + "0 0 0 0 0")
            << edition;
        EXPECT_FALSE(fs::exists(folder.path("_plugin_manager.log"))) << "not asked for";
    }
}

// Loads the folder "plugins" of its own program.
CHILD_MAIN(loadFolder) {
    ZelCmdline::init(argc, argv, true, "");
    ::SetCurrentDirectoryA(argv[1]);
    ZelPluginManager& manager = ZelPluginManager::Instance();
    std::printf("%d\n", manager.LoadPlugins());
    ZelBasicPluginList plugins;
    manager.GetAllPlugins(plugins, false);
    for (const ZelBasicPlugin* loaded : plugins) {
        std::printf("%s %d %s\n",
                    fs::path(loaded->getPluginFilename().c_str()).filename().string().c_str(),
                    loaded->getPluginType(), loaded->getPluginName().c_str());
    }
    manager.GetAllPluginsOfType(kZelPluginScript, plugins, false);
    std::printf("%zu ", plugins.size());
    manager.GetAllPluginsOfType(kZelPluginScript, plugins, true);
    std::printf("%zu\n", plugins.size());
    return 0;  // with the plug-ins loaded
}

TEST(PluginManager, LoadsTheFolderInTheOrderOfNames) {
    const ProgramCopy program;
    const std::string root = program.folder().root().string();
    EXPECT_EQ(program.runChild("loadFolder", {root}).out, "0\n0 0\n") << "there is no folder";
    const auto add = [&](const char* from, const std::string& to) {
        program.folder().write("plugins\\" + to, readFile(plugin(from)));
    };
    add("general", "b.dll");
    add("script44", "a.dll");
    add("general", "B.DLL2");  // no DLL by its name
    add("other_architecture", "other.dll");
    add("general", "sv18.dll");  // the name of a module that is there
    program.folder().write("plugins\\text.dll", "not a DLL\n");
    program.folder().write("plugins\\folder.dll\\inner.dll", "");
    const ChildResult result = program.runChild("loadFolder", {root, "-plug_log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.out, "1\na.dll 102 ZelScript\nb.dll 101 General\nsv18.dll 101 General\n4 1\n");
    const std::string log = logIn(program.folder());
    EXPECT_EQ(log.find("folder.dll"), log.npos);
    for (const char* name : {"other", "text"}) {
        EXPECT_NE(log.find("ZelPluginManager::_TryToLoadPlugin (plugins\\" + std::string(name) +
                           ".dll)\n- DLL could not be loaded!\n"),
                  log.npos)
            << log;
    }
    EXPECT_LT(log.find("a.dll"), log.find("b.dll"));
}

TEST(PluginManager, LoadsOutOfFiveHundred) {
    const ProgramCopy program;
    for (int i = 0; i < 500; ++i) {
        program.folder().write("plugins\\p" + std::to_string(i) + ".dll",
                               readFile(plugin(i % 50 == 7 ? "general" : "old_version")));
    }
    const ChildResult result = program.runChild("loadFolder", {program.folder().root().string()});
    EXPECT_EQ(std::ranges::count(result.out, '\n'), 12);
    EXPECT_NE(result.out.find("p57.dll 101 General\n"), std::string::npos);
}

CHILD_MAIN(askScriptPlugin) {
    ZelPluginZelScript plugin(new ZelDLLLoader);
    ZelRyoParser parser;
    ZelMessage message;
    ZelScriptResult result;
    std::printf("%d <%s> %d %d %d <%s> %d\n", plugin.getExecutionType(),
                plugin.getMessagePortName(), plugin.handleRequest("x", parser, &message),
                plugin.handleRequest("x", parser, result), plugin.IsCommandExisting("echo"),
                plugin.GetAllCommands(',').c_str(), plugin.init());

    ZelPluginManager::Instance().LoadSinglePlugin(argv[1]);
    ZelBasicPluginList plugins;
    ZelPluginManager::Instance().GetAllPlugins(plugins, true);
    const auto& script = dynamic_cast<ZelPluginZelScript&>(*plugins.at(0));
    std::printf("%d <%s> ", script.getExecutionType(), script.getMessagePortName());
    std::printf("%d <%s> ", script.handleRequest("echo 1", parser, &message), message.text.c_str());
    std::printf("%d <%s> ", script.handleRequest("echo 2", parser, result), result.text.c_str());
    std::printf("%d %d\n", script.handleRequest("fail", parser, result),
                script.handleRequest("throw", parser, result));
    std::printf("%d %d <%s> %d\n", script.IsCommandExisting("echo"),
                script.IsCommandExisting("other"), script.GetAllCommands('|').c_str(),
                parser.position);
    return 0;
}

TEST(ScriptPlugin, PassesRequestsOn) {
    EXPECT_EQ(runChild("askScriptPlugin", {plugin("script44")}).out,
              "0 <> 0 0 0 <> 0\n"
              "44 <test.port> 1 <message: echo 1> 1 <result: echo 2> 0 0\n"
              "1 0 <echo|fail> 21\n");
}
