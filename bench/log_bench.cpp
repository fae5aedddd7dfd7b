// Logs and plug-ins beside other ways to do the same work:
//
//     bench_log FOLDER PLUGIN-FOLDER
//
// FOLDER receives the files, PLUGIN-FOLDER has some DLLs. Every figure is the best of several
// rounds that alternate between the two, in processor time; what was written is compared.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include "sv/dir.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zfilelog.h"
#include "zbasic/zplugin.h"

#include <windows.h>

namespace {

constexpr int kRounds = 12;
constexpr int kBufferedLines = 1'000'000;
constexpr int kFlushedLines = 300'000;
constexpr int kFiles = 50;
constexpr std::size_t kStampSize = 22;  // "2024.03.05, 14:07:09: "

// Of the processor, in this process and in the system for it: others may be busy meanwhile.
double processorSeconds() {
    FILETIME created, ended, kernel, user;
    ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        constexpr double kTicks = 1e7;
        return (4294967296.0 * time.dwHighDateTime + time.dwLowDateTime) / kTicks;
    };
    return seconds(kernel) + seconds(user);
}

double secondsOf(const std::function<void()>& work) {
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

void compare(const char* what, double goal, const std::function<void()>& ours,
             const std::function<void()>& theirs) {
    double best = 1e9, other = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        best = std::min(best, secondsOf(ours));
        other = std::min(other, secondsOf(theirs));
    }
    std::printf("%-34s %8.1f ms %8.1f ms   theirs / ours %5.2f   goal %.2f\n", what, best * 1e3,
                other * 1e3, other / best, goal);
    std::fflush(stdout);
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The entries without their stamps.
std::string entriesOf(const std::string& path) {
    const std::string content = contentOf(path);
    std::string entries;
    for (std::size_t at = 0; at < content.size();) {
        const std::size_t end = content.find('\n', at) + 1;
        entries.append(content, at + kStampSize, end - at - kStampSize);
        at = end;
    }
    return entries;
}

void expectEqual(const std::string& a, const std::string& b) {
    if (a == b && !a.empty()) return;
    std::printf("the results differ\n");
    std::exit(1);
}

void benchBuffered(const std::string& folder) {
    const std::string ours = folder + "\\ours.log", theirs = folder + "\\theirs.log";
    compare(
        "1,000,000 entries, buffered", 1.4,
        [&] {
            ZelBasicFileLogger logger(false, true, 0);
            logger.open(ours.c_str(), false);
            for (int i = 0; i < kBufferedLines; ++i) {
                logger.addText("request %d of %s took %d us", i, "client 17", i % 977);
            }
        },
        [&] {
            const auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(theirs, true);
            spdlog::logger logger("bench", sink);
            logger.set_pattern("%Y.%m.%d, %H:%M:%S: %v");
            for (int i = 0; i < kBufferedLines; ++i) {
                logger.info("request {} of {} took {} us", i, "client 17", i % 977);
            }
        });
    expectEqual(entriesOf(ours), entriesOf(theirs));
}

// The bytes of all entries are made before, so that only writing them is measured.
void benchFlushed(const std::string& folder) {
    const std::string ours = folder + "\\flushed.log", bare = folder + "\\bare.log";
    std::vector<std::string> lines;
    for (int i = 0; i < kFlushedLines; ++i) {
        lines.push_back("2024.03.05, 14:07:09: request " + std::to_string(i) + " of client 17\r\n");
    }
    compare(
        "300,000 entries, each flushed", 1 / 1.25,
        [&] {
            ZelBasicFileLogger logger(true, true, 0);
            logger.open(ours.c_str(), false);
            for (int i = 0; i < kFlushedLines; ++i) logger.addText("request %d of client 17", i);
        },
        [&] {
            const HANDLE file = ::CreateFileA(bare.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                              CREATE_ALWAYS, 0, nullptr);
            for (const std::string& line : lines) {
                DWORD written = 0;
                ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
            }
            ::CloseHandle(file);
        });
    expectEqual(entriesOf(ours), entriesOf(bare));
}

void benchRegistry(const std::string& folder) {
    std::vector<SV::String> names;
    std::vector<std::unique_ptr<ZelBasicFileLogger>> loggers;
    for (int i = 0; i < kFiles; ++i) {
        names.emplace_back(folder + "\\registry_" + std::to_string(i) + ".log");
        const std::string own = folder + "\\own_" + std::to_string(i) + ".log";
        ::DeleteFileA(names.back().c_str());
        loggers.push_back(std::make_unique<ZelBasicFileLogger>(true, true, 0));
        ::DeleteFileA(own.c_str());
        loggers.back()->open(own.c_str(), true);  // as the registry does
    }
    const SV::String text("request 17 of client 17 took 17 us");
    compare(
        "300,000 entries over 50 files", 1 / 1.2,
        [&] {
            for (std::size_t i = 0; i < kFlushedLines; ++i) Zel_AddToLog(names[i % kFiles], text);
        },
        [&] {
            for (std::size_t i = 0; i < kFlushedLines; ++i) {
                loggers[i % kFiles]->addText(text.c_str());
            }
        });
    for (int i = 0; i < kFiles; ++i) {
        const std::string number = std::to_string(i) + ".log";
        expectEqual(entriesOf(folder + "\\registry_" + number),
                    entriesOf(folder + "\\own_" + number));
    }
}

void benchPlugins(const std::string& folder) {
    const SV::DirEntry pattern(SV::String(folder + "\\*.dll"));
    std::size_t refused = 0;
    ZelPluginManager& manager = ZelPluginManager::Instance();
    const auto load = [&] {
        refused = 0;
        for (const SV::DirEntry& file : SV::Dir(pattern)) {
            refused += manager.LoadSinglePlugin(file.GetFull().c_str()) != kZelPluginLoaded;
        }
        manager.DiscardPlugins();
    };
    const auto bare = [&] {
        for (const SV::DirEntry& file : SV::Dir(pattern)) {
            const HMODULE module = ::LoadLibraryA(file.GetFull().c_str());
            if (module) ::FreeLibrary(module);
        }
    };
    compare("all plug-ins of the folder", 1 / 1.1, load, bare);
    std::printf("(%zu plug-ins, %zu refused)\n", SV::Dir(pattern).Count(), refused);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench_log FOLDER PLUGIN-FOLDER\n");
        return 2;
    }
    char* options[] = {argv[0]};
    ZelCmdline::init(1, options, false, "");
    benchBuffered(argv[1]);
    benchFlushed(argv[1]);
    benchRegistry(argv[1]);
    benchPlugins(argv[2]);
    return 0;
}
