#include "zbasic/ztools.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The bytes that are valid, as text.
std::string validBytes(bool allowEuroByte, bool checkControlRange) {
    std::string valid;
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (Zel_IsValidXMLChar(c, allowEuroByte, checkControlRange)) valid += c;
    }
    return valid;
}

// All bytes without the ones named.
std::string bytesWithout(std::string_view invalid) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (invalid.find(c) == std::string_view::npos) bytes += c;
    }
    return bytes;
}

// What code page 1252 maps to itself in its upper control range, and DEL.
constexpr std::string_view kNoCharacters = "\x7F\x81\x8D\x8F\x90\x9D";

TEST(ToolsSyntax, TellsBytesThatXmlCanHold) {
    std::string controls;
    for (char c = 1; c < 32; ++c) controls += c;
    std::erase_if(controls, [](char c) { return c == '\t' || c == '\n' || c == '\r'; });
    EXPECT_EQ(validBytes(false, false), bytesWithout(controls));  // NUL is valid
    EXPECT_EQ(validBytes(true, false), bytesWithout(controls));
    EXPECT_EQ(validBytes(true, true), bytesWithout(kNoCharacters));  // controls below 32 as well
    EXPECT_EQ(validBytes(false, true), bytesWithout(kNoCharacters));
}

struct FilenameCase {
    const char* path;
    bool expected;
};

const FilenameCase kFilenames[] = {
    {nullptr, false},
    {"", false},
    {"file.txt", true},
    {"C:\\dir\\file.txt", true},
    {"C:/dir/file.txt", true},
    {"/", false},
    {"/a", true},
    {"http://a/b", false},
    {"a:b", true},  // behind a letter
    {"1:b", false},
    {"\xE4:b", false},  // no ASCII letter
    {"a:b:c", false},   // one only
    {"C:\\a\\\\b", false},
    {"a/\\b", false},
    {"a\\", false},
    {"a/", false},
    {"a:", false},
    {"a|b", false},
    {"a\"b", false},
    {"a*b", false},
    {"a<b", false},
    {"a>b", false},
    {"a?b", false},
    {"a\tb\x01", true},  // control characters pass
    {"con", false},
    {"Con.txt", false},
    {"clock$", false},
    {"lpt9.a.b", false},
    {"lpt0", true},
    {"com10", true},
    {"console", true},
    {"con\\a", true},  // neither alone nor with an extension
    {"a\\con", true},  // only the beginning is tested
    {"\\\\server\\share\\file.txt", true},
    {"\\\\server\\share/file.txt", true},
    {"\\\\ser/ver\\share\\a", true},  // "/" does not end a server
    {"\\\\server/share\\a", false},
    {"\\\\server", false},
    {"\\\\server\\share", false},
    {"\\\\server\\share\\", false},
    {"\\\\server\\\\a", false},
    {"\\\\\\share\\a", false},
    {"\\\\ser\x1Fver\\share\\a", false},
    {"\\\\server\\sh\x1F"
     "are\\a",
     false},
    {"\\\\s\xE4\\\xFC\\a", true},  // bytes are unsigned
    {"\\\\server\\share\\a:b", false},
    {"\\\\server\\share\\nul.txt", false},
    {"\\\\server\\share\\a\\nul", true},
};

TEST(ToolsSyntax, TellsWellFormedFileNames) {
    for (const auto& [path, expected] : kFilenames) {
        EXPECT_EQ(Zel_Valid_Filename(path), expected) << (path ? path : "null");
    }
}

TEST(ToolsSyntax, TellsFilesInTheDatabase) {
    EXPECT_TRUE(Zel_Valid_DBFilename("DB:\\"));
    EXPECT_TRUE(Zel_Valid_DBFilename("db:\\a"));
    EXPECT_FALSE(Zel_Valid_DBFilename("DB:/a"));
    EXPECT_FALSE(Zel_Valid_DBFilename("DB:"));
    EXPECT_FALSE(Zel_Valid_DBFilename(" DB:\\"));
    EXPECT_FALSE(Zel_Valid_DBFilename(""));
    EXPECT_FALSE(Zel_Valid_DBFilename(nullptr));
}

struct NumberCase {
    const char* text;
    bool isInteger;
    bool isDouble;
};

const NumberCase kNumbers[] = {
    {nullptr, false, false},    {"", false, false},      {"0", true, true},
    {"0123456789", true, true}, {"+1", true, true},      {"-1", true, true},
    {"-", true, false},  // a sign alone will do for an integer
    {"+", true, false},         {"--1", false, false},   {"1-", false, false},
    {" 1", false, false},       {"1 ", false, false},    {"1e5", false, false},
    {"0x1", false, false},      {"\xB2", false, false},  // digits are those of ASCII
    {"1.5", false, true},       {"1.", false, true},     {".5", false, true},
    {"-.5", false, true},       {".", false, false},     {"-.", false, false},
    {".-5", false, false},      {"1.2.3", false, false}, {".2.", false, false},
    {"1,5", false, false},  // not the separator here
};

TEST(ToolsSyntax, TellsNumbers) {
    for (const auto& [text, isInteger, isDouble] : kNumbers) {
        EXPECT_EQ(Zel_Valid_Integer(text), isInteger) << (text ? text : "null");
        EXPECT_EQ(Zel_Valid_Double(text), isDouble) << (text ? text : "null");
    }
}

}  // namespace
