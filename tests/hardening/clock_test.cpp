// A clock that is set while the program runs: what the log and the calls that know the time say.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "hardening/outcome.h"
#include "support/import_patch.h"
#include "sv/dir.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zfilelog.h"

#include <windows.h>

namespace {

SYSTEMTIME g_now;  // local; the system's own clock shows the same

void WINAPI systemTime(FILETIME* time) { ::SystemTimeToFileTime(&g_now, time); }
void WINAPI localTime(SYSTEMTIME* time) { *time = g_now; }
BOOL WINAPI toLocal(const FILETIME* time, FILETIME* local) {
    *local = *time;
    return TRUE;
}

struct Moment {
    WORD year, month, day, hour, minute, second;
};

void setClock(const Moment& moment) {
    g_now = {moment.year,   moment.month,  0, moment.day, moment.hour,
             moment.minute, moment.second, 0};
}

struct ClockCase {
    const char* why;
    std::vector<Moment> moments;  // at each an entry is written
    const char* expected;         // each file and its lines, "|" at the end of each
};

const ClockCase kClocks[] = {
    {"it stands still",
     {{2024, 3, 5, 12, 0, 0}, {2024, 3, 5, 12, 0, 0}},
     "a.log|2024.03.05, 12:00:00: entry|2024.03.05, 12:00:00: entry|"},
    {"set back by hours",
     {{2024, 3, 5, 12, 0, 0}, {2024, 3, 5, 9, 0, 0}},
     "a.log|2024.03.05, 12:00:00: entry|2024.03.05, 09:00:00: entry|"},
    {"set back by a day",
     {{2024, 3, 5, 12, 0, 0}, {2024, 3, 4, 12, 0, 0}},
     "a.log|2024.03.04, 12:00:00: Moving log file from a.log to a_2024.03.05.log.|"
     "2024.03.04, 12:00:00: entry|"
     "a_2024.03.05.log|2024.03.05, 12:00:00: entry|"
     "2024.03.04, 12:00:00: Date changed from 3/5/2024 to 3/4/2024.|"},
    {"set forward by a year",
     {{2024, 3, 5, 12, 0, 0}, {2025, 3, 5, 12, 0, 0}},
     "a.log|2025.03.05, 12:00:00: Moving log file from a.log to a_2024.03.05.log.|"
     "2025.03.05, 12:00:00: entry|"
     "a_2024.03.05.log|2024.03.05, 12:00:00: entry|"
     "2025.03.05, 12:00:00: Date changed from 3/5/2024 to 3/5/2025.|"},
    // The second end of the day finds the name of its backup taken.
    {"set back by a day, forth, and on to the next",
     {{2024, 3, 5, 12, 0, 0},
      {2024, 3, 4, 12, 0, 0},
      {2024, 3, 5, 12, 5, 0},
      {2024, 3, 6, 0, 0, 0}},
     "a.log|2024.03.06, 00:00:00: Moving log file from a.log to a_2024.03.05.log. FAILED (EC: "
     "183)!|"
     "2024.03.06, 00:00:00: entry|"
     "a_2024.03.04.log|2024.03.04, 12:00:00: Moving log file from a.log to a_2024.03.05.log.|"
     "2024.03.04, 12:00:00: entry|2024.03.05, 12:05:00: Date changed from 3/4/2024 to 3/5/2024.|"
     "a_2024.03.05.log|2024.03.05, 12:00:00: entry|"
     "2024.03.04, 12:00:00: Date changed from 3/5/2024 to 3/4/2024.|"},
    {"summer begins",
     {{2024, 3, 31, 1, 59, 59}, {2024, 3, 31, 3, 0, 0}},
     "a.log|2024.03.31, 01:59:59: entry|2024.03.31, 03:00:00: entry|"},
    {"summer ends",
     {{2024, 10, 27, 2, 59, 59}, {2024, 10, 27, 2, 0, 0}},
     "a.log|2024.10.27, 02:59:59: entry|2024.10.27, 02:00:00: entry|"},
    {"summer ends at midnight",
     {{2024, 10, 27, 0, 0, 0}, {2024, 10, 26, 23, 0, 0}},
     "a.log|2024.10.26, 23:00:00: Moving log file from a.log to a_2024.10.27.log.|"
     "2024.10.26, 23:00:00: entry|"
     "a_2024.10.27.log|2024.10.27, 00:00:00: entry|"
     "2024.10.26, 23:00:00: Date changed from 10/27/2024 to 10/26/2024.|"},
};

std::string filesOf(const TempDir& folder) {
    std::string text;
    for (const SV::DirEntry& entry : SV::Dir(SV::DirEntry(SV::String(folder.path("*"))))) {
        if (entry.IsDirectory()) continue;
        text += std::string(entry.GetName().c_str()) + "|" + readFile(entry.GetFull().c_str());
    }
    std::erase(text, '\r');
    std::ranges::replace(text, '\n', '|');
    return text;
}

}  // namespace

TEST(ClockFaults, AreFollowedByTheLogAndByToday) {
    const ImportPatch precise("zbasic18.dll", "GetSystemTimePreciseAsFileTime",
                              reinterpret_cast<void*>(&systemTime));
    const ImportPatch local("zbasic18.dll", "FileTimeToLocalFileTime",
                            reinterpret_cast<void*>(&toLocal));
    const ImportPatch today("sv18.dll", "GetLocalTime", reinterpret_cast<void*>(&localTime));
    for (const auto& [why, moments, expected] : kClocks) {
        SCOPED_TRACE(why);
        const FaultyPlace place;
        ZelBasicFileLogger log(true, true, 3);
        for (const Moment& moment : moments) {
            setClock(moment);
            if (!log.isOpen()) log.open(place.folder().path("a.log").c_str(), true);
            EXPECT_TRUE(log.addText("entry"));
            const std::string now = std::to_string(moment.month) + "/" +
                                    std::to_string(moment.day) + "/" + std::to_string(moment.year);
            EXPECT_EQ(ZelCoreDate("no day").GetDisplayString(false), now.c_str());
        }
        log.close();
        EXPECT_EQ(filesOf(place.folder()) + place.reports(), expected);
    }
}
