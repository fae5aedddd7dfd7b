#include "zbasic/zfileman.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>

#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zevent.h"

#include <windows.h>

namespace {

constexpr char kUuid[] = "[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}";

class Files : public ZelSystemFileManager {
public:
    static void use(ReadStringFromFileFct reader) { pReadStringFromFileFct = reader; }
    static void say(const char* text) { _setErrorMessage(text); }
    static void add(const char* text) { _appendErrorMessage(text); }
};

struct TempVariables {  // null: not set
    explicit TempVariables(const char* temp, const char* tmp) {
        ::SetEnvironmentVariableA("TEMP", temp);
        ::SetEnvironmentVariableA("TMP", tmp);
    }
    TempVariables(const TempVariables&) = delete;
    TempVariables& operator=(const TempVariables&) = delete;
    ~TempVariables() {
        ::SetEnvironmentVariableA("TEMP", m_temp.c_str());
        ::SetEnvironmentVariableA("TMP", m_tmp.c_str());
    }

private:
    static std::string now(const char* name) {
        char text[MAX_PATH] = "";
        return {text, ::GetEnvironmentVariableA(name, text, MAX_PATH)};
    }
    const std::string m_temp = now("TEMP");
    const std::string m_tmp = now("TMP");
};

// Readers: the file's name is the content, and a file called "bad" a failure.
long readName(SV::String& content, const SV::String& fileName, bool flag) {
    content = fileName + (flag ? "+" : "");
    return fileName == "bad" ? 7 : 0;
}

long throwing(SV::String& content, const SV::String&, bool) {
    content = "half";
    throw std::runtime_error("reader");
}

long replacing(SV::String& content, const SV::String& fileName, bool flag) {
    Files::use(readName);
    readName(content, fileName, flag);
    content += " old";
    return 0;
}

long readingAnother(SV::String& content, const SV::String& fileName, bool flag) {
    Files::use(readName);
    SV::String other;
    EXPECT_EQ(Files::readStringFromFile(other, "other", flag), 0);
    EXPECT_EQ(Files::GetLastFileName(), "other");
    return readName(content, fileName, flag);
}

}  // namespace

TEST(TempNames, LieInTheTempDirectory) {
    struct Case {
        const char* why;
        std::optional<std::string> temp;
        std::optional<std::string> tmp;
        const char* prefix;
        const char* extension;
        std::string before;
        const char* after;
    };
    const std::string longest(300, 'd');
    const Case cases[] = {
        {"usual", "C:\\T", {}, "exp", "xml", "C:\\T\\exp", ".xml"},
        {"TEMP before TMP", "C:\\T", "D:\\t", "", "", "C:\\T\\", "."},
        {"only TMP", {}, "D:\\t", "p", "x.y", "D:\\t\\p", ".x.y"},
        {"a separator at the end", "C:\\T\\", {}, "p", "x", "C:\\T\\p", ".x"},
        {"the other separator is none", "C:/T/", {}, "p", "x", "C:/T/\\p", ".x"},
        {"neither", {}, {}, "p", "x", "\\p", ".x"},
        {"set to nothing", "", "D:\\t", "p", "x", "\\p", ".x"},
        {"no extension", "C:\\T", {}, "x", nullptr, "C:\\T\\x", ""},
        {"no prefix", "C:\\T", {}, nullptr, "x", "C:\\T\\", ".x"},
        {"very long", "C:\\" + longest, {}, "p", "x", "C:\\" + longest + "\\p", ".x"},
        {"not there", "Q:\\gone", {}, "p", "x", "Q:\\gone\\p", ".x"},
    };
    for (const auto& [why, temp, tmp, prefix, extension, before, after] : cases) {
        SCOPED_TRACE(why);
        const TempVariables variables(temp ? temp->c_str() : nullptr, tmp ? tmp->c_str() : nullptr);
        EXPECT_EQ(Files::getTempDirectory(), std::string_view(temp.value_or(tmp.value_or(""))));
        const SV::String made = Files::fileCreateTempName(prefix, extension);
        const std::string name(made.begin(), made.end());
        ZelCleanUp::Instance().RemoveFileCleanUpAction(made);
        ASSERT_EQ(name.size(), before.size() + 36 + std::string(after).size()) << name;
        EXPECT_EQ(name.substr(0, before.size()), before);
        EXPECT_EQ(name.substr(before.size() + 36), after);
        EXPECT_TRUE(std::regex_match(name.substr(before.size(), 36), std::regex(kUuid))) << name;
    }
}

