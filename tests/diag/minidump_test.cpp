#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <thread>

#include "support/child.h"
#include "support/temp_dir.h"
#include "zbasic/ztrace.h"

#include <windows.h>

namespace {

ChildOptions temporaryFilesIn(const std::string& directory) {
    return {"", {"TEMP=" + directory, "TMP=" + directory}};
}

std::set<std::string> filesIn(const TempDir& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory.root())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

}  // namespace

CHILD_MAIN(dumps) {
    DumpEC ofOther = kDumpNoHelper;
    const auto dump = [] {
        return Fct_CreateMiniDump("C:\\src/sub:we\"ird?<name>.cpp", 4'000'000'000UL);
    };
    std::thread other([&] { ofOther = dump(); });
    const DumpEC ofMain = dump();
    other.join();
    return ofMain == kDumpWritten && ofOther == kDumpWritten ? 0 : 1;
}

CHILD_MAIN(dumpOfLongName) {
    const std::string name = "C:\\src\\" + std::string(5000, 'n') + ".cpp";
    return Fct_CreateMiniDump(name.c_str(), 1);
}

TEST(MiniDump, WritesOneFileACall) {
    const TempDir directory;
    const ChildOptions options = temporaryFilesIn(directory.root().string());
    EXPECT_EQ(runChild("dumps", {}, options).exitCode, 0UL);
    EXPECT_EQ(runChild("dumpOfLongName", {}, options).exitCode, 0UL);

    const std::set<std::string> names = filesIn(directory);
    EXPECT_EQ(names.size(), 3U);
    const std::regex pattern(
        "test_diag_\\d{8}_\\d{6}_(we-ird--name-\\.cpp_4000000000_\\d+_[12]|n{40}_1_\\d+_1)\\.dmp");
    for (const std::string& name : names) {
        EXPECT_TRUE(std::regex_match(name, pattern)) << name;
        EXPECT_EQ(readFile(directory.path(name)).substr(0, 4), "MDMP") << name;
    }
}

CHILD_MAIN(dumpStatus) { return Fct_CreateMiniDump(nullptr, 17); }

TEST(MiniDump, SaysWhenThereIsNoPlaceForAFile) {
    const TempDir directory;
    const ChildOptions nowhere = temporaryFilesIn(directory.path("missing"));
    EXPECT_EQ(runChild("dumpStatus", {}, nowhere).exitCode,
              static_cast<unsigned long>(kDumpNoFile));
}

// As the handler of a failing program does, which knows nothing of what failed.
LONG CALLBACK dumpTheFailure(EXCEPTION_POINTERS*) {
    ::ExitProcess(static_cast<UINT>(Fct_CreateMiniDump("handler.cpp", 1)));
}

CHILD_MAIN(dumpInsideADump) {
    ::AddVectoredExceptionHandler(1, dumpTheFailure);
    return Fct_CreateMiniDump(reinterpret_cast<const char*>(16), 1) + 90;  // no memory there
}

TEST(MiniDump, DoesNotWaitForItself) {
    const TempDir directory;
    const ChildOptions options = temporaryFilesIn(directory.root().string());
    EXPECT_EQ(runChild("dumpInsideADump", {}, options).exitCode,
              static_cast<unsigned long>(kDumpNotWritten));
    EXPECT_TRUE(filesIn(directory).empty());
}
