// A compiled expression: chooses what searches for it.

#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "text/patternautomaton.h"
#include "text/patterntraits.h"
#include "text/pcrematcher.h"
#include "text/segmentmatcher.h"

// Pieces of fixed length are searched for directly. Where PCRE2's backtracking is known to stay
// linear and has few alternatives to try, its machine code is the fastest: it finds the start of
// the match, and the end too when the way that it prefers is the longest. The automaton does the
// rest, and is linear whatever the pattern and the text are.
class PatternEngine {
public:
    struct Match {
        std::size_t start;
        std::size_t end;
    };

    // May throw `std::bad_alloc`, as `search` may.
    static ZelRegExError make(std::string_view pattern, bool ignoreCase,
                              std::unique_ptr<PatternEngine>& engine);

    PatternEngine(const PatternEngine&) = delete;
    PatternEngine& operator=(const PatternEngine&) = delete;

    // True for texts that cannot match, by their first byte, and by all in front: their size is not
    // needed then.
    bool refusesFirstByte(char byte) const {
        return !m_firstBytes.contains(static_cast<unsigned char>(byte));
    }
    bool refusesStart(const char* text) const {
        return m_segments && m_segments->refusesStart(text);
    }
    // `match` may be null.
    ZelRegExError search(std::string_view text, Match* match) {
        if (!m_segments) return searchByEngines(text, match);
        std::size_t* const start = match ? &match->start : nullptr;
        std::size_t* const end = match ? &match->end : nullptr;
        return m_segments->search(text, start, end) ? 0 : REG_NOMATCH;
    }
    // Drops what is made anew for the next text. To be called when `search` has thrown: memory may
    // have run out in the midst of it.
    void forget();

private:
    PatternEngine() = default;

    ZelRegExError searchByEngines(std::string_view text, Match* match);
    bool isFastWithBacktracking(std::size_t textSize) const;
    ZelRegExError searchWithBackReferences(std::string_view text, Match* match);
    PcreMatcher::Result searchByBacktracking(std::string_view text, Match* match);
    bool searchByAutomaton(std::string_view text, Match* match);
    PcreMatcher* pcre();  // null when PCRE2 refuses the pattern
    PatternAutomaton& forward();
    PatternAutomaton& backward();

    PosixPattern m_pattern;
    PatternTraits m_traits;
    ByteSet m_firstBytes = ByteSet::all();  // of texts that may match
    std::optional<SegmentMatcher> m_segments;
    // Made when the first text needs them.
    bool m_hasTriedPcre = false;
    std::unique_ptr<PcreMatcher> m_pcre;
    std::unique_ptr<PatternAutomaton> m_forward;
    std::unique_ptr<PatternAutomaton> m_backward;
};
