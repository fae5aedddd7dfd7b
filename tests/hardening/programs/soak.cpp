// Does many operations in a random order and counts what the process holds: soak OPERATIONS SEED.
// Ends with 1 when an operation's result is wrong, and when the process holds more at the end than
// after the first tenth.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <numeric>

#include "hardening/programs/soak_operations.h"
#include "sv/application.h"
#include "zbasic/zcmdline.h"
#include "zbasic/zinter.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace {

struct Holdings {
    int handles = 0;
    int gdiObjects = 0;
    int userObjects = 0;
    std::size_t heapBytes = 0;
};

// What the heap may keep for itself, and the system's own lists grow by.
constexpr std::size_t kHeapTolerance = 64 << 10;

template <class Handle>
Handle handleOf(std::uintptr_t number) {
    return reinterpret_cast<Handle>(number);
}

// Every number is tried: Wine counts none of these for a program. It takes the lower half of a
// number for the whole of it.
Holdings countHandles() {
    Holdings held;
    constexpr std::uintptr_t kEnd = 0x10000;
    for (std::uintptr_t number = 4; number < kEnd; number += 4) {
        DWORD flags = 0;
        held.handles += ::GetHandleInformation(handleOf<HANDLE>(number), &flags) != 0;
    }
    for (std::uintptr_t number = 1; number < kEnd; ++number) {
        held.gdiObjects += ::GetObjectType(handleOf<HGDIOBJ>(number)) != 0;
        DWORD process = 0;
        const bool isWindow = ::GetWindowThreadProcessId(handleOf<HWND>(number), &process) != 0 &&
                              process == ::GetCurrentProcessId();
        held.userObjects += isWindow || ::IsMenu(handleOf<HMENU>(number));
    }
    return held;
}

std::size_t heapBytes() {
    HANDLE heaps[100];
    const DWORD count = std::min<DWORD>(::GetProcessHeaps(100, heaps), 100);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        ::HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry = {};
        while (::HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
        }
        ::HeapUnlock(heaps[i]);
    }
    return bytes;
}

Holdings count() {
    Holdings held = countHandles();
    held.heapBytes = heapBytes();
    return held;
}

bool hasGrown(const Holdings& before, const Holdings& after) {
    return after.handles > before.handles || after.gdiObjects > before.gdiObjects ||
           after.userObjects > before.userObjects ||
           after.heapBytes > before.heapBytes + kHeapTolerance;
}

// By weight.
const Operation& chosen(const std::vector<Operation>& operations, std::size_t place) {
    for (const Operation& operation : operations) {
        const auto weight = static_cast<std::size_t>(operation.weight);
        if (place < weight) return operation;
        place -= weight;
    }
    std::abort();  // places lie below the sum of the weights
}

bool doEach(const std::vector<Operation>& operations, int times, Chance& chance) {
    for (const Operation& operation : operations) {
        for (int i = 0; i < times; ++i) {
            if (operation.run(chance)) continue;
            std::printf("wrong at the start: %s\n", operation.name);
            return false;
        }
    }
    return true;
}

int soak(const std::vector<Operation>& operations, long long number, Chance& chance) {
    constexpr int kFirstTimes = 5;  // until what is made only once is there
    if (!doEach(operations, kFirstTimes, chance)) return 1;
    const auto weights =
        std::accumulate(operations.begin(), operations.end(), 0,
                        [](int sum, const Operation& operation) { return sum + operation.weight; });
    const auto start = std::chrono::steady_clock::now();
    Holdings first, last;
    std::printf("%12s %8s %8s %6s %6s %12s\n", "operations", "seconds", "handles", "GDI", "user",
                "heap bytes");
    for (int tenth = 1; tenth <= 10; ++tenth) {
        for (long long i = number * (tenth - 1) / 10; i < number * tenth / 10; ++i) {
            const Operation& operation =
                chosen(operations, chance.below(static_cast<std::size_t>(weights)));
            if (operation.run(chance)) continue;
            std::printf("operation %lld is wrong: %s\n", i, operation.name);
            return 1;
        }
        last = count();
        if (tenth == 1) first = last;
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
        std::printf("%12lld %8.1f %8d %6d %6d %12zu\n", number * tenth / 10, seconds.count(),
                    last.handles, last.gdiObjects, last.userObjects, last.heapBytes);
        std::fflush(stdout);
    }
    const bool isSteady = !hasGrown(first, last);
    std::puts(isSteady ? "It holds no more than after the first tenth."
                       : "It holds more than after the first tenth.");
    return isSteady ? 0 : 1;
}

class Program : public SV::MDIApplication {
public:
    bool Exception(long, unsigned long) override { return true; }
};

}  // namespace

int main(int argc, char** argv) {
    const long long number = argc > 1 ? std::atoll(argv[1]) : 20'000;
    const auto seed = static_cast<unsigned>(argc > 2 ? std::atoll(argv[2]) : 1);
    const fs::path programFolder = fs::path(argv[0]).parent_path();
    const fs::path folder =
        fs::temp_directory_path() / ("soak" + std::to_string(::GetCurrentProcessId()));
    fs::create_directory(folder);
    ::SetEnvironmentVariableA("TEMP", (folder / "missing").string().c_str());
    ::SetEnvironmentVariableA("TMP", (folder / "missing").string().c_str());

    Program program;
    SV::Application::SetModalDialogSuppression(true);
    SV::Application::SetShowWindowSuppression(true);
    ZelCmdline::init(1, argv, false, "log_no_dialogs");
    ZelInternational::InitAvailableLanguages();
    ZelInternational::createResourceManager("zbasic", true);
    Chance chance(seed);
    const int status = soak(operationsIn(folder.string(), programFolder.string()), number, chance);
    std::error_code ignored;
    fs::remove_all(folder, ignored);  // its logs are open until the end
    return status;
}
