#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "sv/string.h"
#include "support/child.h"
#include "support/temp_dir.h"

using namespace std::string_literals;

namespace {

ChildResult zelml(const std::vector<std::string>& arguments) {
    return runProgram(programFolder() + "\\zelml.exe", arguments);
}

// Worked out by hand: 7 = "File", 300 = "\u00C4\u20AC", each text byte XORed with 5C.
const std::string kFile =
    "\xE1\x05\xE1\x05"  // magic
    "\x00\x90\x03\x00"  // version
    "\x04\x00\x00\x00\x07\x00\x00\x00\x1A\x35\x30\x39"
    "\x02\x00\x00\x00\x2C\x01\x00\x00\x98\xDC"
    "\x00\x00\x00\x00"s;
const std::string kSource = "7 = \"File\"\n300 = \"\xC3\x84\xE2\x82\xAC\"\n";

}  // namespace

TEST(Zelml, BuildsTheBytesOfTheFormat) {
    struct Case {
        const char* why;
        std::string source;
    };
    const Case cases[] = {
        {"plain", kSource},
        {"byte order mark, CR LF, no last line end",
         "\xEF\xBB\xBF"
         "7 = \"File\"\r\n300 = \"\xC3\x84\xE2\x82\xAC\""},
        {"comments, empty lines, blanks or none of them",
         "# texts = \"x\"\n\n \t\n\t7=\"File\" # behind\n  300 \t=  \"\xC3\x84\xE2\x82\xAC\"#\n"},
        {"escaped bytes, leading zeros", "007 = \"\\x46i\\x6Ce\"\n300 = \"\\xC4\\x80\"\n"},
    };
    const TempDir folder;
    for (const auto& [why, source] : cases) {
        SCOPED_TRACE(why);
        const std::string output = folder.path("out.dll");
        const ChildResult result = zelml({"build", folder.write("in.txt", source), output});
        EXPECT_EQ(result.exitCode, 0u) << result.err;
        EXPECT_EQ(readFile(output), kFile);
        EXPECT_FALSE(std::filesystem::exists(output + ".tmp"));
    }
    const std::string empty = folder.path("empty.dll");
    EXPECT_EQ(zelml({"build", folder.write("in.txt", "# nothing\n"), empty}).exitCode, 0u);
    EXPECT_EQ(readFile(empty), kFile.substr(0, 8) + std::string(4, '\0'));
}

TEST(Zelml, PrintsAFileAsItsSource) {
    const TempDir folder;
    const ChildResult result = zelml({"print", folder.write("in.dll", kFile)});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, kSource);
}

TEST(Zelml, KeepsEveryCharacterAndEveryByte) {
    // The system says which characters the code page has; the five bytes without one need escapes.
    std::string source = "1 = \"";
    std::string escaped = "2 = \"";
    std::string characters;
    std::string bytes;
    for (int value = 1; value <= 0xFF; ++value) {
        const char byte = static_cast<char>(value);
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned>(value));
        escaped += hex;
        bytes += byte;
        if (value < 0x20 ||
            std::string_view("\"\\\x81\x8D\x8F\x90\x9D").find(byte) != std::string_view::npos)
            continue;
        source += SV::ConvertStringToUTF8String(SV::String(1, byte)).c_str();
        characters += byte;
    }
    const TempDir folder;
    const std::string first = folder.path("first.dll");
    const std::string second = folder.path("second.dll");
    const std::string all = source + "\"\n" + escaped + "\\x00\\n\\r\\t\\\"\\\\\"\n";
    ASSERT_EQ(zelml({"build", folder.write("in.txt", all), first}).exitCode, 0u);

    std::string texts = readFile(first);
    for (char& c : texts) c = static_cast<char>(c ^ 0x5C);
    EXPECT_EQ(texts.substr(16, characters.size()), characters);
    EXPECT_EQ(texts.substr(24 + characters.size(), bytes.size() + 6), bytes + "\0\n\r\t\"\\"s);

    const std::string printed = zelml({"print", first}).out;
    ASSERT_EQ(zelml({"build", folder.write("printed.txt", printed), second}).exitCode, 0u);
    EXPECT_EQ(readFile(second), readFile(first));
}

