// Calls that come by way of the system: an exception must not pass the system's frames, which
// nothing would unwind. It waits for the message loop, which throws it.

#pragma once

#include <cstdint>

struct tagMSG;

namespace SV {

// Keeps the exception that is being handled, unless one waits already, and wakes the message loop.
void keepException() noexcept;

// For every message loop: delivers the message, unless somebody has taken it already, and throws
// the exception that waits then.
void finishMessage(const tagMSG& message, bool isTaken);

// What the system gets from `handler`; 0 when it throws.
template <class Handler>
std::intptr_t answerSystem(const Handler& handler) noexcept {
    try {
        return handler();
    } catch (...) {
        keepException();
        return 0;
    }
}

}  // namespace SV
