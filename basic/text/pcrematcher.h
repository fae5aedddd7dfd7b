// PCRE2's compiled code for a pattern.

#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "text/posixpattern.h"

// Finds where the leftmost match starts, and one of the matches that begin there: not always the
// longest. Time may grow with a power of the text's size, see `PatternTraits`.
class PcreMatcher {
public:
    enum class Result { kFound, kNone, kGaveUp };

    // Null when PCRE2 cannot take the pattern: too large for it, or no memory to be executed.
    static std::unique_ptr<PcreMatcher> compile(const PosixPattern& pattern);
    ~PcreMatcher();

    // The positions are written when there is a match. `kGaveUp` when it takes too many steps or
    // too much memory.
    Result search(std::string_view text, std::size_t& start, std::size_t& end);

private:
    struct Parts;  // of PCRE2, whose header stays out of this one

    explicit PcreMatcher(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};
