#include "zbasic/zextension.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

struct PathCase {
    const char* why;
    const char* path;
    const char* completed;
    const char* stripped;
};

const PathCase kPaths[] = {
    // with the extensions "mdl" and "xml"
    {"no extension", "model", "model.mdl", "model"},
    {"the second one, in another case", "model.XML", "model.XML", "model"},
    {"another one", "model.txt", "model.txt.mdl", "model.txt"},
    {"the last dot counts", "a.b.Mdl", "a.b.Mdl", "a.b"},
    {"a folder", "dir\\", "dir\\", "dir\\"},
    {"a folder with its extension", "dir.mdl\\", "dir.mdl\\", "dir.mdl\\"},
    {"a slash is no end of a folder", "dir/", "dir/.mdl", "dir/"},
    {"relied on by callers: the dot of a folder", "dir.d\\model", "dir.d\\model.mdl",
     "dir.d\\model"},
    {"a dot at the end", "model.", "model..mdl", "model."},
    {"only the extension", ".mdl", ".mdl", ""},
    {"empty", "", ".mdl", ""},
    {"only the beginning of one", "model.md", "model.md.mdl", "model.md"},
};

TEST(Extensions, CompleteAndStripPaths) {
    ZelExtensionManager extensions("mdl");
    extensions.addExtension("xml");
    EXPECT_EQ(extensions.getExtension(), "mdl");
    for (const auto& [why, path, completed, stripped] : kPaths) {
        SV::String text(path);
        extensions.setExtension(text);
        EXPECT_EQ(text, completed) << why;
        EXPECT_EQ(extensions.getPath(path), stripped) << why;
    }
}

TEST(Extensions, KnowAnEmptyOneAndCase) {
    ZelExtensionManager extensions("");
    EXPECT_EQ(extensions.getPath("model."), "model");
    extensions.addExtension("\xC4");
    EXPECT_EQ(extensions.getPath("a.\xC4"), "a");
    EXPECT_EQ(extensions.getPath("a.\xE4"), "a.\xE4") << "only ASCII letters have a case";
    SV::String text("model");
    extensions.setExtension(text);
    EXPECT_EQ(text, "model.");
}

TEST(Extensions, AreValues) {
    ZelExtensionManager first("mdl");
    ZelExtensionManager copy(first);
    const ZelExtensionManager &oldFirst = first, &oldCopy = copy;
    ZelExtensionManager moved(std::move(first));
    copy.addExtension("xml");
    SV::String path("a");
    oldFirst.setExtension(path);
    EXPECT_EQ(path, "a") << "what was moved from has none";
    EXPECT_EQ(oldFirst.getExtension(), "");
    EXPECT_EQ(oldFirst.getPath("a.mdl"), "a.mdl");
    EXPECT_EQ(moved.getPath("a.xml"), "a.xml");
    first = copy;
    EXPECT_EQ(first.getPath("a.xml"), "a");
    moved = std::move(copy);
    EXPECT_EQ(moved.getExtension() + oldCopy.getExtension(), "mdl");
    first.addExtension("mdl");
    EXPECT_EQ(first.getPath("a.mdl"), "a");
}

TEST(Extensions, SplitAtTheLastDot) {
    const struct {
        const char* path;
        const char* base;
        const char* ext;
    } cases[] = {{"a.b.c", "a.b", "c"}, {"abc", "abc", ""},  {"abc.", "abc", ""},
                 {"", "", ""},          {".abc", "", "abc"}, {"a.b\\c", "a", "b\\c"}};
    for (const auto& [path, base, ext] : cases) {
        SV::String first("x"), second("x");
        ZelExtensionManager::parsePath(path, first, second);
        EXPECT_EQ(first, base) << path;
        EXPECT_EQ(second, ext) << path;
        SV::String same(path);
        ZelExtensionManager::parsePath(same, same, second);
        EXPECT_EQ(same, base) << path;
    }
}
