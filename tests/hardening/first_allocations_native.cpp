// What is made only once in a process: each first try, with its fault, has a process of its own.

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include "hardening/allocation_paths.h"
#include "hardening/failing_allocation.h"

namespace {

enum Verdict { kFine, kNoSuchAllocation, kNotStated, kNotRecovered };

Verdict judge(const AllocationPath& path, int n, MemoryFault fault) {
    const Step step = path.prepare();
    const Answer first = answerWithout(step, n, fault);
    if (!FailingAllocation::hasFailed()) return kNoSuchAllocation;
    const Answer second = answerOf(step);
    if (isStated(path, second) && !path.needsLibcryptoStarted) return kNotRecovered;
    return first.text() == second.text() || isStated(path, first) ? kFine : kNotStated;
}

// What the process ended with: a verdict, or more than all of them when it was ended otherwise.
int judgeApart(const AllocationPath& path, int n, MemoryFault fault) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(judge(path, n, fault));
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

}  // namespace

// To be run alone: nothing has been made yet.
TEST(AFirstUse, MayFailAndIsTriedAgain) {
    const auto watch = watchAllocations();
    for (const auto* const paths : {&portablePaths(), &platformPaths()}) {
        for (const AllocationPath& path : *paths) {
            SCOPED_TRACE(path.why);
            int n = 1;
            int verdict = kFine;
            for (; verdict == kFine; ++n) verdict = judgeApart(path, n, MemoryFault::kOnce);
            EXPECT_EQ(verdict, kNoSuchAllocation) << "allocation " << n - 1;
        }
    }
}
