#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/temp_dir.h"
#include "zbasic/zfileman.h"

#include <windows.h>

namespace {

using Reader = ZelWholeFileReader;

struct Case {
    const char* why;
    std::string bytes;
    std::string text;  // decoded
    const char* problem = nullptr;
};

const std::string kNul("a\0b", 3);
const std::string kBlock(65'536, 'x');

const Case kCases[] = {
    {"ASCII", "a\r\nb\n", "a\r\nb\n"},
    {"empty", "", ""},
    {"a NUL byte", kNul, kNul},
    {"beyond ASCII", "\xC3\xA4\xE2\x82\xAC", "\xE4\x80"},
    {"not in the code page", "<\xE4\xB8\x8B\xE4\xB8\x8B>",
     "<?"
     "?>"},
    {"byte-order mark", "\xEF\xBB\xBF\xC3\xA4", "\xE4"},
    {"nothing but the mark", "\xEF\xBB\xBF", ""},
    {"a character across blocks", kBlock.substr(1) + "\xC3\xA4" + kBlock + "\xC3\xA4",
     kBlock.substr(1) + "\xE4" + kBlock + "\xE4"},
    {"the longest across blocks", kBlock.substr(3) + "\xF0\x9F\x98\x80|", kBlock.substr(3) + "??|"},
    {"a mark within", "a\xEF\xBB\xBF", "a?"},
    {"a character cut off", "ab\xE2\x82", "", "is not UTF-8 at byte 3"},
    {"a byte out of place", "\xEF\xBB\xBFz\x80", "", "is not UTF-8 at byte 5"},
    {"not the shortest form", "\xC0\xAF", "", "is not UTF-8 at byte 1"},
    {"not the shortest form, longer", "\xE0\x9F\xBF", "", "is not UTF-8 at byte 1"},
    {"half of a pair", "-\xED\xA0\x80", "", "is not UTF-8 at byte 2"},
    {"beyond the last character", "\xF4\x90\x80\x80", "", "is not UTF-8 at byte 1"},
    {"the last character", "\xF4\x8F\xBF\xBF\xED\x9F\xBF\xF0\x90\x80\x80", "?????"},
    {"UTF-16",
     std::string("\xFF\xFE"
                 "a\0",
                 4),
     "", "is not UTF-8 at byte 1"},
    {"behind the first block", kBlock + "ab\xFF", "", "is not UTF-8 at byte 65539"},
};

}  // namespace

TEST(WholeFileReader, DecodesUtf8OrKeepsTheBytes) {
    const TempDir dir;
    for (const auto& [why, bytes, text, problem] : kCases) {
        SCOPED_TRACE(why);
        const SV::String path(dir.write("f", bytes));
        SV::String content("before");
        EXPECT_EQ(Reader::Read(content, path, false), problem ? Reader::kNotUtf8 : Reader::kRead);
        EXPECT_TRUE(content == SV::String(text)) << content.size();
        EXPECT_EQ(Reader::getErrorMessage(), problem ? path + ": " + problem : SV::String())
            << Reader::getErrorMessage();
        EXPECT_EQ(Reader::Read(content, path, true), Reader::kRead);
        EXPECT_TRUE(content == SV::String(bytes)) << content.size();
        EXPECT_EQ(Reader::getErrorMessage(), "");
    }
}

TEST(WholeFileReader, IsInstalledInOneLine) {
    const TempDir dir;
    Reader::Install();
    const SV::String path(dir.write("f", "\xC3\xA4"));
    SV::String content;
    EXPECT_EQ(ZelSystemFileManager::readStringFromFile(content, path, false), 0);
    EXPECT_EQ(content, "\xE4");
    EXPECT_TRUE(ZelSystemFileManager::IsContentOfLastFile("\xE4"));
    EXPECT_EQ(ZelSystemFileManager::readStringFromFile(content, path, true), 0);
    EXPECT_EQ(ZelSystemFileManager::GetLastFileContent(), "\xC3\xA4");
}

TEST(WholeFileReader, SaysWhyItCannotRead) {
    const TempDir dir;
    const std::string large = dir.path("large");
    {
        std::ofstream(large) << "x";
        std::filesystem::resize_file(large, (std::uintmax_t{1} << 31) + 1);
    }
    struct Case {
        const char* why;
        std::string path;
        long result;
        const char* problem;
    };
    const Case cases[] = {
        {"not there", dir.path("no"), Reader::kNotReadable, ": cannot be opened: "},
        {"a folder", dir.root().string(), Reader::kNotReadable, ": cannot be opened: "},
        {"no name", "", Reader::kNotReadable, ": cannot be opened: "},
        {"more than 2 GB", large, Reader::kTooLarge, ": is larger than 2 GB"},
    };
    for (const auto& [why, path, result, problem] : cases) {
        SCOPED_TRACE(why);
        SV::String content("before");
        EXPECT_EQ(Reader::Read(content, SV::String(path), false), result);
        EXPECT_EQ(content, "");
        const SV::String& message = Reader::getErrorMessage();
        EXPECT_EQ(message.find(path + problem), 0u) << message;
        EXPECT_FALSE(message.c_str()[path.size() + 21] == '\0' && result == Reader::kNotReadable)
            << "the system's reason is missing: " << message;
    }
}
