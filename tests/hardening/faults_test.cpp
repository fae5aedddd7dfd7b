// Files that cannot be opened, read, written, renamed or deleted: what of that the callers see.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "diag/winowner.h"
#include "hardening/outcome.h"
#include "support/import_patch.h"
#include "support/temp_dir.h"
#include "sv/resource.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdbuser.h"
#include "zbasic/zdes.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zfileman.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztextparser.h"
#include "zbasic/ztools.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

enum class Fault {
    kNone,
    kMissing,
    kNoFolder,
    kIsFolder,
    kHeld,         // by a handle that shares nothing
    kDenied,       // the system's error 5
    kTooMany,      // 4: no more handles
    kLockedRange,  // 33, at reading
    kBadSector,    // 23, at reading
    kDiskFull,     // 112, at writing
};

struct FaultName {
    const char* name;
    const char* call;  // that fails; null: made for real
    DWORD error;
    std::intptr_t result;
};

constexpr std::intptr_t kNoHandle = -1;

FaultName nameOf(Fault fault) {
    switch (fault) {
        case Fault::kNone:
            return {"no fault", nullptr, 0, 0};
        case Fault::kMissing:
            return {"the file is missing", nullptr, 0, 0};
        case Fault::kNoFolder:
            return {"its folder is missing", nullptr, 0, 0};
        case Fault::kIsFolder:
            return {"it is a folder", nullptr, 0, 0};
        case Fault::kHeld:
            return {"another handle holds it", nullptr, 0, 0};
        case Fault::kDenied:
            return {"access is denied", "CreateFile", ERROR_ACCESS_DENIED, kNoHandle};
        case Fault::kTooMany:
            return {"too many files are open", "CreateFile", ERROR_TOO_MANY_OPEN_FILES, kNoHandle};
        case Fault::kLockedRange:
            return {"a part is locked", "ReadFile", ERROR_LOCK_VIOLATION, 0};
        case Fault::kBadSector:
            return {"the disk cannot be read", "ReadFile", ERROR_CRC, 0};
        case Fault::kDiskFull:
            return {"the disk is full", "WriteFile", ERROR_DISK_FULL, 0};
    }
    return {};
}

