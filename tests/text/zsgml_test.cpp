#include "zbasic/zsgml.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>

namespace {

// "&<first>;" and so on, one a line.
std::string entityLines(int first, int count) {
    std::string lines;
    for (int i = first; i < first + count; ++i) lines += "&" + std::to_string(i) + ";\n";
    return lines;
}

std::string throughMap(std::string_view text) {
    return ZelSGMLString::GetSGMLString(SV::String(text)).c_str();
}

std::string inserted(const char* text) {
    std::ostringstream stream;
    stream << ZelSGMLString(text);
    return stream.str();
}

class Sgml : public ::testing::Test {
protected:
    void TearDown() override {
        ZelSGMLString::SetCharacterMap(nullptr);
        ZelSGMLString::EnableWarning(true);
        ZelSGMLString::SetExportFileType(ZelExportFileType(0));
    }

    static bool load(const std::string& mapping) {
        std::istringstream stream(mapping);
        return ZelSGMLString::SetCharacterMap(&stream);
    }
};

TEST_F(Sgml, StartsWithTheBuiltInMap) {
    EXPECT_TRUE(ZelSGMLString::SetCharacterMap(nullptr));
    EXPECT_STREQ(ZelSGMLString::GetLanguage(), "DEFAULT");
    EXPECT_EQ(throughMap("a < b & \"c\" > 'd'\n"), "a &lt; b &amp; &#34;c&#34; &gt; 'd'\n");
    EXPECT_EQ(throughMap("a\r\nb\r"), "a\nb");
    EXPECT_EQ(throughMap("\r"), "");
    EXPECT_EQ(throughMap(""), "");
}

// The texts that both steps of the search meet: 16 bytes at once, and the rest one by one.
TEST_F(Sgml, FindsSpecialBytesAnywhere) {
    for (std::size_t size = 1; size < 40; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            std::string text(size, 'x');
            text[at] = '&';
            const std::string before(at, 'x'), after(size - at - 1, 'x');
            EXPECT_EQ(throughMap(text), before + "&amp;" + after);
            EXPECT_EQ(ZelSGMLString::XMLStr(SV::String(text), true), before + "&amp;" + after);
        }
    }
}

struct MappingCase {
    const char* why;
    std::string mapping;
    bool warn;
    bool isAccepted;
    const char* language;
};

const MappingCase kMappings[] = {
    {"128 entities", "MAP128\nEnglish\n" + entityLines(128, 128), true, true, "English"},
    {"128 without saying so", "English\n" + entityLines(128, 128), true, true, "English"},
    {"no line end at the end", "English\n" + entityLines(128, 127) + "&255;", true, true,
     "English"},
    {"127 entities", "MAP128\nEnglish\n" + entityLines(128, 127), true, false, "DEFAULT"},
    {"129 entities", "MAP128\nEnglish\n" + entityLines(128, 129), true, false, "DEFAULT"},
    {"127 entities without warnings", "English\n" + entityLines(128, 127), false, false, "DEFAULT"},
    {"256 entities", "MAP256\nAll\n" + entityLines(0, 256), true, true, "All"},
    {"255 entities", "MAP256\nAll\n" + entityLines(0, 255), true, false, "DEFAULT"},
    {"257 entities", "MAP256\nAll\n" + entityLines(0, 257), true, false, "DEFAULT"},
    {"few entities without warnings", "MAP256\nAll\n" + entityLines(0, 3), false, true, "All"},
    {"many entities without warnings", "MAP256\nAll\n" + entityLines(0, 400), false, true, "All"},
    {"the last size counts", "MAP256\nMAP128\nEnglish\n" + entityLines(128, 128), true, true,
     "English"},
    {"a size behind the language is an entity", "English\nMAP256\n" + entityLines(129, 127), true,
     true, "English"},
    {"blanks, comments and empty lines",
     "// first\n\n MAP 128 // size\r\n E n glish//x\n  / / nothing\n" + entityLines(128, 128), true,
     true, "English"},
    {"a tab is no blank", "English\n\t\n" + entityLines(129, 127), true, true, "English"},
    {"a long comment", "// " + std::string(3000, 'x') + "\nEnglish\n" + entityLines(128, 128), true,
     true, "English"},
    {"empty file", "", true, false, "DEFAULT"},
};

TEST_F(Sgml, TakesOnlyACompleteMappingFile) {
    for (const auto& [why, mapping, warn, isAccepted, language] : kMappings) {
        SCOPED_TRACE(why);
        ZelSGMLString::EnableWarning(warn);
        EXPECT_EQ(load(mapping), isAccepted);
        EXPECT_STREQ(ZelSGMLString::GetLanguage(), language);
    }
}

TEST_F(Sgml, MapsTheUpperHalf) {
    ASSERT_TRUE(load("English\n&a b;\n0\n" + entityLines(130, 126)));
    EXPECT_EQ(throughMap("<\x7F\x80\x81\x82\xFF>"), "&lt;\x7F&ab;\x81&130;&255;&gt;");
}

