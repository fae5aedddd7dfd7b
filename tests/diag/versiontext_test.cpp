#include "diag/versiontext.h"

#include <gtest/gtest.h>

namespace {

struct VersionCase {
    const char* why;
    Version version;
    const char* text;
    const char* buildText;
    const char* patchText;
    const char* patchBuildText;
};

const VersionCase kVersions[] = {
    {"a release", {"1", "8", "0", "230922", ""}, "1.8", "1.8_230922", "1.8.0", "1.8.0.230922"},
    {"a development version",
     {"1", "8", "0", "230922", "rc1"},
     "1.8",
     "1.8_230922",
     "1.8.0",
     "1.8.0.230922-rc1"},
    {"a short build gets four digits",
     {"1", "8", "2", "42", ""},
     "1.8",
     "1.8_0042",
     "1.8.2",
     "1.8.2.0042"},
    {"no build at all", {"1", "8", "0", "", ""}, "1.8", "1.8_0000", "1.8.0", "1.8.0.0000"},
    {"a build of four digits",
     {"1", "8", "0", "1234", ""},
     "1.8",
     "1.8_1234",
     "1.8.0",
     "1.8.0.1234"},
    {"only the short text loses zeros",
     {"1", "10", "0", "1234", ""},
     "1.1",
     "1.10_1234",
     "1.10.0",
     "1.10.0.1234"},
    {"one character stays behind the point",
     {"10", "00", "0", "1234", ""},
     "10.0",
     "10.00_1234",
     "10.00.0",
     "10.00.0.1234"},
};

}  // namespace

TEST(VersionText, JoinsTheParts) {
    for (const VersionCase& row : kVersions) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(versionText(row.version), row.text);
        EXPECT_EQ(buildVersionText(row.version), row.buildText);
        EXPECT_EQ(patchVersionText(row.version), row.patchText);
        EXPECT_EQ(patchBuildVersionText(row.version), row.patchBuildText);
    }
}
