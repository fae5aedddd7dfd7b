// A DLL with one fault: TEST_FAULT names it.

#include <stdexcept>

#include "zbasic/zplugin_api.h"

#include <windows.h>

#define kNoVersion 1
#define kOldVersion 2
#define kNoType 3
#define kUnknownType 4
#define kNoScriptExport 5
#define kThrowsInVersion 6
#define kThrowsInType 7
#define kUnloadsItself 8

#if TEST_FAULT != kNoVersion
ZEL_PLUGIN_EXPORT int ZelPluginFctGetVersion() {
#if TEST_FAULT == kOldVersion
    return 108230921;
#elif TEST_FAULT == kThrowsInVersion
    throw std::runtime_error("in ZelPluginFctGetVersion");
#else
    return ZEL_PLUGIN_VERSION;
#endif
}
#endif

#if TEST_FAULT != kNoType
ZEL_PLUGIN_EXPORT int ZelPluginFctGetType() {
#if TEST_FAULT == kUnknownType
    return 103;
#elif TEST_FAULT == kNoScriptExport
    return kZelPluginScript;
#elif TEST_FAULT == kThrowsInType
    throw 1;
#else
#if TEST_FAULT == kUnloadsItself
    static const char anchor = 0;
    HMODULE self = nullptr;
    ::GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        &anchor, &self);
    ::FreeLibrary(self);
#endif
    return kZelPluginGeneral;
#endif
}
#endif

#if TEST_FAULT == kNoScriptExport
ZEL_PLUGIN_EXPORT int ZelPluginFctZelScriptGetExecutionType() { return kZelPluginForBoth; }
#endif
