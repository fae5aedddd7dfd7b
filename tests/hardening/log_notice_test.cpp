// A log of another day whose new file refuses the notice about the move.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "hardening/outcome.h"
#include "support/import_patch.h"
#include "zbasic/zfilelog.h"

#include <windows.h>

namespace {

int g_refused = 0;  // openings for appending that are still to fail

HANDLE WINAPI openUnlessRefused(const char* name, DWORD access, DWORD sharing,
                                SECURITY_ATTRIBUTES* security, DWORD how, DWORD flags,
                                HANDLE like) {
    if (access & FILE_APPEND_DATA && g_refused > 0) {
        --g_refused;
        ::SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return ::CreateFileA(name, access, sharing, security, how, flags, like);
}

struct NoticeCase {
    const char* why;
    int refused;
    const char* expected;  // results of `open` and `addText`, then what was reported
    std::size_t lines;     // of the new file
};

const NoticeCase kNotices[] = {
    {"no fault", 0, "1 1", 2},
    {"the notice is lost, the log goes on", 1, "1 1 zfilelog-34", 1},
    {"the log itself cannot be opened either", 2, "0 0 zfilelog-34", 0},
};

}  // namespace

TEST(LogNotice, IsReportedWhenItCannotBeWritten) {
    const ImportPatch patch("zbasic18.dll", "CreateFileA",
                            reinterpret_cast<void*>(&openUnlessRefused));
    for (const auto& [why, refused, expected, lines] : kNotices) {
        SCOPED_TRACE(why);
        const FaultyPlace place;
        const std::string path = place.folder().write("a.log", "2001.02.03, 04:05:06: old");
        ZelBasicFileLogger log(true, true, 1);
        g_refused = refused;
        std::string results = std::to_string(log.open(path.c_str(), true));
        results += " " + std::to_string(log.addText("entry"));
        log.close();
        EXPECT_EQ(results + place.reports(), expected);
        EXPECT_EQ(g_refused, 0);
        EXPECT_EQ(readFile(place.folder().path("a_2001.02.03.log")), "2001.02.03, 04:05:06: old");
        if (lines == 0) continue;
        const std::string text = readFile(path);
        EXPECT_EQ(std::ranges::count(text, '\n'), static_cast<std::ptrdiff_t>(lines)) << text;
    }
}
