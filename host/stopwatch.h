// How long something takes.

#pragma once

#include <chrono>

namespace zelhost {

using Clock = std::chrono::steady_clock;

inline double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace zelhost
