// DLLs and programs that the system does not start, UUIDs that it does not make, and boxes and
// windows that it does not show.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "hardening/outcome.h"
#include "support/child.h"
#include "support/import_patch.h"
#include "sv/image.h"
#include "sv/window.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zfileman.h"
#include "zbasic/zgui.h"
#include "zbasic/zinter.h"
#include "zbasic/zmatcher.h"
#include "zbasic/zplugin.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztrace.h"

#include <windows.h>

#include <rpc.h>

namespace fs = std::filesystem;

namespace {

constexpr DWORD kElevationRequired = 740;  // the compiler's headers lack its name

std::string plugin(const char* name) { return programFolder() + "\\test_plugins\\" + name; }

struct LoadCase {
    const char* why;
    std::string file;
    DWORD injected;  // 0: the fault is real
    unsigned long flags;
    unsigned long expected;
};

const LoadCase kLoads[] = {
    {"no such DLL", "C:\\no\\such.dll", 0, 0, ERROR_MOD_NOT_FOUND},
    {"no such file of data", "C:\\no.dll", 0, LOAD_LIBRARY_AS_DATAFILE, ERROR_FILE_NOT_FOUND},
    {"a text", "text.dll", 0, 0, ERROR_BAD_EXE_FORMAT},
    {"of another processor", plugin("other_architecture.dll"), 0, 0, ERROR_BAD_EXE_FORMAT},
    {"its start refuses", plugin("refusing.dll"), 0, 0, ERROR_DLL_INIT_FAILED},
    {"access denied", plugin("general.dll"), ERROR_ACCESS_DENIED, 0, ERROR_ACCESS_DENIED},
    {"no memory", plugin("general.dll"), ERROR_COMMITMENT_LIMIT, 0, ERROR_COMMITMENT_LIMIT},
    {"no fault", plugin("general.dll"), 0, 0, ERROR_SUCCESS},
};

struct StartCase {
    const char* why;
    std::string command;
    DWORD injected;
    DWORD expected;  // the system's error; 0: the program runs
};

const StartCase kStarts[] = {
    {"missing", "missing.exe", 0, ERROR_FILE_NOT_FOUND},
    {"no program", "text.exe", 0, ERROR_BAD_EXE_FORMAT},
    {"a folder", "folder", 0, ERROR_ACCESS_DENIED},
    {"access denied", "cmd /c exit 5", ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED},
    {"wants to be elevated", "cmd /c exit 5", kElevationRequired, kElevationRequired},
    {"no memory", "cmd /c exit 5", ERROR_COMMITMENT_LIMIT, ERROR_COMMITMENT_LIMIT},
    {"no fault", "cmd /c exit 5", 0, 0},
};

long waitFor(ZelSynchronousProcess& process) {
    long code = -1;
    for (int i = 0; code == -1 && i < 30; ++i) code = process.Wait();
    return code;
}

}  // namespace

TEST(LoadFaults, AreToldByTheLoaderAndPassedOverByTheManager) {
    const FaultyPlace place;
    place.folder().write("text.dll", "This is a text.");
    for (const auto& [why, file, injected, flags, expected] : kLoads) {
        SCOPED_TRACE(why);
        std::optional<FailingCall> fault;
        if (injected) fault.emplace("LoadLibrary", injected);
        const std::string path = file == "text.dll" ? place.folder().path(file) : file;
        ZelDLLLoader loader;
        if (flags) {
            EXPECT_EQ(loader.loadExt(path.c_str(), flags), expected == 0);
        } else {
            EXPECT_EQ(loader.load(path.c_str()), expected == 0);
        }
        EXPECT_EQ(loader.getLastError(), expected);
        EXPECT_EQ(loader.isLoaded(), expected == 0);
        EXPECT_EQ(ZelPluginManager::Instance().LoadSinglePlugin(path.c_str()),
                  expected == 0 ? kZelPluginLoaded : kZelPluginNoDLL);
    }
    ZelPluginManager::Instance().DiscardPlugins();
}

TEST(StartFaults, LeaveTheObjectReadyForAnotherTry) {
    const FaultyPlace place;
    place.folder().write("text.exe", "This is a text.");
    fs::create_directory(place.folder().path("folder"));
    for (const auto& [why, command, injected, expected] : kStarts) {
        SCOPED_TRACE(why);
        const bool isInjected = injected != 0;
        const bool isFile = command.find(' ') == std::string::npos;
        ZelSynchronousProcess process{
            SV::String(isFile ? "\"" + place.folder().path(command) + "\" x" : command), "",
            kCmdHide};
        {
            std::optional<FailingCall> fault;
            if (isInjected) fault.emplace("CreateProcess", injected);
            EXPECT_EQ(process.Execute(false), expected == 0);
            if (expected) {
                EXPECT_EQ(::GetLastError(), expected);
            }
        }
        EXPECT_EQ(waitFor(process), expected ? -1 : 5);
        if (!isInjected) continue;
        EXPECT_TRUE(process.Execute(false)) << "the fault is over";
        EXPECT_EQ(waitFor(process), 5);
    }
}

