// The text-only part of the logs; also run by the native build, under sanitizers.

#include "diag/logtext.h"

#include <gtest/gtest.h>

#include "diag/logdate.h"

struct FormatCase {
    const char* format;
    const char* text;
};

const FormatCase kFormats[] = {
    {"", ""},
    {"plain", "plain"},
    {"100% done", "100one"},  // relied on by callers: "% d" is a conversion
    {"50%% of 100%%", "50% of 100%"},
    {"%%s", "%s"},
    {"%s%d%5.2f|%-08.*lx|%*.*Lg", "||"},
    {"%n%hhn%lln%I64n", ""},
    {"%I64d%I32u%Iu%zu%jd%td%ls%S%C%p%m", ""},
    {"at the end %", "at the end %"},
    {"%5", "%5"},
    {"%.", "%."},
    {"%y %!", "%y %!"},
    {"%-y%d", "%-y"},
    {"%5%", "%5%"},
    {"\xE4% \xE4", "\xE4% \xE4"},
};

TEST(LogText, LeavesOutConversions) {
    for (const auto& [format, text] : kFormats) {
        std::string result = "> ";
        appendWithoutArguments(result, format);
        EXPECT_EQ(result, std::string("> ") + text) << format;
    }
}

TEST(LogText, FindsADateWhateverTheBlocks) {
    constexpr std::string_view text = " \r\n002024.\t3. 04, 10:00:00";
    for (std::size_t first = 0; first <= text.size(); ++first) {
        LogDateScan scan;
        if (scan.take(text.substr(0, first))) scan.take(text.substr(first));
        EXPECT_EQ(scan.date(), SV::Date(4, 3, 2024)) << first;
    }
}

TEST(LogText, SeesNoDateBeforeTheThirdNumber) {
    for (const std::string_view text : {"", "2024", "2024.", "2024.03.", "2024.03.-", "-1.2.3"}) {
        LogDateScan scan;
        EXPECT_EQ(scan.take(text), true) << text;
        EXPECT_FALSE(scan.date()) << text;
    }
}

TEST(LogText, StopsReadingAtTheEndOfTheDate) {
    LogDateScan scan;
    EXPECT_FALSE(scan.take("2024.03.04,"));
    EXPECT_FALSE(scan.take("5.6.7"));
    EXPECT_EQ(scan.date(), SV::Date(4, 3, 2024));
}
