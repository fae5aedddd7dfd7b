// Memory that runs out: allocations of the libraries and of the test that fail.

#pragma once

#include <memory>

enum class MemoryFault {
    kOnce,     // one allocation fails, as a large one does among small ones
    kForGood,  // and all behind it
};

// While it lives the `n`-th allocation from now (counted from 1) of this thread fails. One of these
// lives at a time.
class FailingAllocation {
public:
    FailingAllocation(int n, MemoryFault fault);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    static bool hasFailed();  // of the last one
};

// Has allocations counted and failing, as long as it lives, where that does not hold anyway.
std::shared_ptr<void> watchAllocations();

// Blocks that are allocated and not released yet, from some start on; always 0 where the address
// sanitizer looks for leaks.
long liveBlocks();

// To be asked by whatever stands in an allocation's place.
bool isAllocationToFail();