TEST(TempNames, AreDeletedAtExitAndNeverRepeat) {
    const TempDir dir;
    const TempVariables variables(dir.root().string().c_str(), nullptr);
    std::set<SV::String> names;
    for (int i = 0; i < 1000; ++i) names.insert(Files::fileCreateTempName("p", "x"));
    EXPECT_EQ(names.size(), 1000u);
    EXPECT_TRUE(std::filesystem::is_empty(dir.root()));
    for (const SV::String& name : {*names.begin(), *names.rbegin()}) {
        dir.write(std::filesystem::path(name.c_str()).filename().string(), "x");
    }
    ZelCleanUp::Instance().RemoveFileCleanUpAction(*names.rbegin());
    ZelExitAppEvent("test").trigger();
    EXPECT_FALSE(std::filesystem::exists(names.begin()->c_str()));
    EXPECT_TRUE(std::filesystem::exists(names.rbegin()->c_str()));
}

TEST(TempNames, UuidsAreFreshAndInLowerCase) {
    const SV::String one = Zel_GetNewUUID();
    EXPECT_TRUE(std::regex_match(one.c_str(), std::regex(kUuid))) << one;
    EXPECT_NE(one, Zel_GetNewUUID());
}

TEST(ErrorMessage, IsReplacedAndAppendedTo) {
    Files::say("");
    EXPECT_EQ(Files::getErrorMessage(), "");
    Files::say("a");
    Files::add("b");
    Files::add("");
    EXPECT_EQ(Files::getErrorMessage(), "ab");
    Files::add(Files::getErrorMessage().c_str());
    EXPECT_EQ(ZelBasicFileManager::getErrorMessage(), "abab");
    Files::say("c");
    EXPECT_EQ(Files::getErrorMessage(), "c");
    Files::say("");
}

TEST(LastFile, IsRememberedUntilAReadFails) {
    struct Case {
        const char* why;
        Files::ReadStringFromFileFct reader;
        const char* file;
        long result;
        const char* content;  // of the last file
    };
    const Case cases[] = {
        {"the reader fails behind its work", readName, "bad", 7, nullptr},
        {"there is no reader", nullptr, "x", -1, nullptr},
        {"the reader is replaced while it runs", replacing, "x", 0, "x+ old"},
        {"the reader reads another file", readingAnother, "x", 0, "x+"},
    };
    for (const auto& [why, reader, file, result, content] : cases) {
        SCOPED_TRACE(why);
        Files::use(readName);
        SV::String text;
        ASSERT_EQ(Files::readStringFromFile(text, "good", false), 0);
        EXPECT_EQ(text, "good");
        EXPECT_TRUE(Files::IsContentOfLastFile("good"));
        EXPECT_FALSE(Files::IsContentOfLastFile("Good"));
        EXPECT_FALSE(Files::IsContentOfLastFile(""));
        Files::use(reader);
        EXPECT_EQ(Files::readStringFromFile(text, file, true), result);
        EXPECT_EQ(Files::GetLastFileName(), content ? file : "");
        EXPECT_EQ(Files::GetLastFileContent(), content ? content : "");
        EXPECT_EQ(Files::IsContentOfLastFile(text), content != nullptr);
        EXPECT_FALSE(Files::IsContentOfLastFile("good"));
    }
    Files::use(nullptr);
}

TEST(LastFile, IsForgottenWhenTheReaderThrows) {
    Files::use(readName);
    SV::String text;
    ASSERT_EQ(Files::readStringFromFile(text, "good", false), 0);
    Files::use(throwing);
    EXPECT_THROW(Files::readStringFromFile(text, "x", false), std::runtime_error);
    EXPECT_EQ(Files::GetLastFileName(), "");
    EXPECT_FALSE(Files::IsContentOfLastFile("good"));
    Files::use([](SV::String& content, const SV::String&, bool) {
        content = "";
        return 0L;
    });
    EXPECT_EQ(Files::readStringFromFile(text, "empty", false), 0);
    EXPECT_EQ(Files::GetLastFileName(), "empty");
    EXPECT_FALSE(Files::IsContentOfLastFile("")) << "an empty content is never the last one";
    Files::use(nullptr);
}

CHILD_MAIN(readWithoutReader) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;
    SV::Application::SetModalDialogSuppression(true);
    SV::String text;
    return static_cast<int>(ZelSystemFileManager::readStringFromFile(text, "x", false) + 10);
}

TEST(LastFile, ReportsAMissingReader) {
    const TempDir dir;
    const std::string nowhere = dir.path("nowhere");  // no minidump
    const ChildResult result =
        runChild("readWithoutReader", {"-console"}, {"", {"TEMP=" + nowhere, "TMP=" + nowhere}});
    EXPECT_EQ(result.exitCode, 9u);
    EXPECT_EQ(result.err, "[dEM] zfileman.cpp (219): zfileman-219 [1.8.0.230922]\n");
}
