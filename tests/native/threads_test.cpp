// What headers promise to several threads at a time, under the thread sanitizer. Each test runs in
// a process of its own, so that its first calls are the first ones.

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <latch>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/temp_dir.h"
#include "text/mlcontainer.h"
#include "zbasic/zbase64.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdattime.h"
#include "zbasic/zdes.h"
#include "zbasic/zextension.h"
#include "zbasic/zfarcall.h"
#include "zbasic/zmatcher.h"
#include "zbasic/zmemcache.h"
#include "zbasic/zmlstring.h"
#include "zbasic/zsgml.h"
#include "zbasic/zprocess.h"
#include "zbasic/ztools.h"
#include "zbasic/zversion.h"

namespace {

constexpr std::size_t kThreads = 4;

// Has each thread do `work(index)`, all from the same moment on.
template <class Work>
void atOnce(const Work& work) {
    std::latch start(kThreads);
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
    }
}

// Whether all get the same object from `instance`, whoever makes it.
template <class Instance>
void expectOneInstance(const Instance& instance) {
    std::array<const void*, kThreads> seen{};
    atOnce([&](std::size_t i) { seen[i] = &instance(); });
    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), 1u);
}

const SV::String kLong = "a text that is too long to lie in the object itself";

const unsigned char* bytesOf(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

template <class Byte>
std::string taken(std::pair<Byte*, int> result) {
    const std::string bytes(reinterpret_cast<const char*>(result.first),
                            static_cast<std::size_t>(std::max(result.second, 0)));
    ZelCryptoUtils::Free(result.first);
    return bytes;
}

}  // namespace

TEST(Threads, MemoryCacheOfTheProcess) { expectOneInstance(ZelMemCache::General); }

TEST(Threads, Encryption) { expectOneInstance(ZelEncryption::Instance); }

TEST(Threads, FarCalls) { expectOneInstance(ZelFarCallFactory::Instance); }

TEST(Threads, CleanUp) { expectOneInstance(ZelCleanUp::Instance); }

TEST(Threads, ErrorTexts) {
    expectOneInstance(ZelStringAcceleratorTable::GetGlobal);
    ZelStringAcceleratorTable::GetGlobal().SetElement(kUnknownErrorIndex, kLong);
    atOnce([](std::size_t) { EXPECT_EQ(Zel_GetErrorString(ZelErrorCode(7)), kLong); });
}

TEST(Threads, ProgramPath) {
    atOnce([](std::size_t) { EXPECT_FALSE(Zel_GetProgramPath(true).empty()); });
}

TEST(Threads, StringsThatShareABlock) {
    std::vector<SV::String> copies(kThreads, kLong);
    atOnce([&](std::size_t i) {
        SV::String& mine = copies[i];
        for (int round = 0; round < 100; ++round) {
            const SV::String second = mine;
            EXPECT_EQ(second, kLong);
            mine += 'x';  // takes a block of its own
            mine = kLong;
        }
    });
}

TEST(Threads, MatchersOfTheirOwn) {
    const struct {
        const char* why;
        const char* expression;
    } kExpressions[] = {{"automaton", "(a|b)*c[[:alpha:]]{2}"},
                        {"compiled", "([a-z]+) ([a-z]+)$"},
                        {"a back reference", "(a+)b\\1"},
                        {"segments", "ab[0-9]c"}};
    atOnce([&](std::size_t) {
        for (const auto& [why, expression] : kExpressions) {
            SCOPED_TRACE(why);
            ZelRegEx matcher;
            EXPECT_EQ(matcher.regComp(expression, 2, false), 0);
            EXPECT_EQ(matcher.match("-"), 0);
        }
        const ZelJokerz wildcard("*\xE4?c*", 1);
        EXPECT_EQ(wildcard.match("xx\xC4z"
                                 "C"),
                  1);
    });
}

TEST(Threads, Base64) {
    atOnce([](std::size_t) {
        char* text = nullptr;
        unsigned long size = 0;
        ASSERT_TRUE(Zel_NewBase64Encode("Ma", 2, text, size));
        const std::unique_ptr<char[]> owner(text);
        EXPECT_STREQ(text, "TWE=");
        char* bytes = nullptr;
        ASSERT_TRUE(Zel_NewBase64Decode(text, size, bytes, size));
        EXPECT_STREQ(std::unique_ptr<char[]>(bytes).get(), "Ma");
    });
}

TEST(Threads, EncryptionOfTexts) {
    atOnce([](std::size_t) {
        using U = ZelCryptoUtils;
        const std::string hex = taken(U::AESEncrypt("secret"));
        EXPECT_EQ(taken(U::AESDecrypt(hex.c_str())), std::string("secret\0\0\0\0\0\0\0\0\0\0", 16));
        EXPECT_EQ(taken(U::HexEncode(bytesOf("AB"), 2)), "4142");
        EXPECT_EQ(taken(U::Base64Encode(bytesOf("Man"), 3)), "TWFu\n");
        char* out = nullptr;
        std::string old = "abc";
        EXPECT_EQ(ZelEncryption::Instance().Encrypt(0, old.data(), out, -1), 16);
        char* back = nullptr;
        EXPECT_EQ(ZelEncryption::Instance().Decrypt(0, out, back), 8);
        EXPECT_STREQ(back, "abcacbac");
        U::Free(out);
        U::Free(back);
        // FIPS 197, appendix C.1, as a password without padding.
        EXPECT_TRUE(Zel_DecryptPasswordForAPP("no base64", "0123456789abcdef").empty());
    });
}