TEST(Zelml, ReportsEveryErrorWithItsLine) {
    struct Case {
        std::string line;
        std::vector<const char*> messages;
    };
    const Case cases[] = {
        {"1 = \"first\"", {}},
        {"x = \"a\"", {"expected an id (a decimal number) at the start of the line"}},
        {"-1 = \"a\"", {"expected an id (a decimal number) at the start of the line"}},
        {"0x10 = \"a\"",
         {"id 0 cannot be used: it is what a look-up answers when it finds nothing",
          "expected \"=\" behind the id"}},
        {"00 = \"a\"", {"id 0 cannot be used: it is what a look-up answers when it finds nothing"}},
        {"65535 = \"highest\"", {}},
        {"65536 = \"a\"", {"id 65536 is above 65535"}},
        {"99999999999 = \"a\"", {"id 99999999999 is above 65535"}},
        {"1 = \"again\"", {"id 1 has a text already, on line 1"}},
        {"10", {"expected \"=\" behind the id"}},
        {"11 \"a\"", {"expected \"=\" behind the id"}},
        {"12 = a", {"expected a text in double quotes behind \"=\""}},
        {"13 = # \"a\"", {"expected a text in double quotes behind \"=\""}},
        {"14 = \"", {"the closing quote is missing"}},
        {"15 = \"a\\\"", {"the closing quote is missing"}},
        {"16 = \"\"", {"the text is empty: a record without text would end the file"}},
        {"17 = \"a\" b", {"unexpected characters behind the closing quote"}},
        {"18 = \"\\q\"", {"unknown escape: there are \\n \\r \\t \\\" \\\\ and \\xHH"}},
        {"19 = \"\\x4\"", {"\\x needs two hexadecimal digits"}},
        {"20 = \"\\x-1\"", {"\\x needs two hexadecimal digits"}},
        {"21 = \"a\tb\"", {}},
        {"22 = \"a\x01\"", {"control character U+0001: write it as \\x01"}},
        {"23 = \"\xD0\x96\xE2\x86\x92\"",
         {"code page 1252 has no U+0416", "code page 1252 has no U+2192"}},
        {"24 = \"\xF0\x9F\x98\x80\"", {"code page 1252 has no U+1F600"}},
        {"25 = \"\xC2\x81\"", {"code page 1252 has no U+0081"}},
    };
    const TempDir folder;
    const std::string path = folder.path("in.txt");
    std::string source;
    std::string expected;
    int number = 0;
    for (const auto& [line, messages] : cases) {
        source += line + "\n";
        ++number;
        for (const char* message : messages) {
            expected += path + "(" + std::to_string(number) + "): " + message + "\n";
        }
    }
    folder.write("in.txt", source);
    const ChildResult checked = zelml({"check", path});
    EXPECT_EQ(checked.exitCode, 1u);
    EXPECT_EQ(checked.err, expected);

    const std::string output = folder.write("out.dll", "as it was");
    const ChildResult built = zelml({"build", path, output});
    EXPECT_EQ(built.exitCode, 1u);
    EXPECT_EQ(built.err, expected);
    EXPECT_EQ(readFile(output), "as it was");
}

TEST(Zelml, RefusesWhatIsNotUtf8) {
    const char* const cases[] = {
        "\x80",              // continuation without a start
        "\xC3",              // cut off by the quote
        "\xC0\x80",          // overlong
        "\xE0\x80\x80",      // overlong
        "\xED\xA0\x80",      // surrogate
        "\xF4\x90\x80\x80",  // above U+10FFFF
        "\xE4 in 1252",      // not UTF-8 at all
    };
    const TempDir folder;
    const std::string path = folder.path("in.txt");
    std::string source = "1 = \"good\"\n";
    std::string expected;
    int line = 1;
    for (const std::string text : cases) {
        const std::string start = std::to_string(++line) + " = \"a";
        expected += path + "(" + std::to_string(line) +
                    "): invalid UTF-8 at byte 7 of the line (byte " +
                    std::to_string(source.size() + start.size()) + " of the file)\n";
        source += start + text + "\"\n";
    }
    folder.write("in.txt", source);
    EXPECT_EQ(zelml({"check", path}).err, expected);
}

TEST(Zelml, ShowsTheFirstFiftyErrors) {
    const TempDir folder;
    std::string source;
    for (int i = 0; i < 60; ++i) source += "wrong\n";
    const std::string path = folder.write("in.txt", source);
    const std::string errors = zelml({"check", path}).err;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 51);
    EXPECT_TRUE(errors.ends_with(path + ": 60 errors in all\n")) << errors;
}

