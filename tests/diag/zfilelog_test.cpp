// Logs in real files, on days that their first lines name. Days that really pass: log_days.sh.

#include "zbasic/zfilelog.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "diag/winowner.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "zbasic/zcmdline.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

constexpr char kOld[] = "2024.03.04, 23:59:58: old\r\n";
constexpr char kStamp[] = R"(\d{4}\.\d\d\.\d\d, \d\d:\d\d:\d\d: )";
constexpr std::size_t kStampSize = 22;

std::set<std::string> filesIn(const TempDir& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.root())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

bool vadd(ZelBasicFileLogger& logger, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const bool isDone = logger.vaddText(format, arguments);
    va_end(arguments);
    return isDone;
}

#define EXPECT_LIKE(text, pattern) \
    EXPECT_TRUE(std::regex_match(text, std::regex(pattern))) << "<" << (text) << ">"

// Opens and closes "server.log"; what is in it then.
std::string openedBy(const TempDir& folder, int backupCount, bool append = true) {
    ZelBasicFileLogger logger(false, true, backupCount);
    EXPECT_TRUE(logger.open(folder.path("server.log").c_str(), append));
    EXPECT_TRUE(logger.close());
    return readFile(folder.path("server.log"));
}

}  // namespace

struct StampCase {
    const char* why;
    bool timeStamped;
    bool isForCSV;
    const char* added;   // by `addText("%s %d", "a%d", 7)`
    const char* vadded;  // by `vaddText` likewise
};

const StampCase kStamps[] = {
    {"raw text: the caller brings line ends", false, false, "a%d 7", "a%d 7"},
    {"raw text is not CSV", false, true, "a%d 7", "a%d 7"},
    {"lines", true, false, R"(\d{4}\.\d\d\.\d\d, \d\d:\d\d:\d\d: a%d 7\r\n)",
     R"(\d{4}\.\d\d\.\d\d, \d\d:\d\d:\d\d: a%d 7\r\n)"},
    {"relied on by callers: two CSV stamps", true, true,
     R"(\d{4}\.\d\d\.\d\d;\d\d:\d\d:\d\d,\d{3}a%d 7\r\n)",
     R"(\d{4}\.\d\d\.\d\d; \d\d:\d\d:\d\d: a%d 7\r\n)"},
};

TEST(FileLogger, StampsEntries) {
    for (const auto& [why, timeStamped, isForCSV, added, vadded] : kStamps) {
        SCOPED_TRACE(why);
        const TempDir folder;
        ZelBasicFileLogger logger(true, timeStamped, 0);
        logger.setForCSV(isForCSV);
        ASSERT_TRUE(logger.open(folder.path("a.log").c_str(), false));
        EXPECT_TRUE(logger.addText("%s %d", "a%d", 7));
        EXPECT_LIKE(readFile(folder.path("a.log")), added);  // flushed
        EXPECT_TRUE(vadd(logger, "%s %d", "a%d", 7));
        EXPECT_LIKE(readFile(folder.path("a.log")), std::string(added) + vadded);
    }
}

