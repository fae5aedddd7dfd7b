#include "text/patternengine.h"

#include <algorithm>

namespace {

// Beyond the pattern's own size: repetitions are written out.
constexpr std::size_t kMaxElements = 8192;

// Steps from one start that make a search linear, and steps of a whole search that are taken to
// be few enough (some hundredths of a second) where it is not.
constexpr std::size_t kMaxStepsFromStart = 1024;
constexpr std::size_t kMaxSteps = std::size_t{1} << 25;
constexpr std::size_t kMaxWays = 64;
// Backtracking tries alternatives one by one.
constexpr std::size_t kMaxBranches = 2;

}  // namespace

ZelRegExError PatternEngine::make(std::string_view pattern, bool ignoreCase,
                                  std::unique_ptr<PatternEngine>& engine) {
    std::unique_ptr<PatternEngine> made(new PatternEngine);
    const ZelRegExError error = parsePosixPattern(pattern, ignoreCase, made->m_pattern);
    if (error != 0) return error;
    made->m_traits = traitsOf(made->m_pattern);
    if (made->m_traits.elements > kMaxElements + pattern.size()) return REG_ESPACE;
    if (made->m_pattern.hasBackReferences) {
        if (!made->pcre()) return REG_ESPACE;
    } else {
        made->m_segments = SegmentMatcher::of(made->m_pattern);
        if (made->m_segments) made->m_firstBytes = made->m_segments->firstBytes();
    }
    engine = std::move(made);
    return 0;
}

ZelRegExError PatternEngine::searchByEngines(std::string_view text, Match* match) {
    if (m_pattern.hasBackReferences) return searchWithBackReferences(text, match);
    if (isFastWithBacktracking(text.size()) && pcre()) {
        const PcreMatcher::Result result = searchByBacktracking(text, match);
        if (result == PcreMatcher::Result::kFound) return 0;
        if (result == PcreMatcher::Result::kNone) return REG_NOMATCH;
    }
    return searchByAutomaton(text, match) ? 0 : REG_NOMATCH;
}

bool PatternEngine::isFastWithBacktracking(std::size_t textSize) const {
    const std::size_t length = std::min(m_traits.maxLength, textSize) + 1;
    const std::size_t ways = m_traits.isAmbiguous ? m_traits.ways : 1;
    if (ways > kMaxWays || m_traits.branches > kMaxBranches) return false;
    const std::size_t starts = m_traits.startsAtTextStart ? 1 : textSize + 1;
    return length * ways <= kMaxStepsFromStart || length <= kMaxSteps / (starts * ways);
}

ZelRegExError PatternEngine::searchWithBackReferences(std::string_view text, Match* match) {
    Match found{};
    switch (m_pcre->search(text, found.start, found.end)) {
        case PcreMatcher::Result::kFound:
            if (match) *match = found;
            return 0;
        case PcreMatcher::Result::kNone:
            return REG_NOMATCH;
        default:
            return REG_ESPACE;
    }
}

PcreMatcher::Result PatternEngine::searchByBacktracking(std::string_view text, Match* match) {
    Match found{};
    const PcreMatcher::Result result = m_pcre->search(text, found.start, found.end);
    if (result != PcreMatcher::Result::kFound || !match) return result;
    if (!m_traits.isGreedyLongest()) found.end = forward().longestEnd(text, found.start);
    *match = found;
    return result;
}

bool PatternEngine::searchByAutomaton(std::string_view text, Match* match) {
    PatternAutomaton::Window window{};
    if (!forward().contains(text, match ? &window : nullptr)) return false;
    if (!match) return true;
    match->start = backward().leftmostStart(text, window);
    match->end = forward().longestEnd(text, match->start);
    return true;
}

void PatternEngine::forget() {
    m_forward.reset();
    m_backward.reset();
}

PcreMatcher* PatternEngine::pcre() {
    if (!m_hasTriedPcre) m_pcre = PcreMatcher::compile(m_pattern);
    m_hasTriedPcre = true;
    return m_pcre.get();
}

PatternAutomaton& PatternEngine::forward() {
    if (!m_forward) {
        m_forward =
            std::make_unique<PatternAutomaton>(m_pattern, PatternProgram::Direction::kForward);
    }
    return *m_forward;
}

PatternAutomaton& PatternEngine::backward() {
    if (!m_backward) {
        m_backward =
            std::make_unique<PatternAutomaton>(m_pattern, PatternProgram::Direction::kBackward);
    }
    return *m_backward;
}
