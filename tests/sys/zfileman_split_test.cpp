#include <gtest/gtest.h>

#include "zbasic/zfileman.h"

namespace {

struct Case {
    const char* path;
    const char* drive;
    const char* directory;
    const char* baseName;
    const char* extension;  // without its point; null: no point either
};

const Case kCases[] = {
    {"C:\\a.b\\c.d.txt", "C:", "\\a.b\\", "c.d", "txt"},
    {"c.txt", "", "", "c", "txt"},
    {"c", "", "", "c", nullptr},
    {"c.", "", "", "c", ""},
    {".profile", "", "", "", "profile"},
    {".", "", "", ".", nullptr},
    {"a\\..", "", "a\\", "..", nullptr},
    {"...", "", "", "..", ""},
    {"", "", "", "", nullptr},
    {"C:c.txt", "C:", "", "c", "txt"},
    {"z:", "z:", "", "", nullptr},
    {"1:x", "", "", "1:x", nullptr},
    {"\\", "", "\\", "", nullptr},
    {"a/b\\c/d.e", "", "a/b\\c/", "d", "e"},
    {"a.b\\", "", "a.b\\", "", nullptr},
    {"\\\\server\\share\\d\\f.e", "\\\\server\\share", "\\d\\", "f", "e"},
    {"//server/share.x", "//server/share.x", "", "", nullptr},
    {"\\\\server\\", "\\\\server\\", "", "", nullptr},
    {"\\\\server", "", "\\\\", "server", nullptr},
    {"\\\\\\a\\b", "", "\\\\\\a\\", "b", nullptr},
    {"\\\\a\\\\b", "", "\\\\a\\\\", "b", nullptr},
};

}  // namespace

TEST(SplitFileName, GivesDriveDirectoryNameAndExtension) {
    for (const auto& [path, drive, directory, baseName, extension] : kCases) {
        SCOPED_TRACE(path);
        SV::String parts[4];
        for (const bool keepsDot : {true, false}) {
            ZelSystemFileManager::splitFileName(path, parts[0], parts[1], parts[2], parts[3],
                                                keepsDot);
            EXPECT_EQ(parts[0], drive);
            EXPECT_EQ(parts[1], directory);
            EXPECT_EQ(parts[2], baseName);
            const SV::String point(keepsDot && extension ? "." : "");
            EXPECT_EQ(parts[3], point + (extension ? extension : ""));
        }
    }
}

TEST(SplitFileName, TakesItsPathFromAPart) {
    SV::String path("C:\\a directory with a long name\\b.c");
    SV::String drive, baseName, extension;
    ZelSystemFileManager::splitFileName(path, drive, path, baseName, extension, false);
    EXPECT_EQ(path, "\\a directory with a long name\\");
    EXPECT_EQ(baseName, "b");
    EXPECT_EQ(extension, "c");
}
