#include "sv/resource.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "sv/application.h"
#include "support/temp_dir.h"

namespace {

// Notes what the library raises and answers as told.
class NotingApplication : public SV::Application {
public:
    bool Exception(long code, unsigned long detail) override {
        raised = code;
        if (code == kResourceFileFailed) {
            fileName = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(detail));
        } else {
            number = detail;
        }
        return false;
    }

    long raised = 0;
    unsigned long number = 0;
    std::string fileName;
};

}  // namespace

TEST(SvResource, AFileThatCannotBeLoadedRaisesItsName) {
    const TempDir dir;
    const std::string files[] = {dir.path("missing.dll"), dir.write("text.dll", "no library"),
                                 dir.write("empty.dll", ""), "relative\\missing.dll"};
    NotingApplication application;
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        const SV::ResMgr manager{SV::String(file)};
        EXPECT_FALSE(manager.IsLoaded());
        EXPECT_EQ(application.raised, SV::Application::kResourceFileFailed);
        EXPECT_EQ(application.fileName, file);
        SV::String text;
        EXPECT_FALSE(manager.FindString(1, text));
    }
}

TEST(SvResource, ATextThatIsMissingRaisesItsNumber) {
    NotingApplication application;
    EXPECT_EQ(SV::Resource::GetString(SV::ResId(12345)), "");
    EXPECT_EQ(application.raised, SV::Application::kResourceMissing);
    EXPECT_EQ(application.number, 12345u);
}

TEST(SvResource, NeverLoadsFromTheCurrentDirectory) {
    const TempDir dir;
    // A real DLL under a name that only the current directory has.
    std::filesystem::copy_file("C:\\windows\\system32\\kernel32.dll", dir.path("planted.dll"));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(dir.root());
    NotingApplication application;
    EXPECT_FALSE(SV::ResMgr("planted.dll").IsLoaded());
    EXPECT_TRUE(SV::ResMgr(SV::String(dir.path("planted.dll"))).IsLoaded());
    std::filesystem::current_path(before);
}
