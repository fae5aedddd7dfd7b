// What depends on the system: files, the user's locale, reports.

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "diag/winowner.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "zbasic/zcmdline.h"
#include "zbasic/ztools.h"

#include <windows.h>

namespace {

TEST(ToolsSystem, TellsWhetherAFileExists) {
    const TempDir dir;
    EXPECT_TRUE(Zel_FileExists(dir.write("a", "").c_str()));
    EXPECT_FALSE(Zel_FileExists(dir.path("b").c_str()));
    EXPECT_FALSE(Zel_FileExists("DB:\\a"));
    EXPECT_FALSE(Zel_FileExists(""));
    EXPECT_FALSE(Zel_FileExists(nullptr));
}

TEST(ToolsSystem, FindsFilesBesideTheProgram) {
    const std::string folder = programFolder();
    EXPECT_EQ(Zel_GetProgramPath(false), folder);
    EXPECT_EQ(Zel_GetProgramPath(true), folder + "\\");
    EXPECT_EQ(Zel_GetProgramPathFilename("lang.ini"), folder + "\\lang.ini");
    EXPECT_EQ(Zel_GetProgramPathFilename("plugins\\a.dll"), folder + "\\plugins\\a.dll");
    EXPECT_EQ(Zel_GetProgramPathFilename("c:relative"), folder + "\\c:relative");
    for (const char* unchanged :
         {"", "C:\\a", "d:/a", "\\a", "/a", "\\\\server\\share\\a", "a?b", "dir\\"}) {
        EXPECT_EQ(Zel_GetProgramPathFilename(unchanged), unchanged);
    }
}

TEST(ToolsSystem, TellsFilesThatAreInUse) {
    const TempDir dir;
    const std::string path = dir.write("a", "");
    EXPECT_FALSE(Zel_FileIsInUse(path.c_str()));
    {
        const WinFile other(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(other);
        EXPECT_TRUE(Zel_FileIsInUse(path.c_str()));
    }
    EXPECT_FALSE(Zel_FileIsInUse(path.c_str()));
    EXPECT_FALSE(Zel_FileIsInUse(dir.path("b").c_str()));
    EXPECT_FALSE(Zel_FileIsInUse("DB:\\a"));
    EXPECT_FALSE(Zel_FileIsInUse(""));
    EXPECT_FALSE(Zel_FileIsInUse(nullptr));
}

// Another separator than the system's, for the time of a test.
class DecimalSeparator {
public:
    explicit DecimalSeparator(const char* text) {
        ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_before, sizeof m_before);
        ::SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text);
    }
    DecimalSeparator(const DecimalSeparator&) = delete;
    DecimalSeparator& operator=(const DecimalSeparator&) = delete;
    ~DecimalSeparator() { ::SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_before); }

private:
    char m_before[8] = {};
};

TEST(ToolsSystem, TakesTheDecimalSeparatorOfTheUser) {
    const DecimalSeparator separator(",;");
    EXPECT_TRUE(Zel_Valid_Double("1,5"));
    EXPECT_TRUE(Zel_Valid_Double(",5"));
    EXPECT_TRUE(Zel_Valid_Double("1.5"));
    EXPECT_FALSE(Zel_Valid_Double("1,5.2"));
    EXPECT_FALSE(Zel_Valid_Double("1;5"));
}

TEST(ToolsSystem, ReadsAndWritesNumbersAlikeInEveryLocaleOfTheProgram) {
    ASSERT_TRUE(std::setlocale(LC_ALL, "German_Germany.1252"));
    const std::string before = std::setlocale(LC_ALL, nullptr);
    EXPECT_EQ(zel_atof("1.5"), 1.5);
    EXPECT_EQ(zel_atof("1,5"), 1.5);
    EXPECT_EQ(zel_ftoa_no_locale(1.5, 2), "1.5");
    EXPECT_EQ(zel_ftoa_period(1.5, 2), "1.5");
    char buffer[16];
    EXPECT_EQ(zel_ltoa(-12345, buffer, "%ld"), 6);
    EXPECT_STREQ(buffer, "-12345");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
    std::setlocale(LC_ALL, "C");
}

struct OrderCase {
    const char* why;
    const char* a;
    const char* b;
    int expected;
};

const OrderCase kOrders[] = {
    {"equal", "abc", "abc", 0},
    {"letters before case", "abc", "ABD", -1},
    {"upper case first", "ABC", "abc", -1},
    {"the other way round", "abc", "ABC", 1},
    {"the first difference decides", "aBc", "abC", -1},
    {"both empty", "", "", 0},
    {"empty first", "", "a", -1},
    {"shorter first", "ab", "abc", -1},
    {"umlauts are letters", "\xC4", "\xE4", -1},
    {"among others", "a\xE4", "a\xC4", 1},
    {"an umlaut beside its letter", "\xE4", "b", -1},
    {"sharp s",
     "stra\xDF"
     "e",
     "STRASSE", 1},
    {"a null text cannot be compared", nullptr, "a", 1},
    {"the other one", "a", nullptr, 1},
};

TEST(ToolsSystem, OrdersTextsByTheLocaleAndThenByCase) {
    for (const auto& [why, a, b, expected] : kOrders) {
        SCOPED_TRACE(why);
        EXPECT_EQ(zel_lexcmp(a, b), expected);
        if (!a || !b) continue;
        EXPECT_EQ(Zel_IsLexGreater(a, b), expected > 0);
        EXPECT_EQ(Zel_IsLexGreaterEqual(a, b), expected >= 0);
    }
}

}  // namespace

CHILD_MAIN(toolsReports) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    SV::Application::SetModalDialogSuppression(true);
    char target[8] = "unused";
    EXPECT_EQ(zel_lexcmp(nullptr, "a"), 1);
    Zel_Mask_Export_Name("a\nb\n", target);
    EXPECT_STREQ(target, "a b ");
    EXPECT_EQ(zel_ltoa(12345, nullptr, "%ld"), 5);
    return testing::Test::HasFailure() ? 1 : 0;
}

TEST(ToolsSystem, ReportsWhatGoesWrong) {
    const TempDir dir;  // no place for dumps
    const std::string missing = dir.path("missing");
    const ChildResult result =
        runChild("toolsReports", {"-console"}, {"", {"TEMP=" + missing, "TMP=" + missing}});
    EXPECT_EQ(result.exitCode, 0U);
    std::string lines;
    for (const char* line : {"122", "1370", "1370", "1289"}) {
        lines +=
            std::string("[dEM] ztools.cpp (") + line + "): ztools-" + line + " [1.8.0.230922]\n";
    }
    EXPECT_EQ(result.err, lines);
}

// Memory that may be read only is written to all the same.
CHILD_MAIN(toolsNoRoom) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    SV::Application::SetModalDialogSuppression(true);
    void* const page = ::VirtualAlloc(nullptr, 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READONLY);
    Zel_Mask_Export_Value("a", static_cast<char*>(page));
    return 0;
}

TEST(ToolsSystem, ReportsAnExportIntoMemoryThatCannotBeWritten) {
    const TempDir dir;
    const std::string missing = dir.path("missing");
    const ChildResult result =
        runChild("toolsNoRoom", {"-console"}, {"", {"TEMP=" + missing, "TMP=" + missing}});
    EXPECT_EQ(result.exitCode, 0xC0000005U);
    EXPECT_EQ(result.err, "[dEM] ztools.cpp (1358): ztools-1358 [1.8.0.230922]\n");
}
