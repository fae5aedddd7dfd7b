// What can be said of a pattern before it meets a text.

#pragma once

#include <cstddef>

#include "text/posixpattern.h"

struct PatternTraits {
    static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

    bool isNullable = true;  // matches the empty text
    // Two ways through the pattern may read the same text. Without that a search with
    // backtracking is linear from each start.
    bool isAmbiguous = false;
    // The way that backtracking prefers may end before the longest one does.
    bool mayStopEarly = false;
    bool startsAtTextStart = false;  // every match begins with ^
    ByteSet first;                   // bytes that a match begins with, unless it is empty
    ByteSet follow;                  // bytes that may lengthen a match
    std::size_t minLength = 0;
    std::size_t maxLength = 0;
    std::size_t elements = 0;  // nodes after writing repetitions out
    std::size_t branches = 1;  // alternatives to try at one place, at most
    std::size_t ways = 1;      // through the pattern; `kNoLimit` for a great many

    // Whether the match that backtracking finds is the longest from its start.
    bool isGreedyLongest() const {
        return minLength == maxLength || (!isAmbiguous && !mayStopEarly);
    }
};

PatternTraits traitsOf(const PosixPattern& pattern);