TEST_F(Sgml, MapsAllBytesWithoutBuiltInEntities) {
    ASSERT_TRUE(load("MAP256\nAll\n" + entityLines(0, 60) + "0\n" + entityLines(61, 195)));
    EXPECT_EQ(throughMap(std::string_view("\0A<\r\xFF", 5)), "&0;&65;<&255;");  // CR is dropped
    EXPECT_EQ(throughMap("0123456789ABCDEF").substr(40), "&65;&66;&67;&68;&69;&70;");  // 16 at once
    ZelSGMLString::EnableWarning(false);
    ASSERT_TRUE(load("MAP256\nFew\n0\n&one;\n"));
    EXPECT_EQ(throughMap("\x01\x02<&\"\xE4"), "&one;\x02<&\"\xE4");
}

TEST_F(Sgml, PutsTheBuiltInEntitiesAtTheStartForARejectedMap256) {
    ASSERT_FALSE(load("MAP256\nAll\n&one;\n"));
    EXPECT_EQ(throughMap(std::string_view("\0\x01\x0A\r<A\x7F", 7)),
              "&euro;\x01&Scaron;&frac14;&Aacute;&yuml;");
    EXPECT_EQ(throughMap("\x80\xE4\xFF"), "\x80\xE4\xFF");
    EXPECT_TRUE(ZelSGMLString::SetCharacterMap(nullptr));
    EXPECT_EQ(throughMap("\n<\x80\x81\xE4"), "\n&lt;&euro;\x81&auml;");
}

TEST_F(Sgml, DropsAMapWhenTheNextOneComes) {
    ASSERT_TRUE(load("MAP256\nAll\n" + entityLines(0, 256)));
    ASSERT_TRUE(load("None\n" + [] {
        std::string zeros;
        for (int i = 0; i < 128; ++i) zeros += "0\n";
        return zeros;
    }()));
    EXPECT_EQ(throughMap("\x01"
                         "A<\xE4"),
              "\x01"
              "A&lt;\xE4");
}

struct XmlCase {
    const char* why;
    std::string text;
    bool checkControlRange;
    const char* expected;
};

const XmlCase kXml[] = {
    {"empty", "", true, ""},
    {"markup", "<a b='c' d=\"e\">&", true, "&lt;a b='c' d=&quot;e&quot;&gt;&amp;"},
    {"white space that XML would normalise", "\t\n\r ", true, "&#9;&#10;&#13; "},
    {"euro sign", "\x80", true, "&#8364;"},
    {"euro sign without the check", "\x80", false, "&#8364;"},
    {"umlaut", "\xE4", true, "\xC3\xA4"},
    {"dash of the code page", "\x96", true, "\xE2\x80\x93"},
    {"no characters",
     "a\x7F\x81\x8D\x8F\x90\x9D"
     "b",
     true, "ab"},
    {"DEL without the check", "\x7F", false, "\x7F"},
    {"a byte without character without the check", "\x81", false, "\xC2\x81"},
};

TEST_F(Sgml, WritesXmlInUtf8) {
    for (const auto& [why, text, checkControlRange, expected] : kXml) {
        SCOPED_TRACE(why);
        EXPECT_EQ(ZelSGMLString::XMLStr(SV::String(text), checkControlRange), expected);
    }
}

TEST_F(Sgml, WritesNoControlThatXmlForbids) {
    std::string controls;
    for (char c = 0; c < 32; ++c) controls += c;
    for (const bool checkControlRange : {false, true}) {
        EXPECT_EQ(ZelSGMLString::XMLStr(SV::String(controls), checkControlRange), "&#9;&#10;&#13;");
    }
}

TEST_F(Sgml, InsertsAsTheExportFileTypeSays) {
    EXPECT_EQ(inserted("\"\xE4\"\r"), "&#34;&auml;&#34;");
    EXPECT_EQ(inserted("plain"), "plain");
    EXPECT_EQ(inserted("\r"), "");
    EXPECT_EQ(inserted(nullptr), "");
    ZelSGMLString::SetExportFileType(kExportFileTypeXml);
    EXPECT_EQ(inserted("\"\xE4\"\r\x81"), "&quot;\xC3\xA4&quot;&#13;");
    ZelSGMLString::SetExportFileType(ZelExportFileType(2));
    EXPECT_EQ(inserted("\"\r"), "&#34;");
}

TEST_F(Sgml, InsertsLongTextsWhole) {
    std::string text, expected;
    for (int i = 0; i < 30'000; ++i) {
        text += i % 7 ? "x" : "<\xFC";
        expected += i % 7 ? "x" : "&lt;&uuml;";
    }
    EXPECT_EQ(inserted(text.c_str()), expected);
    std::ostringstream padded;
    padded << std::setw(static_cast<int>(expected.size()) + 2) << ZelSGMLString(text.c_str());
    EXPECT_EQ(padded.str(), "  " + expected);
}

TEST_F(Sgml, CopiesAndMoves) {
    ZelSGMLString first("<");
    ZelSGMLString second(first);
    ZelSGMLString third(std::move(first));
    second = ZelSGMLString(SV::String(">"));
    first = third;
    std::ostringstream stream;
    stream << first << second << third;
    EXPECT_EQ(stream.str(), "&lt;&gt;&lt;");
}

}  // namespace
