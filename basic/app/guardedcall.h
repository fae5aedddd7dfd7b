// Calls into code of others.

#pragma once

#include <utility>

// What `call` answers; `fallback` when it throws: nothing may leave the library's interface.
template <typename Result, typename Call>
Result guarded(Result fallback, Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (...) {
        return fallback;
    }
}
