// The text-only part of the logs; also run by the native build, under sanitizers.

#include "diag/logtext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "diag/logdate.h"
#include "diag/plainformat.h"

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

namespace {

// What the two make of a format, in the same room.
std::pair<std::optional<std::string>, std::string> bothFormats(std::size_t room, const char* format,
                                                               ...) {
    char plain[64] = "", usual[64] = "";
    std::va_list arguments;
    va_start(arguments, format);
    const auto size = formatPlain({plain, room}, format, arguments);
    va_end(arguments);
    va_start(arguments, format);
    const int usualSize = std::vsnprintf(usual, sizeof usual, format, arguments);
    va_end(arguments);
    std::optional<std::string> text;
    if (size) text.emplace(plain, *size);
    return {text, std::string(usual, static_cast<std::size_t>(std::max(usualSize, 0)))};
}

}  // namespace

TEST(LogText, FormatsAsTheRunTimeLibraryDoes) {
    const auto expectBoth = [](const auto& both) {
        ASSERT_TRUE(both.first) << both.second;
        EXPECT_EQ(*both.first, both.second);
    };
    constexpr std::size_t kAll = 64;
    expectBoth(bothFormats(kAll, "plain"));
    expectBoth(bothFormats(kAll, "%d%% of %s, %c%c", -7, "a b", 'x', 0));
    expectBoth(bothFormats(kAll, "%i %u %d", INT_MIN, UINT_MAX, INT_MAX));
    expectBoth(bothFormats(kAll, "%ld|%li|%lu", LONG_MIN, LONG_MAX, ULONG_MAX));
    expectBoth(bothFormats(kAll, "%lld|%llu", LLONG_MIN, ULLONG_MAX));
    expectBoth(bothFormats(kAll, "%zu|%lli%s", SIZE_MAX, LLONG_MAX, ""));
    expectBoth(bothFormats(6, "%s%d", "123", 456));
}

TEST(LogText, LeavesOtherFormatsToIt) {
    for (const char* format : {"%5d", "%-d", "%x", "%hd", "%", "a%"}) {
        EXPECT_FALSE(bothFormats(64, format, 1).first) << format;
    }
    EXPECT_FALSE(bothFormats(64, "%.2s", "abc").first);
    EXPECT_FALSE(bothFormats(64, "%f", 1.0).first);
    const char* const none = nullptr;
    EXPECT_FALSE(bothFormats(64, "%s", none).first);
    EXPECT_FALSE(bothFormats(5, "%s%d", "123", 456).first) << "no room for the number";
    EXPECT_FALSE(bothFormats(5, "%d%s", 456, "123").first) << "no room for the text";
    EXPECT_FALSE(bothFormats(2, "abc").first);
}