TEST(FileLogger, StampsWithTheLocalTime) {
    const TempDir folder;
    ZelBasicFileLogger logger(true, true, 0);
    ASSERT_TRUE(logger.open(folder.path("a.log").c_str(), false));
    std::string before, written, after;
    do {  // a second may pass between two of them
        SYSTEMTIME now;
        const auto text = [&now] {
            ::GetLocalTime(&now);
            char stamp[64];
            std::snprintf(stamp, sizeof stamp, "%04d.%02d.%02d, %02d:%02d:%02d: x\r\n", now.wYear,
                          now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
            return std::string(stamp);
        };
        const auto size = fs::file_size(folder.path("a.log"));
        before = text();
        logger.addText("x");
        after = text();
        written = readFile(folder.path("a.log")).substr(size);
    } while (before != after);
    EXPECT_EQ(written, before);
}

TEST(FileLogger, TakesEntriesOfAnyLength) {
    const TempDir folder;
    for (const std::size_t size : {0u, 900u, 995u, 1000u, 1001u, 1023u, 1024u, 1025u, 100'000u}) {
        const std::string text(size, 'x');
        ZelBasicFileLogger logger(false, true, 0);
        ASSERT_TRUE(logger.open(folder.path("a.log").c_str(), false));
        EXPECT_TRUE(logger.addText("%s", text.c_str()));
        EXPECT_TRUE(logger.addText(nullptr));
        logger.close();
        const std::string content = readFile(folder.path("a.log"));
        EXPECT_TRUE(content.substr(kStampSize, size + 2) == text + "\r\n") << size;
        EXPECT_EQ(content.size(), size + 2 * (kStampSize + 2));
    }
}

TEST(FileLogger, DoesNothingWhileClosed) {
    const TempDir folder;
    ZelBasicFileLogger logger(true, true, 0);
    for (const bool wasOpen : {false, true}) {
        SCOPED_TRACE(wasOpen);
        EXPECT_FALSE(logger.isOpen());
        EXPECT_FALSE(logger.close());
        EXPECT_FALSE(logger.write("x", 1));
        EXPECT_FALSE(logger.flush());
        EXPECT_FALSE(logger.deleteFromDisc());
        EXPECT_FALSE(logger.addText("x"));
        EXPECT_FALSE(vadd(logger, "x"));
        if (wasOpen) break;
        EXPECT_TRUE(logger.open(folder.path("a.log").c_str(), false));
        EXPECT_TRUE(logger.isOpen());
        EXPECT_TRUE(logger.write("raw\n\0", 5));
        EXPECT_FALSE(logger.open(folder.path("b.log").c_str(), false));
        EXPECT_TRUE(logger.close());
    }
    EXPECT_EQ(readFile(folder.path("a.log")), std::string("raw\r\n\0", 6));
    EXPECT_EQ(filesIn(folder), std::set<std::string>{"a.log"});
}

TEST(FileLogger, DeletesItsFile) {
    const TempDir folder;
    const std::string path = folder.path("a.log");
    ZelBasicFileLogger logger(false, false, 0);
    ASSERT_TRUE(logger.open(path.c_str(), false));
    EXPECT_TRUE(logger.deleteFromDisc());
    EXPECT_FALSE(logger.isOpen());
    EXPECT_FALSE(fs::exists(path));

    ASSERT_TRUE(logger.open(path.c_str(), false));
    {
        const std::ifstream other(path);  // does not let it be deleted
        EXPECT_FALSE(logger.deleteFromDisc());
    }
    EXPECT_FALSE(logger.isOpen());
    EXPECT_TRUE(fs::exists(path));
}

TEST(FileLogger, FailsToOpenWithoutAWord) {
    const TempDir folder;
    ZelBasicFileLogger logger(false, true, 3);
    EXPECT_FALSE(logger.open(folder.path("missing\\a.log").c_str(), true));
    EXPECT_FALSE(logger.open(folder.root().string().c_str(), true));
    EXPECT_FALSE(logger.addText("x"));
    EXPECT_TRUE(logger.open(folder.path("a.log").c_str(), true));
}

TEST(FileLogger, ReportsFailedWrites) {
    ZelBasicFileLogger flushed(true, true, 0), buffered(false, true, 0);
    ASSERT_TRUE(flushed.open("Z:\\dev\\full", true)) << "needs Wine";
    EXPECT_FALSE(flushed.addText("x"));
    EXPECT_TRUE(flushed.isOpen());
    ASSERT_TRUE(buffered.open("Z:\\dev\\full", true));
    EXPECT_TRUE(buffered.addText("x")) << "still in the buffer";
    EXPECT_FALSE(buffered.flush());
    EXPECT_FALSE(buffered.addText("x"));
}

struct FirstLineCase {
    const char* why;
    std::string content;
    const char* backup;  // name; null: the file counts as today's
};

const FirstLineCase kFirstLines[] = {
    {"an entry", kOld, "server_2024.03.04.log"},
    {"a CSV entry", "2024.03.04;23:59:58,123;old\r\n", "server_2024.03.04.log"},
    {"the far future", "9999.12.31, 00:00:00: x\r\n", "server_9999.12.31.log"},
    {"only four digits of the year", "102024.3.4\r\n", "server_2024.03.04.log"},
    {"white space and signs, as scanf takes them", "\r\n\t +2024. 3.\n+4 x",
     "server_2024.03.04.log"},
    {"relied on by callers: the calendar is not asked", "0.13.99", "server_0000.13.99.log"},
    {"a version is a date as well", "1.8.0 is the version", "server_0001.08.00.log"},
    {"two numbers", "2024.03\r\n.04", nullptr},
    {"no digits behind a sign", "2024.-.04", nullptr},
    {"not at the start", "x 2024.03.04", nullptr},
    {"a blank before a point", "2024 .03.04", nullptr},
    {"empty", "", nullptr},
    {"no day of two digits", "2024.03.100", nullptr},
    {"binary", std::string("\0\xFF\x1A\x80", 4), nullptr},
    {"a megabyte without a line end", std::string(1 << 20, 'x'), nullptr},
    {"a megabyte of digits", std::string(1 << 20, '1'), nullptr},
    {"a megabyte of blanks", std::string(1 << 20, ' ') + "2024.03.04", "server_2024.03.04.log"},
};

TEST(FileLogger, MovesTheFileOfAnotherDay) {
    for (const auto& [why, content, backup] : kFirstLines) {
        SCOPED_TRACE(why);
        const TempDir folder;
        folder.write("server.log", content);
        const std::string now = openedBy(folder, 2);
        if (!backup) {
            EXPECT_EQ(filesIn(folder), std::set<std::string>{"server.log"});
            EXPECT_TRUE(now == content);
            continue;
        }
        EXPECT_EQ(filesIn(folder), (std::set<std::string>{"server.log", backup}));
        EXPECT_TRUE(readFile(folder.path(backup)) == content);
        EXPECT_LIKE(now, kStamp + std::string("Moving log file from server\\.log to ") + backup +
                             "\\.\r\n");
    }
}

TEST(FileLogger, NamesBackupsBesideTheFile) {
    const struct {
        const char* name;
        const char* backup;
    } cases[] = {{"server", "server_2024.03.04"},
                 {"a.b.c", "a.b_2024.03.04.c"},
                 {".log", "_2024.03.04.log"},
                 {"dir.d/server", "server_2024.03.04"}};
    for (const auto& [name, backup] : cases) {
        const TempDir folder;
        const fs::path path = folder.write(name, kOld);
        ZelBasicFileLogger logger(false, true, 1);
        ASSERT_TRUE(logger.open(path.string().c_str(), true)) << name;
        EXPECT_TRUE(fs::exists(path.parent_path() / backup)) << backup;
    }
}

TEST(FileLogger, NeitherMovesNorDeletesWithoutBackups) {
    const TempDir folder;
    folder.write("server.log", kOld);
    folder.write("server_2020.01.01.log", "");
    ZelBasicFileLogger logger(false, true, 0);
    ASSERT_TRUE(logger.open(folder.path("server.log").c_str(), true));
    EXPECT_TRUE(logger.addText("new"));
    logger.close();
    EXPECT_LIKE(readFile(folder.path("server.log")), kOld + std::string(kStamp) + "new\r\n");
    EXPECT_EQ(filesIn(folder).size(), 2u);
}

TEST(FileLogger, EmptiesTheNewFileUnlessAppending) {
    const TempDir folder;
    folder.write("server.log", kOld);
    EXPECT_EQ(openedBy(folder, 1, false), "");
    EXPECT_EQ(readFile(folder.path("server_2024.03.04.log")), kOld);
}

struct PruneCase {
    const char* why;
    const char* log;
    int backupCount;
    std::vector<const char*> before;
    std::set<std::string> left;  // beside the log and its new backup
};

const PruneCase kPrunes[] = {
    {"the oldest goes first",
     "server.log",
     2,
     {"server_2024.03.02.log", "server_2024.03.03.log"},
     {"server_2024.03.03.log"}},
    {"no more than the count: all stay",
     "server.log",
     3,
     {"server_2024.03.02.log", "server_2024.03.03.log"},
     {"server_2024.03.02.log", "server_2024.03.03.log"}},
    {"what matches takes part, in whatever case",
     "server.log",
     2,
     {"server_.log", "SERVER_2024.03.03.LOG", "server_zzz.log"},
     {"server_zzz.log"}},
    {"what does not match is left alone",
     "server.log",
     1,
     {"server2_2024.log", "server_2024.03.02.log1", "server-2024.03.02.log", "a"},
     {"server2_2024.log", "server_2024.03.02.log1", "server-2024.03.02.log", "a"}},
    {"an empty folder counts and goes", "server.log", 1, {"server_2024.03.01.log/"}, {}},
    {"without an extension everything behind the base matches",
     "server",
     1,
     {"server_2024.03.02.log", "server_1"},
     {}},
};

TEST(FileLogger, PrunesBackupsByName) {
    for (const auto& [why, log, backupCount, before, left] : kPrunes) {
        SCOPED_TRACE(why);
        const TempDir folder;
        for (const std::string name : before) {
            if (name.back() == '/')
                fs::create_directory(folder.root() / name);
            else
                folder.write(name, "");
        }
        const std::string path = folder.write(log, kOld);
        ZelBasicFileLogger logger(false, true, backupCount);
        ASSERT_TRUE(logger.open(path.c_str(), true));
        std::set<std::string> expected = left;
        expected.insert({log, fs::path(log).stem().string() + "_2024.03.04" +
                                  fs::path(log).extension().string()});
        EXPECT_EQ(filesIn(folder), expected);
    }
}

TEST(FileLogger, LosesTheOldDayWhenTheRenameFails) {
    const char* const failed =
        R"(Moving log file from server\.log to server_2024\.03\.04\.log\. FAILED \(EC: )";
    const TempDir folder;
    folder.write("server_2024.03.04.log", "there");
    folder.write("server_2020.01.01.log", "");
    folder.write("server.log", kOld);
    EXPECT_LIKE(openedBy(folder, 1), std::string(kStamp) + failed + "183\\)!\r\n");
    EXPECT_EQ(readFile(folder.path("server_2024.03.04.log")), "there");
    EXPECT_EQ(filesIn(folder).size(), 3u) << "nothing is pruned";
    {
        const TempDir other;
        const std::ifstream reader(other.write("server.log", kOld));
        EXPECT_LIKE(openedBy(other, 1), std::string(kStamp) + failed + "32\\)!\r\n");
    }
}

CHILD_MAIN(sleepUntilFileGoes) {
    std::ofstream(std::string(argv[1]) + ".up").close();
    while (fs::exists(argv[1])) ::Sleep(10);
    return 0;
}

TEST(FileLogger, IsNotHeldByAChildThatRuns) {
    const TempDir folder;
    const std::string flag = folder.write("flag", "");
    ZelBasicFileLogger logger(true, true, 3);
    ASSERT_TRUE(logger.open(folder.path("server.log").c_str(), true));
    char self[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, self, MAX_PATH);
    RunningProgram child(self, {"--child", "sleepUntilFileGoes", flag});
    while (!fs::exists(flag + ".up") && !child.hasEnded()) ::Sleep(10);
    EXPECT_FALSE(child.hasEnded());
    logger.close();
    EXPECT_NO_THROW(fs::rename(folder.path("server.log"), folder.path("moved.log")));
    fs::remove(flag);
    child.wait();
}

// Opens the file argv[1] of an old day while this process holds it, sharing what the options say.
CHILD_MAIN(openHeldFile) {
    ZelCmdline::init(argc, argv, true, "");
    const SV::Application application;  // without one there are no internal errors
    SV::Application::SetModalDialogSuppression(true);
    const WinFile holder(::CreateFileA(argv[1], GENERIC_READ,
                                       ZelCmdline::Instance().isFlag("read") ? FILE_SHARE_READ : 0,
                                       nullptr, OPEN_EXISTING, 0, nullptr));
    return ZelBasicFileLogger(false, true, 1).open(argv[1], true);
}

TEST(FileLogger, ReportsFailuresOfItsOwnAccesses) {
    const TempDir folder;
    const std::string nowhere = folder.path("nowhere");  // no minidumps: they take seconds
    const ChildOptions options = {"", {"TEMP=" + nowhere, "TMP=" + nowhere}};
    for (const auto& [sharing, number] : {std::pair{"-none", "47"}, {"-read", "78"}}) {
        const std::string path = folder.write("server.log", kOld);
        const ChildResult result = runChild("openHeldFile", {path, "-console", sharing}, options);
        EXPECT_EQ(result.exitCode, 0u);
        const std::string n(number);
        EXPECT_EQ(result.err,
                  "[dEM] zfilelog.cpp (" + n + "): zfilelog-" + n + " [1.8.0.230922]\n");
    }
}

// Writes "entry" to each of the files named by the arguments, until a day has passed.
CHILD_MAIN(logAcrossMidnight) {
    std::vector<std::unique_ptr<ZelBasicFileLogger>> loggers;
    for (int i = 1; i < argc; ++i) {
        loggers.push_back(std::make_unique<ZelBasicFileLogger>(true, true, 2));
        if (!loggers.back()->open(argv[i], true)) return 1;
    }
    const SV::Date start;
    bool isNextDay = false;
    do {
        isNextDay = SV::Date() != start;
        for (const auto& logger : loggers) logger->addText("entry");
        ::Sleep(100);  // the day goes by
    } while (!isNextDay);
    return 0;
}

// As above with one file, held by another handle meanwhile.
CHILD_MAIN(logHeldAcrossMidnight) {
    std::ofstream(argv[1]).close();
    const std::ifstream reader(argv[1]);
    return childMain_logAcrossMidnight(argc, argv);
}

// Fills the disk (the script gives it an end), makes room, and goes on.
CHILD_MAIN(fillDisk) {
    ZelBasicFileLogger logger(true, true, 2);
    if (!logger.open(argv[1], true)) return 1;
    while (logger.addText("%01000d", 0)) {
    }
    std::ofstream(argv[1]).close();
    std::printf("%d\n", logger.addText("entry"));
    return 0;
}

CHILD_MAIN(registry) {
    const TempDir folder;
    const SV::String log(folder.path("a.log")), csv(folder.path("b.csv"));
    Zel_AddToLog(log, "100% done, 50%% of %s%n%*.*d and 7%");
    Zel_AddToCSVLog(csv, ";first");
    Zel_AddToCSVLog(log, "not CSV");
    Zel_AddToLog(csv, ";CSV");
    Zel_AddToLog(log + SV::String("\0x", 2), SV::String("to the NUL\0x", 12));
    Zel_AddToLog(SV::String(folder.path("no\\c.log")), "lost");
    fs::create_directory(folder.path("no"));
    Zel_AddToLog(SV::String(folder.path("no\\c.log")), "lost as well");
    std::printf("%s%s%d", readFile(log.c_str()).c_str(), readFile(csv.c_str()).c_str(),
                fs::exists(folder.path("no\\c.log")));
    return 0;
}

TEST(LogRegistry, KeepsALoggerForEachName) {
    const std::string stamp = R"(\d{4}\.\d\d\.\d\d, \d\d:\d\d:\d\d: )";
    const std::string csvStamp = R"(\d{4}\.\d\d\.\d\d;\d\d:\d\d:\d\d,\d{3})";
    EXPECT_LIKE(runChild("registry").out, stamp + "100one, 50% of  and 7%\n" + stamp + "not CSV\n" +
                                              stamp + "to the NUL\n" + csvStamp + ";first\n" +
                                              csvStamp + ";CSV\n0");
}

struct LogsLate {
    std::string path;
    ~LogsLate() {
        if (!path.empty()) Zel_AddToLog(SV::String(path), "from a static");
    }
} g_logsLate;  // made before the registry has a logger

CHILD_MAIN(lateLog) {
    g_logsLate.path = argv[1];
    Zel_AddToLog(SV::String(argv[1]), "from main");
    return 0;
}

TEST(LogRegistry, TakesEntriesOfStaticObjects) {
    const TempDir folder;
    EXPECT_EQ(runChild("lateLog", {folder.path("a.log")}).exitCode, 0u);
    EXPECT_LIKE(readFile(folder.path("a.log")),
                kStamp + std::string("from main\r\n") + kStamp + "from a static\r\n");
}

TEST(LogRegistry, NamesTheDatabaseLog) { EXPECT_EQ(Zel_GetDBLogFile(), "zeldb.log"); }