TEST(Threads, OneDesSchedule) {
    des_ctx schedule;
    ades_key(&schedule, bytesOf("\x13\x34\x57\x79\x9B\xBC\xDF\xF1"));
    atOnce([&](std::size_t) {
        unsigned char block[] = {1, 2, 3, 4, 5, 6, 7, 8};
        ades_enc(&schedule, block, 1);
        ades_dec(&schedule, block, 1);
        EXPECT_EQ(std::memcmp(block, "\1\2\3\4\5\6\7\10", sizeof block), 0);
    });
}

// The first look-up by text makes an index for all.
TEST(Threads, MultiLanguageLookUps) {
    ZelLanguageContainer& texts = ZelLanguageContainer::Instance();
    std::string file = "\xE1\x05\xE1\x05" + std::string("\0\x90\3\0\4\0\0\0\7\0\0\0", 12);
    for (const char c : {'F', 'i', 'l', 'e'}) file += static_cast<char>(c ^ 0x5C);
    ASSERT_TRUE(texts.table(1033).add(file.data(), file.size()));
    atOnce([](std::size_t) {
        int length = 0;
        EXPECT_EQ(Zel_MultiLangFindResId("File"), 7);
        EXPECT_EQ(Zel_MultiLangGet(7, 1033), "File");
        EXPECT_TRUE(Zel_MultiLangEquals("File", 7, &length));
        EXPECT_TRUE(Zel_MultiLangStartsWith("Files", 7, &length));
        EXPECT_EQ(Zel_MultiLangSearchForAny("a File", 7, &length), 2);
    });
}

TEST(Threads, ConversionWithTheMapOfTheProcess) {
    atOnce([](std::size_t) {
        EXPECT_EQ(ZelSGMLString::GetSGMLString("a<\xE4"), "a&lt;&auml;");
        EXPECT_EQ(ZelSGMLString::XMLStr("a<\xE4", true), "a&lt;\xC3\xA4");
    });
}

TEST(Threads, ToolsForTexts) {
    atOnce([](std::size_t) {
        EXPECT_EQ(Zel_Mask("a|b", '|', '\\'), "a\\|b");
        EXPECT_EQ(zel_atof("1,5"), 1.5);
        EXPECT_EQ(zel_ftoa_period(2.0, 3), "2.0");
        EXPECT_EQ(zel_lexcmp("\xE4", "\xC4"), 1);
        EXPECT_TRUE(Zel_Valid_Filename("C:\\a.b"));
        EXPECT_TRUE(Zel_Valid_Double("-1.5"));
        EXPECT_EQ(Zel_QuoteArgument("a b"), "\"a b\"");
        SV::String name = "Model (2)";
        Zel_MakeNextName(name);
        EXPECT_EQ(name, "Model (3)");
        char digits[16];
        EXPECT_EQ(zel_ltoa(7, digits, "%03ld"), 3);
    });
}

TEST(Threads, TimesOfTheirOwn) {
    atOnce([](std::size_t) {
        ZelCoreTime time("00:001:02:03:04");
        time += 1.0;
        EXPECT_EQ(time.asString(), "00:001:02:03:05");
        EXPECT_EQ(ZelTimeFunctions::getTimeInUIRep(SV::Time(13, 30)), "13:30:00");
        EXPECT_TRUE(ZelDate::DayIsValidForMonth(29, 1, true));
        EXPECT_FALSE(ZelCoreDateTime("no date: now").GetDisplayString(true).empty());
    });
}

TEST(Threads, ReadingWhatStartUpHasSet) {
    std::string program = "program", port = "-port80";
    char* line[] = {program.data(), port.data()};
    ZelCmdline::init(2, line, true, "");
    ZelApplicationInfo::SetValue("key", kLong);
    const ZelExtensionManager models("mdl");
    atOnce([&](std::size_t) {
        EXPECT_EQ(ZelCmdline::Instance().getWSPortNumber(), 80);
        EXPECT_EQ(ZelCmdline::Instance().getParam(1), "-port80");
        EXPECT_EQ(ZelApplicationInfo::GetInfo(), "key: " + kLong);
        EXPECT_EQ(Zel_GetCoreVarConst(ZelCoreVarType(7)), 0);
        EXPECT_EQ(Zel_GetCoreVarConst(ZelCoreVarType(-1)), 0);
        EXPECT_FALSE(Zel_GetPatchBuildVersionString().empty());
        SV::String path = "model";
        models.setExtension(path);
        EXPECT_EQ(path, "model.mdl");
    });
}
