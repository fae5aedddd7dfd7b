// What goes to the debug output, which here is standard error.

#include <gtest/gtest.h>

#include "support/temp_dir.h"
#include "zbasic/zdbuser.h"

TEST(DBUserOutput, SpeaksOfAGivenFileOnly) {
    const TempDir folder;
    const std::string path = folder.path("none.txt");
    const std::string good = folder.write("worthless.txt", "nothing");
    testing::internal::CaptureStderr();
    ZelDBUserUtils given(path.c_str());
    ZelDBUserUtils byDefault;
    ZelDBUserUtils worthless(good.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "File " + path + " for ZEL_BOOT information was not found!\n");
}
