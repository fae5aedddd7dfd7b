#include "hardening/failing_allocation.h"

#include <thread>

namespace {

std::thread::id g_thread;  // whose allocations are counted; that of no thread: nobody's
int g_countdown = 0;
MemoryFault g_fault = MemoryFault::kOnce;
bool g_hasFailed = false;

}  // namespace

FailingAllocation::FailingAllocation(int n, MemoryFault fault) {
    g_countdown = n;
    g_fault = fault;
    g_hasFailed = false;
    g_thread = std::this_thread::get_id();
}

FailingAllocation::~FailingAllocation() { g_thread = {}; }

bool FailingAllocation::hasFailed() { return g_hasFailed; }

bool isAllocationToFail() {
    if (g_thread != std::this_thread::get_id()) return false;
    const bool isBehind = g_countdown <= 0 && g_fault == MemoryFault::kForGood;
    if (--g_countdown != 0 && !isBehind) return false;
    g_hasFailed = true;
    return true;
}
