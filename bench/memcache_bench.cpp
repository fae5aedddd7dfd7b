// Blocks that are taken and given back in reverse order: our cache, the heap of the process, and,
// where it is installed, mimalloc. Rounds alternate; medians are compared.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "zbasic/zmemcache.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

constexpr int kRounds = 31;
constexpr int kPasses = 2'000;
constexpr int kMostBlocks = 4;

struct Allocator {
    const char* name;
    void* (*alloc)(std::size_t size);
    void (*free)(void* data);
};

ZelMemCache g_cache;

#ifndef _WIN32
// Loaded, not linked: a program that links it has no other heap.
template <typename Function>
Function* fromMimalloc(const char* name) {
    static void* const library = ::dlopen("libmimalloc.so.2", RTLD_NOW | RTLD_LOCAL);
    void* const function = library ? ::dlsym(library, name) : nullptr;
    if (!function) {
        std::fprintf(stderr, "mimalloc is missing: %s\n", ::dlerror());
        std::exit(1);
    }
    return reinterpret_cast<Function*>(function);
}
#endif

const Allocator kAllocators[] = {
    {"cache", [](std::size_t size) { return g_cache.Alloc(size); },
     [](void* data) { g_cache.Free(data); }},
#ifdef _WIN32
    {"process heap", [](std::size_t size) { return ::HeapAlloc(::GetProcessHeap(), 0, size); },
     [](void* data) { ::HeapFree(::GetProcessHeap(), 0, data); }},
    {"malloc", std::malloc, std::free},
#else
    {"process heap", std::malloc, std::free},
    {"mimalloc", fromMimalloc<void*(std::size_t)>("mi_malloc"),
     fromMimalloc<void(void*)>("mi_free")},
#endif
};

// Nanoseconds a block; each is written to, and must not be one that is held already.
double measure(const Allocator& allocator, int blocks, std::size_t size) {
    void* held[kMostBlocks] = {};
    const auto start = std::chrono::steady_clock::now();
    for (int pass = 0; pass < kPasses; ++pass) {
        for (int i = 0; i < blocks; ++i) {
            held[i] = allocator.alloc(size);
            std::memcpy(held[i], &i, sizeof i);
        }
        for (int i = blocks; i-- > 0;) {
            int mark = -1;
            std::memcpy(&mark, held[i], sizeof mark);
            if (mark != i) std::abort();
            allocator.free(held[i]);
        }
    }
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
    return time.count() / kPasses / blocks;
}

double median(std::vector<double>& times) {
    std::ranges::nth_element(times, times.begin() + kRounds / 2);
    return times[kRounds / 2];
}

}  // namespace

int main() {
    for (const std::size_t size : {std::size_t{4} << 10, std::size_t{64} << 10}) {
        for (const int blocks : {1, 4}) {
            std::vector<double> times[std::size(kAllocators)];
            for (int round = 0; round < kRounds; ++round) {
                for (std::size_t i = 0; i < std::size(kAllocators); ++i) {
                    times[i].push_back(measure(kAllocators[i], blocks, size));
                }
            }
            std::printf("%zu KiB, %d at a time:", size >> 10, blocks);
            const double ours = median(times[0]);
            for (std::size_t i = 0; i < std::size(kAllocators); ++i) {
                const double time = median(times[i]);
                std::printf("  %s %.1f ns (%.2f)", kAllocators[i].name, time, time / ours);
            }
            std::printf("\n");
        }
    }
    return 0;
}
