#include "zbasic/zversion.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/child.h"
#include "sv/resource.h"
#include "zbasic/zcmdline.h"

namespace {

constexpr auto kFirst = static_cast<ZelCoreVarType>(0);
constexpr auto kLast = static_cast<ZelCoreVarType>(234);

}  // namespace

TEST(Version, AgreesInAllItsForms) {
    EXPECT_EQ(Zel_GetVersionHigh(), 1);
    EXPECT_EQ(Zel_GetVersionLow(), 8);
    EXPECT_EQ(Zel_GetVersionPatch(), 0);
    EXPECT_EQ(Zel_GetVersionBuild(), 230922);
    EXPECT_EQ(Zel_GetVersionDev(), "");
    EXPECT_EQ(Zel_GetDataVersion(), "4.0");
    EXPECT_EQ(Zel_GetVersionString(), "1.8");
    EXPECT_EQ(Zel_GetBuildVersionString(), "1.8_230922");
    EXPECT_EQ(Zel_GetPatchVersionString(), "1.8.0");
    EXPECT_EQ(Zel_GetPatchBuildVersionString(), "1.8.0.230922");
    EXPECT_EQ(Zel_GetVersionIdentifier(), 108230922);
    EXPECT_EQ((ZBASIC_VERSION_HIGH * 100 + ZBASIC_VERSION_LOW) * 1000000 + ZBASIC_VERSION_BUILD,
              Zel_GetVersionIdentifier());
    EXPECT_EQ(ZBASIC_VERSION_PATCH, Zel_GetVersionPatch());
}

CHILD_MAIN(applicationInfo) {
    std::printf("<%s>\n", ZelApplicationInfo::GetInfo().c_str());
    ZelApplicationInfo::SetValue("b", "1");
    ZelApplicationInfo::SetValue("\xE4", "umlaut");  // behind all of ASCII
    ZelApplicationInfo::SetValue("B", "");
    ZelApplicationInfo::SetValue("b", "2");
    ZelApplicationInfo::SetValue(SV::String("b\0c", 3), "3");  // relied on by callers
    ZelApplicationInfo::SetValue("", "no key");
    std::printf("<%s>\n", ZelApplicationInfo::GetInfo().c_str());
    return 0;
}

TEST(ApplicationInfo, ListsEntriesInTheOrderOfTheirKeys) {
    EXPECT_EQ(runChild("applicationInfo").out, "<>\n<: no key\nB: \nb: 3\n\xE4: umlaut>\n");
}

TEST(CoreVariables, KeepNumbers) {
    for (const ZelCoreVarType index : {kFirst, kLast}) {
        EXPECT_EQ(Zel_GetCoreVarConst(index), 0);
        Zel_SetCoreVar(index, -2147483647L);
        EXPECT_EQ(Zel_GetCoreVarConst(index), -2147483647L);
        Zel_GetCoreVar(index) += 7;
        EXPECT_EQ(Zel_GetCoreVarConst(index), -2147483640L);
    }
    EXPECT_EQ(Zel_GetCoreVarConst(static_cast<ZelCoreVarType>(1)), 0);
}

TEST(CoreVariables, KeepNothingOutOfRange) {
    Zel_SetCoreVar(kFirst, 1);
    Zel_SetCoreVar(kLast, 2);
    for (const int index : {-1, 235, 2147483647, -2147483647 - 1}) {
        SCOPED_TRACE(index);
        const auto outside = static_cast<ZelCoreVarType>(index);
        Zel_SetCoreVar(outside, 99);
        Zel_GetCoreVar(outside) += 99;
        EXPECT_EQ(Zel_GetCoreVarConst(outside), 0);
    }
    EXPECT_EQ(Zel_GetCoreVarConst(kFirst), 1);
    EXPECT_EQ(Zel_GetCoreVarConst(kLast), 2);
}

TEST(ProgramState, HasAnEditionAndAWebService) {
    EXPECT_EQ(Zel_GetApplicationType(), kZelApplicationQXTK);
    EXPECT_TRUE(Zel_IsQXTK());
    EXPECT_FALSE(Zel_IsWVTK());
    Zel_SetApplicationType(static_cast<ZelApplicationType>(0));
    EXPECT_FALSE(Zel_IsQXTK());
    EXPECT_TRUE(Zel_IsWVTK());
    Zel_SetApplicationType(static_cast<ZelApplicationType>(7));
    EXPECT_FALSE(Zel_IsQXTK());
    EXPECT_FALSE(Zel_IsWVTK());
    Zel_SetApplicationType(kZelApplicationQXTK);

    EXPECT_FALSE(Zel_IsWS());
    EXPECT_EQ(Zel_GetWSLogger(), nullptr);
    int owned = 0;
    const auto logger = reinterpret_cast<ZelBasicFileLogger*>(&owned);
    Zel_SetWS(true);
    Zel_SetWSLogger(logger);
    EXPECT_TRUE(Zel_IsWS());
    EXPECT_EQ(Zel_GetWSLogger(), logger);
    Zel_SetWS(false);
    Zel_SetWSLogger(nullptr);
}

CHILD_MAIN(toolName) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::ResMgr texts("test_texts.dll");
    std::printf("%s\n", Zel_GetToolName(false).c_str());
    for (const int type : {0, 1, 7}) {
        Zel_SetApplicationType(static_cast<ZelApplicationType>(type));
        std::printf("%s, ", Zel_GetToolName(false).c_str());
        std::printf("%s\n", Zel_GetToolName(true).c_str());
    }
    return 0;
}

TEST(ToolName, IsFoundOnceForTheEdition) {
    EXPECT_EQ(runChild("toolName").out,
              "Tool of type 1\n"
              "Tool of type 1, Tool of type 0\n"
              "Tool of type 0, Tool of type 1\n"
              "Tool of type 1, Tool of another type\n");
}

TEST(ToolName, IsTakenFromTheCommandLineFirst) {
    const std::string line = "Mine, Mine\n";
    EXPECT_EQ(runChild("toolName", {"-toolnameMine"}).out, "Mine\n" + line + line + line);
}