namespace {

RPC_STATUS RPC_ENTRY noText(const UUID*, RPC_CSTR*) { return RPC_S_OUT_OF_MEMORY; }

FARPROC WINAPI withoutUuidText(HMODULE module, const char* name) {
    if (std::strcmp(name, "UuidToStringA") != 0) return ::GetProcAddress(module, name);
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&noText));
}

}  // namespace

// Behind a first UUID the functions are known, so that each fault has a process of its own.
CHILD_MAIN(uuidFault) {
    const FaultyPlace place;
    std::optional<ImportPatch> failing;
    std::optional<FailingCall> missing;
    if (std::strcmp(argv[1], "fails") == 0) {
        failing.emplace("sv18.dll", "GetProcAddress", reinterpret_cast<void*>(&withoutUuidText));
    } else {
        missing.emplace(argv[1], static_cast<unsigned long>(ERROR_MOD_NOT_FOUND));
    }
    const SV::String name = ZelSystemFileManager::fileCreateTempName("a", "b");
    std::printf("'%s' '%s'", name.c_str(), Zel_GetNewUUID().c_str());
    std::printf("%s", place.reports().c_str());
    return 0;
}

TEST(UuidFaults, GiveEmptyTextsAndAreReported) {
    for (const char* const fault : {"fails", "GetProcAddress", "LoadLibraryEx"}) {
        SCOPED_TRACE(fault);
        EXPECT_EQ(runChild("uuidFault", {fault}).out, "'' '' zfileman-102 ztools-4085");
    }
}

namespace {

struct BoxCase {
    const char* box;
    std::string (*show)();
    const char* expected;  // the answer, then what was reported
};

std::string warn(std::uint32_t buttons) {
    return std::to_string(ZelWarningBox(nullptr, buttons, "text").Execute());
}

const BoxCase kBoxes[] = {
    {"OK counts as read", [] { return warn(ZelMessageBox::kOk); }, "1"},
    {"OK and Cancel", [] { return warn(ZelMessageBox::kOkCancel); }, "0"},
    {"Yes and No", [] { return warn(ZelMessageBox::kYesNo); }, "3"},
    {"Yes, No and Cancel", [] { return warn(ZelMessageBox::kYesNoCancel); }, "0"},
    {"an assertion", [] { return std::to_string(ZEL_Assert_Fail("a.cpp", 1, "e", "m")); }, "0"},
    {"an internal error",
     [] {
         displayErrorMessage("a.cpp", 7);
         return std::string("goes on");
     },
     "goes on a-7"},
    {"an expression",
     [] {
         ZelRegEx expression;
         return std::to_string(expression.regComp("(", 0, 1));
     },
     "8"},
    {"a resource file",
     [] { return std::to_string(ZelInternational::createResourceManager("missing", true)); },
     "0 exception 1024 exception 1024"},
    {"a duration beyond the range",
     [] {
         ZelCoreTime time(-1.0);
         time.tstOverFlow(nullptr, "too long");
         return std::to_string(time.overFlow()) + (time.asDouble() > 1e300 ? " largest" : "");
     },
     "1 largest"},
};

}  // namespace

TEST(BoxFaults, CountAsReadOrRefused) {
    for (const auto& [box, show, expected] : kBoxes) {
        SCOPED_TRACE(box);
        const FaultyPlace place;
        SV::Application::SetModalDialogSuppression(false);
        const FailingCall fault("MessageBox", ERROR_NOT_ENOUGH_MEMORY);
        const std::string answer = show();
        EXPECT_EQ(answer + place.reports(), expected);
        EXPECT_EQ(FailingCall::count(), 1);
    }
}

TEST(WindowFaults, AreRaisedAsFailedSystemObjects) {
    const auto reportsOf = [](const char* call, void (*make)()) {
        const FaultyPlace place;
        const FailingCall fault(call, ERROR_NO_SYSTEM_RESOURCES);
        make();
        return place.reports();
    };
    EXPECT_EQ(reportsOf("CreateWindowEx", [] { const SV::MDIFrame frame("title"); }),
              " exception 512/1450");
    for (const char* const call : {"CreateDIBSection", "CreateCompatibleDC"}) {
        SCOPED_TRACE(call);
        EXPECT_EQ(reportsOf(call,
                            [] {
                                const SV::VirtualDevice device({10, 10});
                            }),
                  " exception 512/1450");
    }
}
