// Every allocation fails once: nothing crashes, nothing is lost, callers get what is stated, and
// the next try succeeds.

#include <gtest/gtest.h>

#include "hardening/allocation_paths.h"
#include "hardening/failing_allocation.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SWEEP_FINDS_LEAKS
#endif
#endif
#if defined(SWEEP_FINDS_LEAKS)
#include <sanitizer/lsan_interface.h>
constexpr bool kFindsLeaks = true;
#else
constexpr bool kFindsLeaks = false;
static int __lsan_do_recoverable_leak_check() { return 0; }
#endif

namespace {

// What it usually answers. What is made only once, in the first calls, has failed then, too; but
// not where leaks are found: libcrypto has some of its own in its start, and `AFirstUse` is there.
Answer usualAnswer(const AllocationPath& path) {
    const Step step = path.prepare();
    if (path.needsLibcryptoStarted || kFindsLeaks) return answerOf(step);
    for (int n = 1;; ++n) {
        const Answer answer = answerWithout(step, n, MemoryFault::kOnce);
        if (!FailingAllocation::hasFailed()) return answer;
        EXPECT_EQ(answer.text().find(kLost), std::string_view::npos) << n << ": " << answer.text();
    }
}

// False when the path has no `n`-th allocation.
bool failAt(const AllocationPath& path, int n, MemoryFault fault, const Answer& usual) {
    const long before = liveBlocks();
    {
        const Step step = path.prepare();
        const Answer answer = answerWithout(step, n, fault);
        EXPECT_TRUE(isStated(path, answer) || answer.text() == usual.text()) << answer.text();
        EXPECT_EQ(answerOf(step).text(), usual.text()) << "with memory again";
    }
    if (!path.leavesSomething) {
        EXPECT_EQ(liveBlocks(), before) << "blocks that nobody holds";
    }
    return FailingAllocation::hasFailed();
}

}  // namespace

TEST(Allocations, FailOneByOne) {
    const auto watch = watchAllocations();
    const auto place = placeForPaths();
    int failures = 0;
    for (const auto* const paths : {&portablePaths(), &platformPaths()}) {
        for (const AllocationPath& path : *paths) {
            SCOPED_TRACE(path.why);
            const Answer usual = usualAnswer(path);
            EXPECT_EQ(usual.text().find(kLost), std::string_view::npos) << usual.text();
            for (const MemoryFault fault : {MemoryFault::kOnce, MemoryFault::kForGood}) {
                SCOPED_TRACE(fault == MemoryFault::kOnce ? "one fails" : "all behind it fail, too");
                int n = 1;
                for (bool isThere = true; isThere; ++n) {
                    SCOPED_TRACE(n);
                    isThere = failAt(path, n, fault, usual);
                }
                failures += n - 2;
            }
            EXPECT_EQ(__lsan_do_recoverable_leak_check(), 0);
        }
    }
    EXPECT_GT(failures, 500);
}
