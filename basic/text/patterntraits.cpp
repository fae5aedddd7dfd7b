#include "text/patterntraits.h"

#include <algorithm>

namespace {

using Kind = PatternNode::Kind;
constexpr std::size_t kNoLimit = PatternTraits::kNoLimit;

std::size_t sum(std::size_t a, std::size_t b) { return a > kNoLimit - b ? kNoLimit : a + b; }

std::size_t product(std::size_t a, std::size_t b) {
    if (a == 0 || b == 0) return 0;
    return a > kNoLimit / b ? kNoLimit : a * b;
}

ByteSet joined(ByteSet a, const ByteSet& b) {
    a.add(b);
    return a;
}

PatternTraits inSequence(const PatternTraits& a, const PatternTraits& b) {
    PatternTraits both;
    both.isNullable = a.isNullable && b.isNullable;
    both.isAmbiguous = a.isAmbiguous || b.isAmbiguous || a.follow.intersects(b.first) ||
                       (a.isNullable && a.first.intersects(b.first));
    both.mayStopEarly = b.mayStopEarly || (b.isNullable && a.mayStopEarly);
    both.startsAtTextStart = a.startsAtTextStart || (a.maxLength == 0 && b.startsAtTextStart);
    both.first = a.isNullable ? joined(a.first, b.first) : a.first;
    both.follow = b.isNullable ? joined(joined(a.follow, b.follow), b.first) : b.follow;
    both.minLength = sum(a.minLength, b.minLength);
    both.maxLength = sum(a.maxLength, b.maxLength);
    both.elements = sum(a.elements, b.elements);
    both.branches = std::max(a.branches, b.branches);
    both.ways = product(a.ways, b.ways);
    return both;
}

PatternTraits asAlternatives(const PatternTraits& a, const PatternTraits& b) {
    PatternTraits either;
    either.isNullable = a.isNullable || b.isNullable;
    either.isAmbiguous = a.isAmbiguous || b.isAmbiguous || a.first.intersects(b.first);
    either.mayStopEarly = a.mayStopEarly || b.mayStopEarly || a.isNullable;
    either.startsAtTextStart = a.startsAtTextStart && b.startsAtTextStart;
    either.first = joined(a.first, b.first);
    either.follow = joined(a.follow, b.follow);
    either.minLength = std::min(a.minLength, b.minLength);
    either.maxLength = std::max(a.maxLength, b.maxLength);
    either.elements = sum(sum(a.elements, b.elements), 1);
    either.branches = sum(a.branches, b.branches);
    either.ways = sum(a.ways, b.ways);
    return either;
}

std::size_t waysThroughRounds(std::size_t waysOfOne, std::int32_t min, std::int32_t max) {
    if (max == PatternNode::kUnlimited) return kNoLimit;
    std::size_t ways = 0;
    std::size_t waysOfRounds = 1;
    for (std::int32_t rounds = 0; rounds <= max; ++rounds) {
        if (rounds >= min) ways = sum(ways, waysOfRounds);
        waysOfRounds = product(waysOfRounds, waysOfOne);
    }
    return ways;
}

PatternTraits repeated(const PatternTraits& one, std::int32_t min, std::int32_t max) {
    if (max == 0) return {};
    const bool isUnlimited = max == PatternNode::kUnlimited;
    const bool isOnce = max == 1;
    PatternTraits all = one;
    all.isNullable = min == 0 || one.isNullable;
    all.isAmbiguous =
        one.isAmbiguous || (!isOnce && (one.isNullable || one.follow.intersects(one.first)));
    all.startsAtTextStart = min > 0 && one.startsAtTextStart;
    if (!isOnce && min != max) all.follow.add(one.first);
    all.minLength = product(one.minLength, static_cast<std::size_t>(min));
    all.maxLength = product(one.maxLength, isUnlimited ? kNoLimit : static_cast<std::size_t>(max));
    const std::int32_t copies = isUnlimited ? std::max(min, 1) : max;
    all.elements = product(sum(one.elements, 1), static_cast<std::size_t>(copies));
    all.ways = waysThroughRounds(one.ways, min, max);
    return all;
}

PatternTraits ofSet(const ByteSet& set) {
    PatternTraits traits;
    traits.isNullable = false;
    traits.first = set;
    traits.minLength = traits.maxLength = traits.elements = 1;
    return traits;
}

// Any text at all.
PatternTraits ofBackReference() {
    PatternTraits traits;
    traits.isAmbiguous = true;
    traits.first = traits.follow = ByteSet::all();
    traits.maxLength = kNoLimit;
    return traits;
}

class Walk {
public:
    explicit Walk(const PosixPattern& pattern) : m_pattern(pattern) {}

    PatternTraits of(const PatternNode& node) const {
        switch (node.kind) {
            case Kind::kSet:
                return ofSet(m_pattern.sets[static_cast<std::size_t>(node.number)]);
            case Kind::kTextStart:
            case Kind::kTextEnd:
                return ofAnchor(node.kind);
            case Kind::kSequence:
                return ofSequence(node);
            case Kind::kAlternatives:
                return ofAlternatives(node);
            case Kind::kRepeat:
                return repeated(of(node.children[0]), node.min, node.max);
            case Kind::kGroup:
                return of(node.children[0]);
            case Kind::kBackReference:
                break;
        }
        return ofBackReference();
    }

private:
    static PatternTraits ofAnchor(Kind kind) {
        PatternTraits traits;
        traits.elements = 1;
        traits.startsAtTextStart = kind == Kind::kTextStart;
        return traits;
    }

    PatternTraits ofSequence(const PatternNode& node) const {
        PatternTraits all;
        for (const PatternNode& child : node.children) all = inSequence(all, of(child));
        return all;
    }

    PatternTraits ofAlternatives(const PatternNode& node) const {
        PatternTraits all = of(node.children[0]);
        for (std::size_t i = 1; i < node.children.size(); ++i) {
            all = asAlternatives(all, of(node.children[i]));
        }
        return all;
    }

    const PosixPattern& m_pattern;
};

}  // namespace

PatternTraits traitsOf(const PosixPattern& pattern) { return Walk(pattern).of(pattern.root); }
