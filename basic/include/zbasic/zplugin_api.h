// What a plug-in includes. One of the two macros below makes the exports that a plug-in needs, with
// the right names and types:
//
//     #include "zbasic/zplugin_api.h"
//     ZEL_GENERAL_PLUGIN()             // announces itself and does no more
//
//     struct Counter { ... };
//     ZEL_SCRIPT_PLUGIN(Counter)       // adds commands to the script language
//
// Every function runs on the main thread of the host. A plug-in is taken by exactly the version of
// the library that it was compiled for, and must be built with the same compiler: texts and
// exceptions cross the border.

#pragma once

#include "sv/string.h"
#include "zbasic/zplugin.h"
#include "zbasic/zversionnumber.h"

// What stands before each export: a C function that the host finds by its plain name.
#if defined(_WIN32)
#define ZEL_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define ZEL_PLUGIN_EXPORT extern "C"
#endif

// What `Zel_GetVersionIdentifier` answers in the library of these headers.
#define ZEL_PLUGIN_VERSION \
    ((ZBASIC_VERSION_HIGH * 100 + ZBASIC_VERSION_LOW) * 1000000 + ZBASIC_VERSION_BUILD)

// Both exports of every plug-in, for `type` of `ZelPluginType`.
#define ZEL_PLUGIN_EXPORTS(type)                                                  \
    ZEL_PLUGIN_EXPORT int ZelPluginFctGetVersion() { return ZEL_PLUGIN_VERSION; } \
    ZEL_PLUGIN_EXPORT int ZelPluginFctGetType() { return type; }

// The exports of a plug-in that announces itself and does no more.
#define ZEL_GENERAL_PLUGIN() ZEL_PLUGIN_EXPORTS(kZelPluginGeneral)

// `Plugin` has these static members:
//
//     static ZelPluginZelScriptExecutionType executionType();  // the edition that it is for
//     static const char* messagePortName();                    // of static storage
//     static bool handleRequest(const char* request, ZelRyoParser& parser, ZelMessage* message);
//     static bool handleRequest(const char* request, ZelRyoParser& parser,
//                               ZelScriptResult& result);
//     static bool isCommandExisting(const char* command);
//     // Fills the empty text.
//     static void getAllCommands(SV::String& commands, char separator);
//
// A request begins with one of its commands. `true` says that it was dealt with.
#define ZEL_SCRIPT_PLUGIN(Plugin)                                                        \
    ZEL_PLUGIN_EXPORTS(kZelPluginScript)                                                 \
    ZEL_PLUGIN_EXPORT int ZelPluginFctZelScriptGetExecutionType() {                      \
        return Plugin::executionType();                                                  \
    }                                                                                    \
    ZEL_PLUGIN_EXPORT const char* ZelPluginFctZelScriptGetMessagePortName() {            \
        return Plugin::messagePortName();                                                \
    }                                                                                    \
    ZEL_PLUGIN_EXPORT bool ZelPluginFctZelScriptHandleRequestMsg(                        \
        const char* request, ZelRyoParser& parser, ZelMessage* message) {                \
        return Plugin::handleRequest(request, parser, message);                          \
    }                                                                                    \
    ZEL_PLUGIN_EXPORT bool ZelPluginFctZelScriptHandleRequestDirect(                     \
        const char* request, ZelRyoParser& parser, ZelScriptResult& result) {            \
        return Plugin::handleRequest(request, parser, result);                           \
    }                                                                                    \
    ZEL_PLUGIN_EXPORT bool ZelPluginFctZelScriptIsCommandExisting(const char* command) { \
        return Plugin::isCommandExisting(command);                                       \
    }                                                                                    \
    ZEL_PLUGIN_EXPORT void ZelPluginFctZelScriptGetAllCommands(SV::String* commands,     \
                                                               char separator) {         \
        Plugin::getAllCommands(*commands, separator);                                    \
    }                                                                                    \
    static_assert(true, "a semicolon may follow")
