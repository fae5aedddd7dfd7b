#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "text/parser_fixture.h"
#include "zbasic/ztextparser.h"

#include <windows.h>

namespace {

struct ReadLine {
    std::string text;
    bool has2Chars;
    std::int64_t offset;  // of the reader behind it

    bool operator==(const ReadLine&) const = default;
};

void PrintTo(const ReadLine& line, std::ostream* stream) {
    *stream << '"' << line.text << "\" two=" << line.has2Chars << " at " << line.offset;
}

std::vector<ReadLine> linesOf(ZelLineReader& reader) {
    std::vector<ReadLine> lines;
    SV::String line;
    while (reader.GetLine(line)) {
        lines.push_back({line.c_str(), reader.Is2CharsForNewline(), reader.GetCurrentOffset()});
    }
    return lines;
}

struct LinesCase {
    const char* why;
    std::size_t before;  // bytes of filler before the text
    std::string text;
    std::vector<ReadLine> expected;  // offsets count from the start of `text`
};

const LinesCase kLines[] = {
    {"empty file", 0, "", {}},
    {"no line end", 0, "a", {{"a\n", false, 1}}},
    {"no empty line behind the last line end", 0, "a\n", {{"a\n", false, 2}}},
    {"every line end",
     0,
     "a\nb\rc\r\nd",
     {{"a\n", false, 2}, {"b\n", false, 4}, {"c\n", true, 7}, {"d\n", false, 8}}},
    {"LF CR ends two lines", 0, "a\n\rb", {{"a\n", false, 2}, {"\n", false, 3}, {"b\n", false, 4}}},
    {"CR CR LF ends two lines", 0, "\r\r\n", {{"\n", false, 1}, {"\n", true, 3}}},
    {"CR as the last byte of the file", 0, "a\r", {{"a\n", false, 2}}},
    {"longer than one search step",
     0,
     "0123456789abcdefghij\r\n",
     {{"0123456789abcdefghij\n", true, 22}}},
    {"LF as the last byte of a block",
     kBlockSize - 2,
     "a\nb",
     {{"a\n", false, 2}, {"b\n", false, 3}}},
    {"CR as the last byte of a block",
     kBlockSize - 2,
     "a\rb",
     {{"a\n", false, 2}, {"b\n", false, 3}}},
    {"CR LF cut by the end of a block",
     kBlockSize - 2,
     "a\r\nb",
     {{"a\n", true, 3}, {"b\n", false, 4}}},
    {"CR LF as the last bytes of a block",
     kBlockSize - 3,
     "a\r\nb",
     {{"a\n", true, 3}, {"b\n", false, 4}}},
    {"text cut by the end of a block", kBlockSize - 2, "abcd\r\n", {{"abcd\n", true, 6}}},
    {"file of one block without line end", kBlockSize - 1, "a", {{"a\n", false, 1}}},
    {"file of one block ending in CR", kBlockSize - 1, "\r", {{"\n", false, 1}}},
    {"file of one block ending in LF", kBlockSize - 1, "\n", {{"\n", false, 1}}},
};

TEST(TextFileReader, DeliversLines) {
    const TempDir dir;
    for (const auto& [why, before, text, expected] : kLines) {
        SCOPED_TRACE(why);
        const std::string fillerText = filler(before);
        ZelTextFileReader reader(SV::String(dir.write("lines.txt", fillerText + text)));
        ASSERT_TRUE(reader.Init());
        std::vector<ReadLine> lines = linesOf(reader);
        lines.erase(lines.begin(), lines.begin() + std::ranges::count(fillerText, '\n'));
        for (ReadLine& line : lines) line.offset -= static_cast<std::int64_t>(before);
        EXPECT_EQ(lines, expected);
    }
}

TEST(TextFileReader, KeepsBytesThatAreNoText) {
    const TempDir dir;
    const std::string text("\0\x1A\xFF\0\n", 5);
    ZelTextFileReader reader(SV::String(dir.write("bytes", text)));
    ASSERT_TRUE(reader.Init());
    SV::String line;
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(line, std::string_view(text));
}

TEST(TextFileReader, TellsWhereItIs) {
    const TempDir dir;
    const std::string path = dir.write("offsets.txt", filler(kBlockSize + 92) + "last");
    ZelTextFileReader reader{SV::String(path)};
    EXPECT_TRUE(reader.Is2CharsForNewline());
    ASSERT_TRUE(reader.Init());
    EXPECT_FALSE(reader.Is2CharsForNewline());
    EXPECT_EQ(reader.GetFilename(), path);
    EXPECT_STREQ(reader.GetpFilename(), path.c_str());
    EXPECT_EQ(reader.GetCurrentPercent(), 0.0);

    SV::String line;
    for (int i = 0; i < 82; ++i) ASSERT_TRUE(reader.GetLine(line));  // the last one crosses blocks
    EXPECT_EQ(reader.GetAbsoluteBufferOffset(), 8192);
    EXPECT_EQ(reader.GetInBufferOffset(), 8);
    EXPECT_EQ(reader.GetCurrentOffset(), 8200);
    EXPECT_DOUBLE_EQ(reader.GetCurrentPercent(), 8200.0 / 8288.0 * 100.0);

    ASSERT_TRUE(reader.MoveTo(8284));
    EXPECT_EQ(reader.GetAbsoluteBufferOffset(), 8284);
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(line, "last\n");
    EXPECT_EQ(reader.GetCurrentOffset(), 8288);
    EXPECT_FALSE(reader.GetLine(line));
    EXPECT_EQ(line, "last\n");  // as it was

    EXPECT_FALSE(reader.MoveTo(-1));
    EXPECT_EQ(reader.GetCurrentOffset(), 8288);
    EXPECT_TRUE(reader.MoveTo(9000));
    EXPECT_FALSE(reader.GetLine(line));

    ASSERT_TRUE(reader.Init());  // starts over
    ASSERT_TRUE(reader.GetLine(line));
    EXPECT_EQ(reader.GetCurrentOffset(), 100);
}

TEST(TextFileReader, FailsWithoutAFile) {
    const TempDir dir;
    SV::String line("before");
    for (const std::string& path : {dir.path("missing.txt"), dir.root().string(), std::string()}) {
        SCOPED_TRACE(path);
        ZelTextFileReader reader{SV::String(path)};
        EXPECT_FALSE(reader.GetLine(line));
        EXPECT_FALSE(reader.Init());
        EXPECT_EQ(reader.GetHandle(), INVALID_HANDLE_VALUE);
        EXPECT_FALSE(reader.GetLine(line));
        EXPECT_FALSE(reader.MoveTo(0));
        EXPECT_EQ(reader.GetCurrentPercent(), 0.0);
    }
    EXPECT_EQ(line, "before");
}

TEST(TextFileReader, SharesTheFileUntilItIsDone) {
    const TempDir dir;
    const std::string path = dir.write("shared.txt", "a");
    ZelTextFileReader first{SV::String(path)};
    ZelTextFileReader second{SV::String(path)};
    EXPECT_TRUE(first.Init());
    EXPECT_TRUE(second.Init());
    EXPECT_TRUE(first.Done());
    SV::String line;
    EXPECT_FALSE(first.GetLine(line));
    EXPECT_FALSE(::DeleteFileA(path.c_str()));
    EXPECT_TRUE(second.Done());
    EXPECT_TRUE(::DeleteFileA(path.c_str()));
}

TEST(TextFileReader, Passes8191BytesInALine) {
    const TempDir dir;
    const std::string longest(8191, 'x');
    for (const std::string& text : {longest, longest + "\r\n", "a\n" + longest + "\n"}) {
        ZelTextFileReader reader(SV::String(dir.write("long.txt", text)));
        ASSERT_TRUE(reader.Init());
        EXPECT_EQ(linesOf(reader).back().text, longest + "\n");
    }
}

CHILD_MAIN(readOverlongLine) {
    ZelTextFileReader reader(argv[1]);
    reader.Init();
    const BoxWatcher watcher(0);  // notes the box; there is no button 0
    std::atomic<bool> isDone = false;
    std::thread reading([&] {
        SV::String line;
        while (reader.GetLine(line)) {
        }
        isDone = true;
    });
    while (watcher.seen().empty() && !isDone) ::Sleep(10);
    for (const SeenBox& box : watcher.seen()) std::fputs(box.text.c_str(), stdout);
    std::fflush(stdout);
    const BoxWatcher answer(IDOK);
    reading.join();
    return 0;
}

TEST(TextFileReader, EndsTheProcessAt8192BytesInALine) {
    const TempDir dir;
    const std::string tooLong(8192, 'x');
    for (const std::string& text : {tooLong, "a\n" + tooLong + "\nb\n"}) {
        const ChildResult result = runChild("readOverlongLine", {dir.write("long.txt", text)});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_NE(
            result.out.find("INTERNAL ERROR!\nThe maximum line length has been exceeded. Max. "
                            "8192 characters are allowed per line! Aborting program."),
            std::string::npos)
            << result.out;
    }
}

}  // namespace
