// The main paths of all families, for tests that let their allocations fail.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "hardening/failing_allocation.h"
#include "sv/string.h"

// What a path ended in, put together without memory.
class Answer {
public:
    Answer& add(std::string_view text);  // with a blank before it
    Answer& add(long number);
    void replace(std::string_view text);

    std::string_view text() const { return {m_text, m_size}; }

private:
    std::size_t m_size = 0;
    char m_text[1000];
};

using Step = std::function<void(Answer&)>;

// Too long for the object itself, as most texts of the paths: short ones take no memory.
constexpr char kText[] = "a text that is too long to lie in the object itself";

// A part of no answer that is right, with memory and without.
constexpr std::string_view kLost = "lost";

// Said for a path that `std::bad_alloc` came out of.
constexpr std::string_view kThrows = "throws";

struct AllocationPath {
    const char* why;
    // Makes what the step works with, while there is memory. The step can be repeated.
    std::function<Step()> prepare;
    // What the step may answer when memory ran out; nothing for one that needs no memory.
    std::vector<std::string_view> outOfMemory;
    // Each `prepare` leaves something behind in the process.
    bool leavesSomething = false;
    // Needs what libcrypto starts once and, when it fails, never again.
    bool needsLibcryptoStarted = false;
};

// What the step answers now, and what when its `n`-th allocation fails.
Answer answerOf(const Step& step);
Answer answerWithout(const Step& step, int n, MemoryFault fault);
bool isStated(const AllocationPath& path, const Answer& outOfMemory);

// For a step that needs nothing.
std::function<Step()> alone(void (*step)(Answer&));
// For one that uses a file of that content.
Step withFile(std::string_view content, void (*use)(Answer&, const SV::String& path));

const std::vector<AllocationPath>& portablePaths();
const std::vector<AllocationPath>& platformPaths();  // those that need this system
const std::vector<AllocationPath>& guiPaths();       // those of a system that has windows

// What the paths need around them, as long as it lives.
std::shared_ptr<void> placeForPaths();
