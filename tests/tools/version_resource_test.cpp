// What the properties of our files say, beside what the headers and the library say.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/child.h"
#include "zbasic/zversion.h"

#include <windows.h>

namespace {

std::vector<char> versionOf(const std::string& file) {
    DWORD ignored = 0;
    std::vector<char> block(::GetFileVersionInfoSizeA(file.c_str(), &ignored));
    if (!block.empty()) {
        ::GetFileVersionInfoA(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data());
    }
    return block;
}

std::string textIn(const std::vector<char>& block, const std::string& name) {
    void* text = nullptr;
    UINT size = 0;
    const std::string path = "\\StringFileInfo\\040904E4\\" + name;
    const bool found = !block.empty() && ::VerQueryValueA(block.data(), path.c_str(), &text, &size);
    return found ? static_cast<const char*>(text) : "";
}

TEST(VersionResource, AgreesWithHeadersAndLibrary) {
    EXPECT_EQ(Zel_GetVersionHigh(), ZBASIC_VERSION_HIGH);
    EXPECT_EQ(Zel_GetVersionLow(), ZBASIC_VERSION_LOW);
    EXPECT_EQ(Zel_GetVersionPatch(), ZBASIC_VERSION_PATCH);
    EXPECT_EQ(Zel_GetVersionBuild(), ZBASIC_VERSION_BUILD);
    for (const char* file :
         {"zbasic18.dll", "sv18.dll", "zelhost.exe", "zelml.exe", "zeldbuser.exe",
          "zelplugcheck.exe", "plugins\\figures.dll", "plugins\\eventwatch.dll"}) {
        SCOPED_TRACE(file);
        const std::vector<char> block = versionOf(programFolder() + "\\" + file);
        const std::string name = file;
        EXPECT_EQ(textIn(block, "OriginalFilename"), name.substr(name.rfind('\\') + 1));
        for (const char* text : {"FileVersion", "ProductVersion"}) {
            EXPECT_EQ(SV::String(textIn(block, text)), Zel_GetPatchBuildVersionString()) << text;
        }
        void* numbers = nullptr;
        UINT size = 0;
        ASSERT_TRUE(::VerQueryValueA(block.data(), "\\", &numbers, &size));
        const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(numbers);
        EXPECT_EQ(fixed.dwFileVersionMS, MAKELONG(ZBASIC_VERSION_LOW, ZBASIC_VERSION_HIGH));
        EXPECT_EQ(HIWORD(fixed.dwFileVersionLS), ZBASIC_VERSION_PATCH);
    }
}

}  // namespace