// The state that lets an operation on `path()` meet the fault.
class FaultState {
public:
    FaultState(Fault fault, const TempDir& folder, const std::string& content) {
        const auto [name, call, error, result] = nameOf(fault);
        m_path = folder.path(fault == Fault::kNoFolder ? "missing\\file.txt" : "file.txt");
        if (fault == Fault::kIsFolder) fs::create_directory(m_path);
        if (call || fault == Fault::kNone || fault == Fault::kHeld)
            folder.write("file.txt", content);
        if (fault == Fault::kHeld) {
            m_holder.reset(::CreateFileA(m_path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
        }
        if (call) m_call.emplace(call, error, result);
    }

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
    WinFile m_holder;
    std::optional<FailingCall> m_call;
};

std::string yesNo(bool value) { return value ? "yes" : "no"; }

// Each returns in words what the caller gets.

std::string readWhole(const std::string& path) {
    SV::String content = "before";
    const long result = ZelWholeFileReader::Read(content, SV::String(path), false);
    const bool isNamed =
        std::string_view(ZelBasicFileManager::getErrorMessage()).starts_with(path + ": ");
    return std::to_string(result) + (isNamed ? " named" : "") + " '" + content.c_str() + "'";
}

std::string readLines(const std::string& path) {
    ZelTextFileReader reader{SV::String(path)};
    std::string lines = yesNo(reader.Init()) + ":";
    SV::String line;
    while (reader.GetLine(line)) lines += line.c_str();
    return lines;
}

std::string readUser(const std::string& path) {
    ZelDBUserUtils user(path.c_str());
    return yesNo(user.IsExternalDefined()) + " '" + user.GetDBUserName("x").c_str() + "'";
}

std::string existsOrIsUsed(const std::string& path) {
    return yesNo(Zel_FileExists(path.c_str())) + " " + yesNo(Zel_FileIsInUse(path.c_str()));
}

std::string loadTexts(const std::string& path) {
    return yesNo(SV::ResMgr(SV::String(path)).IsLoaded());
}

std::string writeLog(const std::string& path) {
    ZelBasicFileLogger log(true, true, 0);
    std::string results = yesNo(log.open(path.c_str(), true));
    results += " " + yesNo(log.addText("entry"));
    return results + " " + yesNo(log.close());
}

// As a log with backups does whose file is of an earlier day: `content` begins with one.
std::string rotateLog(const std::string& path) {
    return yesNo(ZelBasicFileLogger(true, true, 2).open(path.c_str(), true));
}

std::string deleteLog(const std::string& path) {
    ZelBasicFileLogger log(true, true, 0);
    std::string results = yesNo(log.open(path.c_str(), true));
    const WinFile other(::CreateFileA(path.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
    results += " " + yesNo(log.deleteFromDisc());
    return results + " " + yesNo(log.isOpen());
}

std::string writeDialogLog(const std::string& path) {
    SV::Application::SetModalDialogSuppressionLogfileName(SV::String(path));
    SV::Application::ModalDialogSuppressionLog("text");
    SV::Application::SetModalDialogSuppressionLogfileName("");
    return "goes on";
}

std::string addToLog(const std::string& path) {
    Zel_AddToLog(SV::String(path), "text");
    return "goes on";
}

std::string writeBlocks(const std::string& path) {
    des_ctx key;
    ades_key(&key, reinterpret_cast<const unsigned char*>("no secret"));
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (!file) return "no file";
    des_writer writer(file, &key);
    writer.put("eight by");
    const int result = writer.flush();
    std::fclose(file);
    return std::to_string(result);
}

std::string dump(const std::string&) { return std::to_string(Fct_CreateMiniDump("x.cpp", 1)); }

std::string cleanUp(const std::string& path) {
    return yesNo(ZelFileCleanUpAction(SV::String(path)).execute());
}

std::string redirect(const std::string& path) {
    ZelSynchronousProcess process("cmd /c exit 5", SV::String("1>\"" + path + "\""), kCmdHide);
    process.SetUseRedirection(true);
    std::string results = yesNo(process.Execute(false));
    long code = -1;
    for (int i = 0; code == -1 && i < 30; ++i) code = process.Wait();
    return results + " " + std::to_string(code);
}

struct FaultCase {
    const char* operation;
    std::string (*run)(const std::string& path);
    Fault fault;
    const char* expected;  // what `run` gives, then what was reported
};

const FaultCase kFaults[] = {
    {"a whole file", readWhole, Fault::kNone, "0 '2001.02.03, 04:05:06: old'"},
    {"a whole file", readWhole, Fault::kMissing, "1 named ''"},
    {"a whole file", readWhole, Fault::kNoFolder, "1 named ''"},
    {"a whole file", readWhole, Fault::kIsFolder, "1 named ''"},
    {"a whole file", readWhole, Fault::kHeld, "1 named ''"},
    {"a whole file", readWhole, Fault::kDenied, "1 named ''"},
    {"a whole file", readWhole, Fault::kTooMany, "1 named ''"},
    {"a whole file", readWhole, Fault::kLockedRange, "1 named ''"},
    {"a whole file", readWhole, Fault::kBadSector, "1 named ''"},
    {"lines", readLines, Fault::kNone, "yes:2001.02.03, 04:05:06: old\n"},
    {"lines", readLines, Fault::kMissing, "no:"},
    {"lines", readLines, Fault::kIsFolder, "no:"},
    {"lines", readLines, Fault::kHeld, "no:"},
    {"lines", readLines, Fault::kDenied, "no:"},
    {"lines", readLines, Fault::kLockedRange, "no:"},
    {"lines", readLines, Fault::kBadSector, "no:"},
    {"database user", readUser, Fault::kNone, "yes ''"},
    {"database user", readUser, Fault::kMissing, "no ''"},
    {"database user", readUser, Fault::kIsFolder, "no ''"},
    {"database user", readUser, Fault::kHeld, "no ''"},
    {"database user", readUser, Fault::kDenied, "no ''"},
    {"database user", readUser, Fault::kBadSector, "yes ''"},
    {"exists, in use", existsOrIsUsed, Fault::kNone, "yes no"},
    {"exists, in use", existsOrIsUsed, Fault::kMissing, "no no"},
    {"exists, in use", existsOrIsUsed, Fault::kIsFolder, "no no"},
    {"exists, in use", existsOrIsUsed, Fault::kHeld, "no yes"},
    {"exists, in use", existsOrIsUsed, Fault::kDenied, "no no"},
    {"resource file", loadTexts, Fault::kNone, "no exception 1024"},  // no DLL
    {"resource file", loadTexts, Fault::kMissing, "no exception 1024"},
    {"resource file", loadTexts, Fault::kIsFolder, "no exception 1024"},
    {"resource file", loadTexts, Fault::kHeld, "no exception 1024"},
    {"log", writeLog, Fault::kNone, "yes yes yes"},
    {"log", writeLog, Fault::kMissing, "yes yes yes"},
    {"log", writeLog, Fault::kNoFolder, "no no no"},
    {"log", writeLog, Fault::kIsFolder, "no no no"},
    {"log", writeLog, Fault::kHeld, "no no no zfilelog-47"},
    {"log", writeLog, Fault::kDenied, "no no no zfilelog-47"},
    {"log", writeLog, Fault::kTooMany, "no no no zfilelog-47"},
    {"log", writeLog, Fault::kBadSector, "yes yes yes"},
    {"log", writeLog, Fault::kDiskFull, "yes no yes"},
    {"log of another day", rotateLog, Fault::kNone, "yes"},
    {"log of another day", rotateLog, Fault::kHeld, "no zfilelog-47"},
    {"log of another day", rotateLog, Fault::kDenied, "no zfilelog-47"},
    {"log of another day", rotateLog, Fault::kDiskFull, "yes"},
    {"deletion of a log", deleteLog, Fault::kNone, "yes no no"},
    {"log by name", addToLog, Fault::kNoFolder, "goes on"},
    {"log by name", addToLog, Fault::kDiskFull, "goes on"},
    {"log of boxes", writeDialogLog, Fault::kNone, "goes on"},
    {"log of boxes", writeDialogLog, Fault::kNoFolder, "goes on"},
    {"log of boxes", writeDialogLog, Fault::kHeld, "goes on"},
    {"log of boxes", writeDialogLog, Fault::kDenied, "goes on"},
    {"log of boxes", writeDialogLog, Fault::kDiskFull, "goes on"},
    {"DES blocks", writeBlocks, Fault::kNone, "0"},
    {"DES blocks", writeBlocks, Fault::kDiskFull, "-1"},
    {"minidump", dump, Fault::kDenied, "2"},
    {"deletion at exit", cleanUp, Fault::kNone, "yes"},
    {"deletion at exit", cleanUp, Fault::kMissing, "no"},
    {"deletion at exit", cleanUp, Fault::kIsFolder, "no"},
    {"deletion at exit", cleanUp, Fault::kHeld, "no"},
    {"redirected program", redirect, Fault::kNone, "yes 5"},
    {"redirected program", redirect, Fault::kNoFolder, "yes 5"},
    {"redirected program", redirect, Fault::kIsFolder, "yes 5"},
    {"redirected program", redirect, Fault::kHeld, "yes 5"},
    {"redirected program", redirect, Fault::kTooMany, "yes 5"},
};

}  // namespace

TEST(FileFaults, LeadToTheStatedResults) {
    for (const auto& [operation, run, fault, expected] : kFaults) {
        SCOPED_TRACE(std::string(operation) + ", " + nameOf(fault).name);
        const FaultyPlace place;
        std::string result;
        {
            const FaultState state(fault, place.folder(), "2001.02.03, 04:05:06: old");
            result = run(state.path());
            const bool isInjected = nameOf(fault).call != nullptr;
            EXPECT_EQ(FailingCall::count() > 0, isInjected) << "or the fault was not met";
        }
        EXPECT_EQ(result + place.reports(), expected);
    }
}
