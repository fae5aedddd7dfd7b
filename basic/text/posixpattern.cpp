#include "text/posixpattern.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "text/bytekinds.h"

namespace {

using Kind = PatternNode::Kind;

constexpr int kMaxBound = 255;  // RE_DUP_MAX
// Repetitions of one piece that do not come to a single one, as in `a{3}{1,2}`.
constexpr int kMaxStackedRepeats = 4;

struct Bounds {
    std::int32_t min;
    std::int32_t max;
};

// The bounds that say the same as `inner` repeated by `outer`; none when there are gaps between
// what k and k + 1 rounds reach, as there are in `(a{3}){1,2}`.
std::optional<Bounds> joined(Bounds inner, Bounds outer) {
    constexpr std::int32_t kUnlimited = PatternNode::kUnlimited;
    const bool isOneCount = outer.min == outer.max;
    const bool hasNoGaps = inner.max == kUnlimited
                               ? outer.min >= 1 || inner.min <= 1
                               : inner.min - 1 <= outer.min * (inner.max - inner.min);
    if (!isOneCount && !hasNoGaps) return std::nullopt;
    if (inner.max == 0 || outer.max == 0) return Bounds{0, 0};
    const bool isUnlimited = inner.max == kUnlimited || outer.max == kUnlimited;
    return Bounds{inner.min * outer.min, isUnlimited ? kUnlimited : inner.max * outer.max};
}

class Parser {
public:
    Parser(std::string_view pattern, bool keepGroups, PosixPattern& result)
        : m_rest(pattern), m_keepsGroups(keepGroups), m_result(result) {}

    ZelRegExError parse() {
        if (const ZelRegExError error = parseAlternatives(m_result.root, 0)) return error;
        return m_rest.empty() ? 0 : REG_EPAREN;  // only an unmatched ) stops before the end
    }

private:
    bool isAt(char c) const { return !m_rest.empty() && m_rest[0] == c; }
    bool isAtRepetition() const { return isAt('*') || isAt('+') || isAt('?') || isAt('{'); }
    char take() {
        const char c = m_rest[0];
        m_rest.remove_prefix(1);
        return c;
    }

    ZelRegExError parseAlternatives(PatternNode& node, int depth) {
        PatternNode alternatives;
        alternatives.kind = Kind::kAlternatives;
        do {
            PatternNode branch;
            if (const ZelRegExError error = parseSequence(branch, depth)) return error;
            alternatives.children.push_back(std::move(branch));
        } while (isAt('|') && take());
        if (alternatives.children.size() == 1) {
            node = std::move(alternatives.children[0]);
        } else if (std::ranges::all_of(alternatives.children, isSet)) {
            ByteSet all;
            for (const PatternNode& child : alternatives.children) all.add(setOf(child));
            setNode(node, all);
        } else {
            node = std::move(alternatives);
        }
        return 0;
    }

    static bool isSet(const PatternNode& node) { return node.kind == Kind::kSet; }
    const ByteSet& setOf(const PatternNode& node) const {
        return m_result.sets[static_cast<std::size_t>(node.number)];
    }

    ZelRegExError parseSequence(PatternNode& node, int depth) {
        while (!m_rest.empty() && !isAt('|') && !isAt(')')) {
            PatternNode piece;
            if (const ZelRegExError error = parsePiece(piece, depth)) return error;
            node.children.push_back(std::move(piece));
        }
        if (node.children.size() == 1) node = PatternNode(std::move(node.children[0]));
        return 0;
    }

    ZelRegExError parsePiece(PatternNode& node, int depth) {
        if (isAt('^') || isAt('$')) {
            node.kind = take() == '^' ? Kind::kTextStart : Kind::kTextEnd;
            return 0;  // a repetition behind it is met by the next piece, which has nothing then
        }
        if (const ZelRegExError error = parseAtom(node, depth)) return error;
        int stacked = 0;
        while (isAtRepetition()) {
            Bounds bounds{};
            if (const ZelRegExError error = parseBounds(bounds)) return error;
            if (const ZelRegExError error = repeat(node, bounds, stacked)) return error;
        }
        return 0;
    }

    ZelRegExError parseAtom(PatternNode& node, int depth) {
        if (isAtRepetition()) return REG_BADRPT;
        const char c = take();
        ByteSet set;
        switch (c) {
            case '(':
                return parseGroup(node, depth + 1);
            case '\\':
                return parseEscape(node);
            case '.':
                set = ByteSet::all();
                break;
            case '[':
                if (const auto error = parseBracket(m_rest, m_result.ignoresCase, set))
                    return error;
                break;
            default:
                set = bytesLike(c);
                break;
        }
        setNode(node, set);
        return 0;
    }

