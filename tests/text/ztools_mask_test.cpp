#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "zbasic/ztools.h"

namespace {

struct CsvCase {
    const char* why;
    const char* field;
    const char* expected;
};

const CsvCase kCsv[] = {
    {"empty", "", ""},
    {"neither quote nor semicolon", " a,b\n ", " a,b\n "},
    {"semicolon", "a;b", "\"a;b\""},
    {"quote", "a\"b", "\"a\"\"b\""},
    {"nothing but quotes", "\"\"", "\"\"\"\"\"\""},
    {"both, quote last", ";\"", "\";\"\"\""},
};

TEST(ToolsMask, MasksACsvField) {
    for (const auto& [why, field, expected] : kCsv) {
        SCOPED_TRACE(why);
        EXPECT_EQ(Zel_MaskCSV(field), expected);
    }
}

struct MaskCase {
    const char* why;
    const char* text;
    const char* expected;
};

const MaskCase kMasks[] = {
    {"null", nullptr, ""},
    {"empty", "", ""},
    {"special and escape", "a|b\\c", "a\\|b\\\\c"},
    {"neither", "a/b", "a/b"},
    {"nothing else", "|\\", "\\|\\\\"},
    {"behind 16 bytes, and the 16th", "0123456789ABCDE|0|", "0123456789ABCDE\\|0\\|"},
    {"at 16 and 17", "0123456789ABCDEF||", "0123456789ABCDEF\\|\\|"},
};

TEST(ToolsMask, EscapesACharacter) {
    for (const auto& [why, text, expected] : kMasks) {
        SCOPED_TRACE(why);
        const SV::String masked = Zel_Mask(text, '|', '\\');
        EXPECT_EQ(masked, expected);
        EXPECT_EQ(Zel_Unmask(masked.c_str(), '\\'), text);
    }
}

TEST(ToolsMask, DropsEscapesAndAnEscapeAtTheEnd) {
    EXPECT_EQ(Zel_Unmask("\\a\\\\\\|b", '\\'), "a\\|b");
    EXPECT_EQ(Zel_Unmask("ab\\", '\\'), "ab");
    EXPECT_EQ(Zel_Unmask("\\", '\\'), "");
    EXPECT_EQ(Zel_Unmask("0123456789ABCDE\\", '\\'), "0123456789ABCDE");
    EXPECT_EQ(Zel_Unmask(nullptr, '\\'), "");
}

struct ExportCase {
    const char* why;
    void (*mask)(const char* source, char* target);
    const char* text;
    const char* expected;
};

const ExportCase kExports[] = {
    {"path", Zel_Mask_Export_Path, "C:\\a/b", "C:\\\\a\\/b"},
    {"path has no other delimiters", Zel_Mask_Export_Path, ">\"\n", ">\"\n"},
    {"value", Zel_Mask_Export_Value, "a\"b\\>/\n", "a\\\"b\\\\>/\n"},
    {"name", Zel_Mask_Export_Name, "<a>\\\"/", "<a\\>\\\\\"/"},
    {"line feeds of a name", Zel_Mask_Export_Name, "\na\r\n>\n", " a\r \\> "},
    {"empty", Zel_Mask_Export_Name, "", ""},
    {"null", Zel_Mask_Export_Value, nullptr, ""},
    {"longer than a block", Zel_Mask_Export_Path, "0123456789ABCDEF/0123456789ABCDE/",
     "0123456789ABCDEF\\/0123456789ABCDE\\/"},
};

TEST(ToolsMask, EscapesForExportIntoNoMoreThanTheRoomItNeeds) {
    for (const auto& [why, mask, text, expected] : kExports) {
        SCOPED_TRACE(why);
        std::vector<char> target(std::strlen(expected) + 2, '#');
        mask(text, target.data());
        EXPECT_STREQ(target.data(), expected);
        EXPECT_EQ(target.back(), '#');
    }
}

// Text of few characters, so that special ones are frequent.
std::string randomText(std::mt19937& random, std::size_t size) {
    std::string text(size, '\0');
    for (char& c : text) c = "ab;\"\\|\xE4\n"[random() % 8];
    return text;
}

// One field as a reader of the format takes it.
std::string unmaskedCsv(std::string_view field) {
    if (!field.starts_with('"')) return std::string(field);
    std::string text;
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
        text += field[i];
        if (field[i] == '"' && field[++i] != '"') ADD_FAILURE() << "a quote alone";
    }
    return text;
}

TEST(ToolsMask, IsUndoneOnTextsOfAllSizes) {
    std::mt19937 random(2);
    for (std::size_t size = 0; size < 4000; size += 1 + size / 16) {
        const std::string text = randomText(random, size);
        SCOPED_TRACE(size);
        EXPECT_EQ(Zel_Unmask(Zel_Mask(text.c_str(), ';', '\\').c_str(), '\\'), text);
        EXPECT_EQ(Zel_Unmask(Zel_Mask(text.c_str(), '|', '|').c_str(), '|'), text);
        EXPECT_EQ(unmaskedCsv(Zel_MaskCSV(SV::String(text))), text);
    }
}

TEST(ToolsMask, KeepsNulBytesOfAField) {
    const SV::String field("a\0;\0", 4);
    EXPECT_EQ(Zel_MaskCSV(field), std::string_view("\"a\0;\0\"", 6));
}

}  // namespace
