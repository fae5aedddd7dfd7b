// What the character map is in a process that has not loaded one.

#include <gtest/gtest.h>

#include <cstdio>

#include "support/child.h"
#include "zbasic/zsgml.h"

CHILD_MAIN(sgmlStart) {
    const SV::String before(ZelSGMLString::GetLanguage());
    const SV::String converted = ZelSGMLString::GetSGMLString("<\xE4>");
    std::printf("'%s' %s '%s'\n", before.c_str(), converted.c_str(), ZelSGMLString::GetLanguage());
    return 0;
}

TEST(SgmlStart, TheFirstConversionLoadsTheBuiltInMap) {
    EXPECT_EQ(runChild("sgmlStart").out, "'' &lt;&auml;&gt; 'DEFAULT'\n");
}