    ByteSet bytesLike(char c) const {
        ByteSet set;
        set.add(static_cast<unsigned char>(c));
        return m_result.ignoresCase ? withOtherCase(set) : set;
    }

    void setNode(PatternNode& node, const ByteSet& set) {
        const auto [at, isNew] =
            m_setNumbers.try_emplace(set, static_cast<std::int32_t>(m_result.sets.size()));
        if (isNew) m_result.sets.push_back(set);
        node.kind = Kind::kSet;
        node.number = at->second;
    }

    ZelRegExError parseGroup(PatternNode& node, int depth) {
        if (depth > kMaxPatternDepth) return REG_ESPACE;
        const auto number = static_cast<std::int32_t>(m_isClosed.size());
        m_isClosed.push_back(false);
        PatternNode content;
        if (const ZelRegExError error = parseAlternatives(content, depth)) return error;
        if (!isAt(')')) return REG_EPAREN;
        take();
        m_isClosed[static_cast<std::size_t>(number)] = true;
        if (m_keepsGroups) {
            node.kind = Kind::kGroup;
            node.number = number + 1;
            node.children.push_back(std::move(content));
        } else {
            node = std::move(content);
        }
        return 0;
    }

    ZelRegExError parseEscape(PatternNode& node) {
        if (m_rest.empty()) return REG_EESCAPE;
        const char c = take();
        if (c < '1' || c > '9') {
            setNode(node, bytesLike(c));
            return 0;
        }
        const auto group = static_cast<std::size_t>(c - '1');
        if (group >= m_isClosed.size() || !m_isClosed[group]) return REG_ESUBREG;
        node.kind = Kind::kBackReference;
        node.number = c - '0';
        m_result.hasBackReferences = true;
        return 0;
    }

    ZelRegExError parseBounds(Bounds& bounds) {
        switch (take()) {
            case '*':
                bounds = {0, PatternNode::kUnlimited};
                return 0;
            case '+':
                bounds = {1, PatternNode::kUnlimited};
                return 0;
            case '?':
                bounds = {0, 1};
                return 0;
            default:
                return parseInterval(bounds);
        }
    }

    // Behind `{`.
    ZelRegExError parseInterval(Bounds& bounds) {
        const std::optional<std::int32_t> min = parseNumber();
        if (m_rest.empty()) return REG_EBRACE;
        if (!min && !isAt(',')) return REG_BADBR;
        bounds = {min.value_or(0), min.value_or(0)};
        if (isAt(',')) {
            take();
            bounds.max = parseNumber().value_or(PatternNode::kUnlimited);
        }
        if (m_rest.empty()) return REG_EBRACE;
        if (take() != '}' || bounds.min > kMaxBound || bounds.max > kMaxBound) return REG_BADBR;
        const bool isLimited = bounds.max != PatternNode::kUnlimited;
        return isLimited && bounds.max < bounds.min ? REG_BADBR : 0;
    }

    // Anything too large is as good as `kMaxBound + 1`.
    std::optional<std::int32_t> parseNumber() {
        std::optional<std::int32_t> number;
        while (!m_rest.empty() && m_rest[0] >= '0' && m_rest[0] <= '9') {
            number = std::min(number.value_or(0) * 10 + (take() - '0'), kMaxBound + 1);
        }
        return number;
    }

    static ZelRegExError repeat(PatternNode& node, Bounds bounds, int& stacked) {
        if (node.kind == Kind::kRepeat) {
            if (const auto both = joined({node.min, node.max}, bounds)) {
                if (std::max(both->min, both->max) > PatternNode::kMaxRepeat) return REG_ESPACE;
                node.min = both->min;
                node.max = both->max;
                return 0;
            }
        }
        if (++stacked > kMaxStackedRepeats) return REG_ESPACE;
        PatternNode outer;
        outer.kind = Kind::kRepeat;
        outer.min = bounds.min;
        outer.max = bounds.max;
        outer.children.push_back(std::move(node));
        node = std::move(outer);
        return 0;
    }

    std::string_view m_rest;
    const bool m_keepsGroups;
    PosixPattern& m_result;
    std::map<ByteSet, std::int32_t> m_setNumbers;
    std::vector<bool> m_isClosed;  // a group each, in the order of their opening parentheses
};

}  // namespace

ZelRegExError parsePosixPattern(std::string_view pattern, bool ignoreCase, PosixPattern& result) {
    for (const bool keepGroups : {false, true}) {
        result = {};
        result.ignoresCase = ignoreCase;
        if (const ZelRegExError error = Parser(pattern, keepGroups, result).parse()) return error;
        if (!result.hasBackReferences) return 0;
    }
    return 0;
}