TEST(Zelml, ReportsWhatIsDamagedInAFile) {
    const std::string header = kFile.substr(0, 8);
    const std::string end(4, '\0');
    const std::string record = "\x01\0\0\0\x07\0\0\0\x1D"s;  // 7 = "A"
    struct Case {
        const char* why;
        std::string file;
        const char* out;
        const char* fault;
    };
    const Case cases[] = {
        {"nothing at all", "", "", "byte 0: the file ends within its header"},
        {"half a header", header.substr(0, 7), "", "byte 7: the file ends within its header"},
        {"magic", "MZ" + kFile.substr(2), "", "byte 0: wrong magic number"},
        {"version", kFile.substr(0, 4) + "\1" + kFile.substr(5), "", "byte 4: wrong version"},
        {"no terminator", header + record, "7 = \"A\"\n", "byte 17: the terminator is missing"},
        {"half a terminator", header + record + "\0\0"s, "7 = \"A\"\n",
         "byte 17: the file ends within the record that begins here"},
        {"text cut off", header + record + record.substr(0, 8), "7 = \"A\"\n",
         "byte 17: the file ends within the record that begins here"},
        {"length beyond the file", header + "\xFF\xFF\xFF\x7F\1\0\0\0abc"s, "",
         "byte 8: the file ends within the record that begins here"},
        {"negative length", header + record + "\xFF\xFF\xFF\xFF", "7 = \"A\"\n",
         "byte 17: the terminator is not 0"},
        {"more behind it", header + record + end + "x", "7 = \"A\"\n",
         "byte 21: bytes behind the terminator"},
        {"id twice", header + record + record + end, "7 = \"A\"\n",
         "byte 17: id 7 has a text already; this one is ignored"},
        {"id of more than 16 bits", header + "\x01\0\0\0\x07\0\x01\0\x1D"s + end, "7 = \"A\"\n",
         "byte 8: id 65543 is read as 7"},
        {"id 0", header + "\x01\0\0\0\0\0\0\0\x1D"s + end, "0 = \"A\"\n",
         "byte 8: id 0 cannot be used"},
    };
    const TempDir folder;
    for (const auto& [why, file, out, fault] : cases) {
        SCOPED_TRACE(why);
        const std::string path = folder.write("in.dll", file);
        const ChildResult result = zelml({"print", path});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, path + ": " + fault + "\n");
    }
}

TEST(Zelml, ReportsFilesThatCannotBeReadOrWritten) {
    const TempDir folder;
    const std::string missing = folder.path("missing.txt");
    for (const char* command : {"check", "print"}) {
        const ChildResult result = zelml({command, missing});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_EQ(result.err, missing + ": cannot be read (No such file or directory)\n");
    }
    const std::string source = folder.write("in.txt", kSource);
    const std::string nowhere = folder.path("missing\\out.dll");
    std::filesystem::create_directory(folder.path("directory"));
    for (const std::string& output : {nowhere, folder.path("directory")}) {
        const ChildResult result = zelml({"build", source, output});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_TRUE(result.err.starts_with(output + ": cannot be written (")) << result.err;
        EXPECT_FALSE(std::filesystem::exists(output + ".tmp"));
    }
}

TEST(Zelml, TellsWrongUsageFromRefusal) {
    struct Case {
        std::vector<std::string> arguments;
        unsigned long exitCode;
        const char* out;
        const char* err;
    };
    const char* const usage = "zelml build SOURCE OUTPUT ";
    const Case cases[] = {
        {{}, 2, "", usage},
        {{"make"}, 2, "", usage},
        {{"build", "in.txt"}, 2, "", usage},
        {{"check"}, 2, "", usage},
        {{"print", "a", "b"}, 2, "", usage},
        {{"--help"}, 0, usage, ""},
        {{"--version"}, 0, "zelml 1.", ""},
    };
    for (const auto& [arguments, exitCode, out, err] : cases) {
        const ChildResult result = zelml(arguments);
        SCOPED_TRACE(::testing::PrintToString(arguments));
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_TRUE(result.out.starts_with(out)) << result.out;
        EXPECT_TRUE(result.err.starts_with(err)) << result.err;
        EXPECT_EQ(result.err.empty(), std::string_view(err).empty());
    }
}

TEST(Zelml, InstalledLanguagesHaveTheSameIds) {
    const auto idsOf = [](const char* language) {
        const ChildResult result =
            zelml({"print", programFolder() + "\\language\\" + language + "\\zelml.dll"});
        EXPECT_EQ(result.exitCode, 0u) << result.err;
        std::vector<int> ids;
        for (std::size_t at = 0; at < result.out.size(); at = result.out.find('\n', at) + 1) {
            ids.push_back(std::atoi(result.out.c_str() + at));
        }
        return ids;
    };
    const std::vector<int> english = idsOf("1033");
    EXPECT_GT(english.size(), 20u);
    EXPECT_EQ(idsOf("1031"), english);
}
