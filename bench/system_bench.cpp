// Child processes, temporary names and whole files beside the bare system calls. Rounds alternate;
// medians are compared, and results where both have them.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "zbasic/zcleanup.h"
#include "zbasic/zfileman.h"
#include "zbasic/zprocess.h"

#include <windows.h>

namespace {

using Clock = std::chrono::steady_clock;

double microsecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double median(std::vector<double> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

void check(bool isGood, const char* what) {
    if (isGood) return;
    std::printf("wrong: %s\n", what);
    std::exit(1);
}

std::string childCommandLine() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string line = path;
    return "\"" + line.substr(0, line.rfind('\\')) + "\\bench_empty.exe\"";
}

double startOurs(const std::string& commandLine) {
    const auto start = Clock::now();
    ZelSynchronousProcess process(SV::String(commandLine), "", kCmdShowNormal);
    check(process.Execute(true), "start");
    while (process.Wait() == -1) {
    }
    return microsecondsSince(start);
}

double startBare(std::string commandLine) {
    const auto start = Clock::now();
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    check(::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                           &startup, &process) != FALSE,
          "bare start");
    ::CloseHandle(process.hThread);
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hProcess);
    return microsecondsSince(start);
}

void benchChildren() {
    constexpr int kRounds = 61;
    const std::string commandLine = childCommandLine();
    std::vector<double> ours, bare;
    for (int round = 0; round < kRounds; ++round) {
        ours.push_back(startOurs(commandLine));
        bare.push_back(startBare(commandLine));
    }
    std::printf("start and wait for a child: %.1f ms, bare %.1f ms, ratio %.3f\n",
                median(ours) / 1000, median(bare) / 1000, median(ours) / median(bare));
}

void benchNames(bool isNewestFirst) {
    constexpr std::size_t kNames = 100'000;
    constexpr std::size_t kStep = 1000;
    std::vector<SV::String> names;
    std::vector<double> made, removed;
    while (names.size() < kNames) {
        const auto start = Clock::now();
        for (std::size_t i = 0; i < kStep; ++i) {
            names.push_back(ZelSystemFileManager::fileCreateTempName("bench", "tmp"));
        }
        made.push_back(microsecondsSince(start));
    }
    if (isNewestFirst) std::ranges::reverse(names);
    for (std::size_t i = 0; i < kNames; i += kStep) {
        const auto start = Clock::now();
        for (std::size_t k = 0; k < kStep; ++k) {
            ZelCleanUp::Instance().RemoveFileCleanUpAction(names[i + k]);
        }
        removed.push_back(microsecondsSince(start));
    }
    std::printf(
        "100,000 temporary names, %s removed first, us a thousand:\n"
        "  made: first %.0f, median %.0f, last %.0f\n"
        "  removed: first %.0f, median %.0f, last %.0f\n",
        isNewestFirst ? "newest" : "oldest", made.front(), median(made), made.back(),
        removed.front(), median(removed), removed.back());
}

// Lines of text; every eighth has characters beyond ASCII.
std::string sampleText() {
    constexpr std::size_t kSize = 100'000'000;
    std::string text;
    text.reserve(kSize + 100);
    for (int line = 0; text.size() < kSize; ++line) {
        text += line % 8 ? "The quick brown fox jumps over the lazy dog, line "
                         : "F\xC3\xBC"
                           "nf gro\xC3\x9F"
                           "e B\xC3\xA4ume, 5 \xE2\x82\xAC, line ";
        text += std::to_string(line) + "\r\n";
    }
    return text;
}

std::string readBare(const char* name) {
    const HANDLE file = ::CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    check(file != INVALID_HANDLE_VALUE, "open");
    const DWORD size = ::GetFileSize(file, nullptr);
    std::string bytes(size, '\0');
    DWORD count = 0;
    check(::ReadFile(file, bytes.data(), size, &count, nullptr) && count == size, "read");
    ::CloseHandle(file);
    std::wstring wide(size, L'\0');
    const int wideSize = ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(size),
                                               wide.data(), static_cast<int>(size));
    const int textSize =
        ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), wideSize, bytes.data(),
                              static_cast<int>(size), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(textSize));
    return bytes;
}

void benchReader() {
    constexpr int kRounds = 7;
    const SV::String name = ZelSystemFileManager::fileCreateTempName("bench", "txt");
    {
        const std::string text = sampleText();
        std::FILE* const file = std::fopen(name.c_str(), "wb");
        check(file && std::fwrite(text.data(), 1, text.size(), file) == text.size(), "sample");
        std::fclose(file);
    }
    std::vector<double> ours, bytes, bare;
    for (int round = 0; round < kRounds; ++round) {
        SV::String content;
        auto start = Clock::now();
        check(ZelWholeFileReader::Read(content, name, false) == 0, "our read");
        ours.push_back(microsecondsSince(start));
        start = Clock::now();
        const std::string expected = readBare(name.c_str());
        bare.push_back(microsecondsSince(start));
        check(content == std::string_view(expected), "text");
        start = Clock::now();
        check(ZelWholeFileReader::Read(content, name, true) == 0, "our read of bytes");
        bytes.push_back(microsecondsSince(start));
    }
    std::remove(name.c_str());
    std::printf("100 MB of text: %.0f ms, bare %.0f ms, speed %.2f; its bytes alone: %.0f ms\n",
                median(ours) / 1000, median(bare) / 1000, median(bare) / median(ours),
                median(bytes) / 1000);
}

}  // namespace

int main() {
    benchChildren();
    benchNames(true);
    benchNames(false);
    benchReader();
    return 0;
}
