#include "text/segmentmatcher.h"

#include <span>
#include <utility>

namespace {

using Kind = PatternNode::Kind;
using Nodes = std::span<const PatternNode>;

// Longer repetitions of one set are no fixed piece any more.
constexpr std::int32_t kMaxCopies = 255;

Nodes partsOf(const PatternNode& root) {
    if (root.kind == Kind::kSequence) return root.children;
    return {&root, 1};
}

const ByteSet* setOf(const PosixPattern& pattern, const PatternNode& node) {
    if (node.kind != Kind::kSet) return nullptr;
    return &pattern.sets[static_cast<std::size_t>(node.number)];
}

// Adds the node to the last of the pieces, or begins a new one; false when it is none of that kind.
bool addPart(const PosixPattern& pattern, const PatternNode& node,
             std::vector<std::vector<ByteSet>>& pieces) {
    if (const ByteSet* const set = setOf(pattern, node)) {
        pieces.back().push_back(*set);
        return true;
    }
    if (node.kind != Kind::kRepeat) return false;
    const ByteSet* const set = setOf(pattern, node.children[0]);
    if (!set || node.min > kMaxCopies) return false;
    const bool isGap = *set == ByteSet::all() && node.max == PatternNode::kUnlimited;
    if (!isGap && node.min != node.max) return false;
    pieces.back().insert(pieces.back().end(), static_cast<std::size_t>(node.min), *set);
    if (isGap) pieces.emplace_back();
    return true;
}

}  // namespace

std::optional<SegmentMatcher> SegmentMatcher::of(const PosixPattern& pattern) {
    SegmentMatcher matcher;
    Nodes parts = partsOf(pattern.root);
    if (!parts.empty() && parts.front().kind == Kind::kTextStart) {
        matcher.m_startsAtTextStart = true;
        parts = parts.subspan(1);
    }
    if (!parts.empty() && parts.back().kind == Kind::kTextEnd) {
        matcher.m_endsAtTextEnd = true;
        parts = parts.first(parts.size() - 1);
    }
    std::vector<std::vector<ByteSet>> pieces(1);
    for (const PatternNode& part : parts) {
        if (!addPart(pattern, part, pieces)) return std::nullopt;
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        // Of several gaps in a row one is enough.
        const bool isWithin = i > 0 && i + 1 < pieces.size();
        if (isWithin && pieces[i].empty()) continue;
        matcher.m_segments.emplace_back(std::move(pieces[i]));
    }
    return matcher;
}

ByteSet SegmentMatcher::firstBytes() const {
    const PatternSegment& first = m_segments.front();
    if (!m_startsAtTextStart || first.empty()) return ByteSet::all();
    ByteSet bytes = first.firstBytes();
    bytes.remove('\0');
    return bytes;
}

bool SegmentMatcher::searchOne(std::string_view text, std::size_t& start, std::size_t& end) const {
    const PatternSegment& segment = m_segments[0];
    if (segment.size() > text.size()) return false;
    if (m_startsAtTextStart || m_endsAtTextEnd) {
        start = m_startsAtTextStart ? 0 : text.size() - segment.size();
        if (m_endsAtTextEnd && start + segment.size() != text.size()) return false;
        if (!segment.matchesAt(text.data() + start)) return false;
    } else {
        start = segment.find(text, 0);
    }
    end = start + segment.size();
    return start != std::string_view::npos;
}

// Each segment as early as it can be, so that those behind it have the most room; the last one as
// late, for the longest match. A start that fails leaves no chance to a later one.
bool SegmentMatcher::searchSeveral(std::string_view text, std::size_t& start, std::size_t& end,
                                   bool wantsEnd) const {
    constexpr std::size_t kNone = std::string_view::npos;
    const PatternSegment& first = m_segments.front();
    const PatternSegment& last = m_segments.back();
    if (first.size() > text.size()) return false;
    start = 0;
    if (!m_startsAtTextStart) {
        start = first.find(text, 0);
        if (start == kNone) return false;
    } else if (!first.matchesAt(text.data())) {
        return false;
    }
    std::size_t pos = start + first.size();
    for (std::size_t i = 1; i + 1 < m_segments.size(); ++i) {
        pos = m_segments[i].find(text, pos);
        if (pos == kNone) return false;
        pos += m_segments[i].size();
    }
    if (m_endsAtTextEnd) {
        end = text.size();
        return pos + last.size() <= end && last.matchesAt(text.data() + end - last.size());
    }
    end = wantsEnd ? last.findLast(text, pos) : last.find(text, pos);
    if (end == kNone) return false;
    end += last.size();
    return true;
}
