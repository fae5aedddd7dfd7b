// Programs that the library starts: that they are those that were meant, and what they get of ours.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <utility>

#include "hardening/outcome.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/zdbuser.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztextparser.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

constexpr long kMeant = 40;    // what test_window_program.exe ends with, hidden
constexpr long kIntruder = 9;  // what intruder.exe does
constexpr long kNotStarted = -2;

std::string self() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

long waitFor(ZelSynchronousProcess& process) {
    long code = -1;
    for (int i = 0; code == -1 && i < 30; ++i) code = process.Wait();
    return code;
}

long run(const std::string& command, const std::string& parameters) {
    ZelSynchronousProcess process{SV::String(command), SV::String(parameters), kCmdHide};
    return process.Execute(false) ? waitFor(process) : kNotStarted;
}

std::string quoted(const std::string& text) { return Zel_QuoteArgument(SV::String(text)).c_str(); }

struct BlankCase {
    const char* why;
    std::string (*command)(const std::string& path);
    const char* parameters;
    long expected;
};

// Of a program "x y\z.exe" beside which there is an "x.exe".
const BlankCase kBlanks[] = {
    {"no quotes", [](const std::string& path) { return path; }, "", kIntruder},
    {"no quotes, parameters", [](const std::string& path) { return path; }, "-a", kIntruder},
    {"nothing but the quoted path loses its quotes", quoted, "", kIntruder},
    {"and does so with parameters", quoted, "-a \"b c\"", kIntruder},
    {"a blank behind it keeps them", [](const std::string& path) { return quoted(path) + " "; }, "",
     kMeant},
    {"and does so with parameters", [](const std::string& path) { return quoted(path) + " "; },
     "-a \"b c\"", kMeant},
    {"arguments in the command",
     [](const std::string& path) { return quoted(path) + " " + quoted("b c"); }, "", kMeant},
    {"in both", [](const std::string& path) { return quoted(path) + " -a"; }, "\"b c\"", kMeant},
};

struct NameCase {
    const char* why;
    const char* command;
    long expected;
};

// With a "cmd.exe" in the current directory.
const NameCase kNames[] = {
    {"a name without a path", "cmd /c exit 5", kIntruder},
    {"a full path", "C:\\windows\\system32\\cmd.exe /c exit 5", 5},
};

}  // namespace

TEST(ProgramNames, WithBlanksNeedQuotesThatStay) {
    const FaultyPlace place;
    const fs::path folder = place.folder().root() / "x y";
    fs::create_directory(folder);
    fs::copy_file(programFolder() + "\\test_window_program.exe", folder / "z.exe");
    fs::copy_file(programFolder() + "\\test_planted\\intruder.exe", place.folder().path("x.exe"));
    for (const auto& [why, command, parameters, expected] : kBlanks) {
        SCOPED_TRACE(why);
        EXPECT_EQ(run(command((folder / "z.exe").string()), parameters), expected);
    }
}

TEST(ProgramNames, WithoutAPathAreLookedForInTheCurrentDirectory) {
    const FaultyPlace place;
    fs::copy_file(programFolder() + "\\test_planted\\intruder.exe", place.folder().path("cmd.exe"));
    for (const auto& [why, command, expected] : kNames) {
        SCOPED_TRACE(why);
        EXPECT_EQ(run(command, ""), expected);
    }
    ::SetEnvironmentVariableA("NoDefaultCurrentDirectoryInExePath", "1");
    EXPECT_EQ(run("cmd /c exit 5", ""), 5);
    ::SetEnvironmentVariableA("NoDefaultCurrentDirectoryInExePath", nullptr);
}

// Lists the files of a folder that it has handles of, before it opens any.
CHILD_MAIN(listFiles) {
    std::multiset<std::string> files;
    for (std::uintptr_t number = 4; number < 0x1000; number += 4) {
        const HANDLE handle = reinterpret_cast<HANDLE>(number);
        BY_HANDLE_FILE_INFORMATION information = {};
        char path[MAX_PATH] = "";
        if (::GetFileType(handle) != FILE_TYPE_DISK ||
            !::GetFileInformationByHandle(handle, &information) ||
            information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ||
            !::GetFinalPathNameByHandleA(handle, path, sizeof path, 0)) {
            continue;
        }
        const fs::path file(path);
        if (file.parent_path().filename() == argv[1]) files.insert(file.filename().string());
    }
    std::ofstream list(argv[2]);
    for (const std::string& file : files) list << file << ' ';
    return 0;
}

CHILD_MAIN(waitForEvent) {
    const HANDLE event = ::OpenEventA(SYNCHRONIZE, FALSE, argv[1]);
    return event && ::WaitForSingleObject(event, 60'000) == WAIT_OBJECT_0 ? 0 : 1;
}

TEST(ProgramHandles, AreThoseOfItsOwnRedirectFiles) {
    const FaultyPlace place;
    const std::string text = place.folder().write("text", "a\nb\n");
    const std::string folder = place.folder().root().filename().string();
    ZelBasicFileLogger log(true, true, 0);
    ASSERT_TRUE(log.open(place.folder().path("log").c_str(), true));
    Zel_AddToLog(SV::String(place.folder().path("named.log")), "entry");
    ZelTextFileReader reader{SV::String(text)};
    ASSERT_TRUE(reader.Init());
    const ZelDBUserUtils user(text.c_str());

    const std::string name = "zbasic_children_" + std::to_string(::GetCurrentProcessId());
    const HANDLE event = ::CreateEventA(nullptr, TRUE, FALSE, name.c_str());
    ZelSynchronousProcess other{SV::String(quoted(self()) + " --child waitForEvent " + name),
                                "1>other", kCmdHide};
    other.SetUseRedirection(true);
    ASSERT_TRUE(other.Execute(false));
    const std::string child = quoted(self()) + " --child listFiles " + quoted(folder) + " list";
    for (const auto& [clauses, expected] :
         {std::pair{"", ""}, {" 1>o", "o "}, {" 1>o 2>e", "e o "}}) {
        SCOPED_TRACE(clauses);
        ZelSynchronousProcess process{SV::String(child + clauses), "", kCmdHide};
        process.SetUseRedirection(true);
        ASSERT_TRUE(process.Execute(false));
        EXPECT_EQ(waitFor(process), 0);
        EXPECT_EQ(readFile(place.folder().path("list")), expected);
    }
    ::SetEvent(event);
    EXPECT_EQ(waitFor(other), 0);
    ::CloseHandle(event);
}
