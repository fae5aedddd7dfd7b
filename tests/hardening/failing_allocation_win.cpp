// What our modules and the C++ run time import the run time's allocations by is exchanged.

#include <atomic>
#include <cstdlib>
#include <vector>

#include "hardening/failing_allocation.h"
#include "support/import_patch.h"

namespace {

std::atomic<long> g_live = 0;

void* counted(void* block) {
    if (block) ++g_live;
    return block;
}

void* allocate(std::size_t size) {
    return isAllocationToFail() ? nullptr : counted(std::malloc(size));
}

void* allocateCleared(std::size_t count, std::size_t size) {
    return isAllocationToFail() ? nullptr : counted(std::calloc(count, size));
}

void* reallocate(void* block, std::size_t size) {
    if (isAllocationToFail()) return nullptr;
    void* const moved = std::realloc(block, size);
    return block ? moved : counted(moved);
}

void release(void* block) {
    if (block) --g_live;
    std::free(block);
}

class Watch {
public:
    Watch() {
        for (const char* const module : {"zbasic18.dll", "sv18.dll", "libstdc++-6.dll"}) {
            patch(module, "malloc", &allocate);
            patch(module, "free", &release);
            patch(module, "realloc", &reallocate);
        }
        for (const char* const module : {"zbasic18.dll", "libstdc++-6.dll"}) {
            patch(module, "calloc", &allocateCleared);
        }
    }

private:
    template <class Function>
    void patch(const char* module, const char* function, Function* replacement) {
        m_patches.push_back(
            std::make_unique<ImportPatch>(module, function, reinterpret_cast<void*>(replacement)));
    }

    std::vector<std::unique_ptr<ImportPatch>> m_patches;
};

}  // namespace

std::shared_ptr<void> watchAllocations() { return std::make_shared<Watch>(); }

long liveBlocks() { return g_live; }
