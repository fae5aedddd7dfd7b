#include "zbasic/zdbuser.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "crypt/vectors.h"
#include "support/temp_dir.h"
#include "zbasic/ztools.h"

using namespace std::string_literals;

namespace {

std::string enciphered(const std::string& text) {
    return taken(ZelCryptoUtils::AESEncrypt(text.c_str()));
}

const std::string kGood = enciphered("first\nmodeller\nGr\xFC\xDF!");

}  // namespace

TEST(DBUser, TakesTheSecondAndThirdOfThreeLines) {
    struct Case {
        const char* why;
        std::string content;
        std::string user;
        std::string password;
    };
    const Case cases[] = {
        {"three lines", kGood, "modeller", "Gr\xFC\xDF!"},
        {"empty lines", enciphered("\n\n"), "", ""},
        {"no password", enciphered("a\nb\n"), "b", ""},
        {"more than 23 bytes",
         enciphered("a\n" + std::string(500, 'u') + "\n" + std::string(500, 'p')),
         std::string(500, 'u'), std::string(500, 'p')},
        {"the longest line", enciphered("a\nb\n" + std::string(2028, 'p')), "b",
         std::string(2028, 'p')},
        {"two lines", enciphered("a\nb"), "", ""},
        {"four lines", enciphered("a\nb\nc\nd"), "", ""},
        {"a line feed behind the digits", kGood + "\n", "", ""},
        {"a character cut off", kGood.substr(1), "", ""},
        {"empty", "", "", ""},
        {"only a line feed", "\n" + kGood, "", ""},
        {"binary", "\x00\xFF\x1A\x80"s, "", ""},
        {"digits behind a NUL", kGood + "\0zz"s, "modeller", "Gr\xFC\xDF!"},
        {"5000 digits", std::string(5000, 'A'), "", ""},
        {"another key's text", std::string(64, 'A'), "", ""},
    };
    const TempDir folder;
    for (const auto& [why, content, user, password] : cases) {
        SCOPED_TRACE(why);
        ZelDBUserUtils utils(folder.write("user.txt", content).c_str());
        EXPECT_TRUE(utils.IsExternalDefined());
        EXPECT_EQ(utils.GetDBUserName("fallback"), user);
        EXPECT_EQ(utils.GetDBUserPassword("fallback"), password);
    }
}

TEST(DBUser, IsNotDefinedWithoutAFile) {
    const TempDir folder;
    for (const std::string& path : {folder.path("none.txt"), folder.path("no/such/folder"), ""s}) {
        ZelDBUserUtils utils(path.c_str());
        EXPECT_FALSE(utils.IsExternalDefined());
        EXPECT_EQ(utils.GetDBUserName("fallback"), "");
    }
    ZelDBUserUtils onFolder(folder.root().string().c_str());  // opened or not, as the system has it
    EXPECT_EQ(onFolder.GetDBUserPassword("fallback"), "");
}

TEST(DBUser, ReadsTheProgramsOwnFileByDefault) {
    const std::string path(std::string_view(Zel_GetProgramPathFilename("zdbuser.txt")));
    ASSERT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(ZelDBUserUtils().IsExternalDefined());
    {
        const TempDir folder;
        std::filesystem::copy_file(folder.write("user.txt", kGood), path);
    }
    {
        ZelDBUserUtils utils;
        EXPECT_EQ(utils.GetDBUserName(""), "modeller");
        EXPECT_EQ(ZelDBUserUtils(nullptr).GetDBUserName(""), "modeller");
    }
    EXPECT_TRUE(std::filesystem::remove(path)) << "closed when the last object is gone";
}

TEST(DBUser, ClosesTheFileOnceForAllCopies) {
    const TempDir folder;
    const std::string path = folder.write("user.txt", kGood);
    ZelDBUserUtils assigned(folder.path("none.txt").c_str());
    {
        ZelDBUserUtils first(path.c_str());
        const auto copy = std::make_unique<ZelDBUserUtils>(first);
        assigned = *copy;
        ZelDBUserUtils& same = assigned;
        assigned = same;
    }
    EXPECT_TRUE(assigned.IsExternalDefined());
    EXPECT_EQ(assigned.GetDBUserName(""), "modeller");
    EXPECT_EQ(assigned.GetDBUserPassword(""), "Gr\xFC\xDF!") << "not wiped with the other copies";
}
