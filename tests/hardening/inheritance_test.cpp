// Files that programs started meanwhile, by any thread, would get handles of.

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

#include "hardening/outcome.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "zbasic/zdbuser.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zfileman.h"
#include "zbasic/zinter.h"
#include "zbasic/zmlstring.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztextparser.h"
#include "zbasic/ztools.h"

#include <windows.h>

namespace {

int g_openedCount = 0;
int g_inheritableCount = 0;

void note(const SECURITY_ATTRIBUTES* security) {
    ++g_openedCount;
    if (security && security->bInheritHandle) ++g_inheritableCount;
}

HANDLE WINAPI openA(const char* name, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security,
                    DWORD how, DWORD flags, HANDLE like) {
    note(security);
    return ::CreateFileA(name, access, sharing, security, how, flags, like);
}

HANDLE WINAPI openW(const wchar_t* name, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security,
                    DWORD how, DWORD flags, HANDLE like) {
    note(security);
    return ::CreateFileW(name, access, sharing, security, how, flags, like);
}

struct OpeningCase {
    const char* what;
    void (*open)(const char* path);
    int inheritable;
};

const OpeningCase kOpenings[] = {
    {"log", [](const char* path) { ZelBasicFileLogger(true, true, 2).open(path, true); }, 0},
    {"log by name", [](const char* path) { Zel_AddToLog(path, "text"); }, 0},
    {"log of boxes",
     [](const char* path) {
         SV::Application::SetModalDialogSuppressionLogfileName(path);
         SV::Application::ModalDialogSuppressionLog("text");
         SV::Application::SetModalDialogSuppressionLogfileName("");
     },
     0},
    {"lines", [](const char* path) { ZelTextFileReader(path).Init(); }, 0},
    {"a whole file",
     [](const char* path) {
         SV::String content;
         ZelWholeFileReader::Read(content, path, true);
     },
     0},
    {"database user", [](const char* path) { ZelDBUserUtils user(path); }, 0},
    {"existence", [](const char* path) { Zel_FileExists(path); }, 0},
    {"use", [](const char* path) { Zel_FileIsInUse(path); }, 0},
    {"list of languages", [](const char*) { ZelInternational::InitAvailableLanguages(); }, 0},
    {"multi-language strings", [](const char*) { Zel_InitializeMultiLanguageStrings(); }, 0},
    {"redirect file, which is meant to be",
     [](const char* path) {
         ZelSynchronousProcess process("no\\such.exe", SV::String("1>") + path, kCmdHide);
         process.SetUseRedirection(true);
         process.Execute(false);
     },
     1},
};

}  // namespace

CHILD_MAIN(openEverything) {
    const FaultyPlace place;
    const ImportPatch library("zbasic18.dll", "CreateFileA", reinterpret_cast<void*>(&openA));
    const ImportPatch runTime("msvcrt.dll", "CreateFileW", reinterpret_cast<void*>(&openW));
    const std::string path = place.folder().write("file", "text");
    for (const auto& [what, open, inheritable] : kOpenings) {
        g_openedCount = g_inheritableCount = 0;
        open(path.c_str());
        if (g_openedCount == 0) std::printf("%s: nothing was opened\n", what);
        if (g_inheritableCount != inheritable) std::printf("%s: is inherited\n", what);
    }
    return 0;
}

// In a fresh process, which has not read the list of languages yet.
TEST(Inheritance, IsForRedirectFilesOnly) { EXPECT_EQ(runChild("openEverything").out, ""); }
