// Looking up extensions and far-call receivers among many: time, and memory taken from the heap.

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

#include "zbasic/zextension.h"
#include "zbasic/zfarcall.h"

namespace {

std::atomic<std::size_t> g_allocations = 0;

SV::String nameOf(int number) { return SV::String("receiver of number " + std::to_string(number)); }

ZelMemBuf answer(const ZelInputData&) { return {}; }

void reportAllocations(benchmark::State& state, std::size_t before) {
    state.counters["allocations"] =
        static_cast<double>(g_allocations - before) / static_cast<double>(state.iterations());
}

void extension(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    ZelExtensionManager extensions("first");
    for (int i = 1; i < count; ++i) extensions.addExtension(SV::String("x" + std::to_string(i)));
    SV::String path("folder\\model.X" + std::to_string(count / 2 + 1));
    const std::size_t before = g_allocations;
    for (auto _ : state) {
        extensions.setExtension(path);
        benchmark::DoNotOptimize(path);
    }
    reportAllocations(state, before);
    if (path.find(".first") != SV::String::npos) state.SkipWithError("was not found");
}
BENCHMARK(extension)->RangeMultiplier(10)->Range(10, 100'000);

// Receivers cannot be taken back: each size adds to what is there.
void farCall(benchmark::State& state) {
    ZelFarCallFactory& calls = ZelFarCallFactory::Instance();
    const int count = static_cast<int>(state.range(0));
    for (int i = 0; i < count; ++i) calls.registerReceiver(nameOf(i), answer);
    const SV::String name = nameOf(count / 2);
    const ZelInputData input;
    ZelMemBuf output;
    bool isFound = true;
    const std::size_t before = g_allocations;
    for (auto _ : state) isFound = calls.call(name, input, output) && isFound;
    reportAllocations(state, before);
    if (!isFound) state.SkipWithError("was not found");
}
BENCHMARK(farCall)->RangeMultiplier(10)->Range(10, 100'000);

}  // namespace

// Not inlined: the compiler sees no `new` and `free` of one block then, and does not warn of it.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
