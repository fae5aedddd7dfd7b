// Patterns that need no automaton: pieces of fixed length with anything between them.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/posixpattern.h"

// A piece: a set of bytes for each of its positions.
class PatternSegment {
public:
    explicit PatternSegment(std::vector<ByteSet> sets);

    std::size_t size() const { return m_sets.size(); }
    bool empty() const { return m_sets.empty(); }
    const ByteSet& firstBytes() const { return m_sets.front(); }  // not of an empty one
    // `size()` bytes are there.
    bool matchesAt(const char* text) const {
        if (empty()) return true;
        return m_sets.front().contains(static_cast<unsigned char>(*text)) && matchesRest(text);
    }
    bool startsText(const char* text) const;  // which ends at its first NUL
    // The first place in `text` at or behind `from`, the last one; or npos.
    std::size_t find(std::string_view text, std::size_t from) const;
    std::size_t findLast(std::string_view text, std::size_t from) const;

private:
    // A position that only one byte matches, or two: then (byte | mask) == value for both, and
    // perhaps for more.
    struct Anchor {
        std::size_t offset;
        char mask;
        char value;
        int rank;  // the higher, the more often such a byte is met
    };
    bool matchesRest(const char* text) const;
    void chooseAnchors();
    template <class Check>
    std::size_t scan(std::string_view text, std::size_t from, Check check) const;

    std::vector<ByteSet> m_sets;
    std::string m_literal;  // when every set has one byte
    bool m_isLiteral = false;
    std::optional<Anchor> m_first, m_second;  // the rarest two, or one of them twice
};

class SegmentMatcher {
public:
    // None when the pattern is of another kind.
    static std::optional<SegmentMatcher> of(const PosixPattern& pattern);

    // Of texts that may match.
    ByteSet firstBytes() const;
    // True for texts that cannot match, by their first bytes.
    bool refusesStart(const char* text) const {
        const PatternSegment& first = m_segments.front();
        return m_startsAtTextStart && !first.empty() && !first.startsText(text);
    }
    bool search(std::string_view text, std::size_t* start, std::size_t* end) const {
        std::size_t from = 0;
        std::size_t to = 0;
        const bool isFound = m_segments.size() == 1 ? searchOne(text, from, to)
                                                    : searchSeveral(text, from, to, end != nullptr);
        if (isFound && start) *start = from;
        if (isFound && end) *end = to;
        return isFound;
    }

private:
    bool searchOne(std::string_view text, std::size_t& start, std::size_t& end) const;
    bool searchSeveral(std::string_view text, std::size_t& start, std::size_t& end,
                       bool wantsEnd) const;

    std::vector<PatternSegment> m_segments;  // at least one; any bytes between two of them
    bool m_startsAtTextStart = false;
    bool m_endsAtTextEnd = false;
};
