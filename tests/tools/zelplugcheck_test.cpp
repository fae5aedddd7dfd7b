// The plug-ins that the manager's tests load (tests/app/plugins), judged without loading them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/child.h"
#include "support/temp_dir.h"
#include "zelplugcheck/judge.h"

namespace {

std::string plugin(const std::string& name) {
    return programFolder() + "\\test_plugins\\" + name + ".dll";
}

ChildResult check(const std::vector<std::string>& files) {
    return runProgram(programFolder() + "\\zelplugcheck.exe", files);
}

// The little-endian number at a place of a file.
std::size_t numberAt(const std::string& bytes, std::size_t at) {
    std::size_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

struct PluginCase {
    const char* name;
    unsigned long exitCode;
    const char* end;  // of what is said
};

const PluginCase kPlugins[] = {
    {"general", 0, "+ its type is 101, general\nwould be taken\n"},
    {"script42", 0, "+ its execution type is 42, for WVTK\nwould be taken\n"},
    {"script44", 0, "+ its execution type is 44, for WVTK and QXTK\nwould be taken\n"},
    {"no_version", 1,
     "+ is for x86-64\n- does not export ZelPluginFctGetVersion\nwould be refused\n"},
    {"old_version", 1, "- its version is 108230921, the library's 108230922\nwould be refused\n"},
    {"no_type", 1, "- does not export ZelPluginFctGetType\nwould be refused\n"},
    {"unknown_type", 1, "- its type is 103, which there is not\nwould be refused\n"},
    {"no_script_export", 1,
     "- does not export ZelPluginFctZelScriptGetMessagePortName\nwould be refused\n"},
    {"throws_in_version", 0,
     "? its version is computed by its code\n+ exports ZelPluginFctGetType\n"
     "+ its type is 101, general\nmay be taken\n"},
    {"other_architecture", 1, "+ is a DLL\n- is for 32-bit x86\nwould be refused\n"},
};

}  // namespace

TEST(Zelplugcheck, SaysWhatTheManagerDoes) {
    for (const auto& [name, exitCode, end] : kPlugins) {
        const ChildResult result = check({plugin(name)});
        EXPECT_EQ(result.exitCode, exitCode) << name;
        EXPECT_EQ(result.out.find(plugin(name) + "\n+ is a Windows file\n"), 0u) << result.out;
        EXPECT_TRUE(result.out.ends_with(end)) << result.out;
    }
}

TEST(Zelplugcheck, TakesSeveralFilesAndOddOnes) {
    const TempDir folder;
    const std::string text = folder.write("text.dll", "not a DLL\n");
    const std::string missing = folder.path("missing.dll");
    EXPECT_EQ(check({plugin("general"), text}).exitCode, 1u);
    EXPECT_EQ(check({text}).out, text + "\n- is no Windows file\nwould be refused\n");
    EXPECT_EQ(check({missing}).err,
              "zelplugcheck: " + missing + " cannot be read (No such file or directory)\n");
    EXPECT_EQ(check({missing, text}).exitCode, 2u);
    EXPECT_EQ(check({}).exitCode, 2u);
    const ChildResult program = check({programFolder() + "\\zelplugcheck.exe"});
    EXPECT_TRUE(program.out.ends_with("- is a program, no DLL\nwould be refused\n"));
}

TEST(Zelplugcheck, BelievesNothingThatAFileSays) {
    const std::string whole = readFile(plugin("script44"));
    for (std::size_t size = 0; size < whole.size(); size += size < 2048 ? 1 : 97) {
        const zelplugcheck::PeImage image(whole.substr(0, size));
        EXPECT_FALSE(zelplugcheck::judge(image).empty());
    }
    // Every field of the headers at its largest.
    const std::size_t headers = numberAt(whole, 0x3C) + 600;
    for (std::size_t at = 0; at < headers; ++at) {
        std::string changed = whole;
        changed.replace(at, 4, "\xFF\xFF\xFF\xFF");
        EXPECT_FALSE(zelplugcheck::judge(zelplugcheck::PeImage(changed)).empty());
    }
}
