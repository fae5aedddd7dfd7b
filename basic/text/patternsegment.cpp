#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "text/segmentmatcher.h"

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// How often a byte is met in usual text, roughly.
int rankOf(unsigned char byte) {
    constexpr std::string_view kFrequent = " etaoinsr";
    if (kFrequent.find(static_cast<char>(byte)) != std::string_view::npos) return 3;
    if (byte >= 'a' && byte <= 'z') return 2;
    return byte >= 0x20 && byte < 0x7F ? 1 : 0;
}

// At or behind `at` by 0 to 15: the bytes that fit the anchor.
__m128i fits(const char* at, char mask, char value) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    return _mm_cmpeq_epi8(_mm_or_si128(bytes, _mm_set1_epi8(mask)), _mm_set1_epi8(value));
}

}  // namespace

PatternSegment::PatternSegment(std::vector<ByteSet> sets) : m_sets(std::move(sets)) {
    m_isLiteral = std::ranges::all_of(m_sets, [](const ByteSet& set) { return set.size() == 1; });
    if (m_isLiteral) {
        for (const ByteSet& set : m_sets) {
            set.forEach([this](unsigned char byte) { m_literal += static_cast<char>(byte); });
        }
    }
    chooseAnchors();
}

void PatternSegment::chooseAnchors() {
    for (std::size_t i = 0; i < m_sets.size(); ++i) {
        const int size = m_sets[i].size();
        if (size == 0 || size > 2) continue;
        Anchor anchor{i, 0, 0, 0};
        int both = 0xFF;
        int any = 0;
        m_sets[i].forEach([&](unsigned char byte) {
            both &= byte;
            any |= byte;
            anchor.rank = std::max(anchor.rank, rankOf(byte));
        });
        anchor.mask = static_cast<char>(both ^ any);
        anchor.value = static_cast<char>(any);
        if (!m_first || anchor.rank < m_first->rank) {
            m_second = std::exchange(m_first, anchor);
        } else if (!m_second || anchor.rank < m_second->rank) {
            m_second = anchor;
        }
    }
    if (!m_second) m_second = m_first;
}

bool PatternSegment::matchesRest(const char* text) const {
    if (m_isLiteral) return std::memcmp(text, m_literal.data(), m_literal.size()) == 0;
    for (const ByteSet& set : m_sets) {
        if (!set.contains(static_cast<unsigned char>(*text++))) return false;
    }
    return true;
}

bool PatternSegment::startsText(const char* text) const {
    for (const ByteSet& set : m_sets) {
        if (*text == '\0' || !set.contains(static_cast<unsigned char>(*text++))) return false;
    }
    return true;
}

// Looks at 64 or 16 places at a time for both anchors.
template <class Check>
std::size_t PatternSegment::scan(std::string_view text, std::size_t from, Check check) const {
    constexpr std::size_t kStep = 16;
    constexpr std::size_t kRound = 4 * kStep;
    const std::size_t places = text.size() - size() + 1;
    const Anchor first = *m_first;
    const Anchor second = *m_second;
    const auto hitsAt = [&](std::size_t pos) -> std::uint64_t {
        const char* const at = text.data() + pos;
        const __m128i both = _mm_and_si128(fits(at + first.offset, first.mask, first.value),
                                           fits(at + second.offset, second.mask, second.value));
        return static_cast<unsigned>(_mm_movemask_epi8(both));
    };
    const auto checkHits = [&](std::size_t pos, std::uint64_t hits) {
        for (; hits != 0; hits &= hits - 1) {
            const std::size_t hit = pos + static_cast<std::size_t>(std::countr_zero(hits));
            if (check(text.data() + hit)) return hit;
        }
        return kNone;
    };
    std::size_t pos = from;
    for (; pos + kRound <= places; pos += kRound) {
        // One branch: in which of the blocks a hit is cannot be guessed.
        const std::size_t hit = checkHits(pos, hitsAt(pos) | hitsAt(pos + kStep) << kStep |
                                                   hitsAt(pos + 2 * kStep) << 2 * kStep |
                                                   hitsAt(pos + 3 * kStep) << 3 * kStep);
        if (hit != kNone) return hit;
    }
    for (; pos + kStep <= places; pos += kStep) {
        const std::size_t hit = checkHits(pos, hitsAt(pos));
        if (hit != kNone) return hit;
    }
    if (pos == places) return kNone;
    if (places - from >= kStep) {
        return checkHits(places - kStep, hitsAt(places - kStep));  // some of them a second time
    }
    for (; pos < places; ++pos) {
        if (check(text.data() + pos)) return pos;
    }
    return kNone;
}

std::size_t PatternSegment::find(std::string_view text, std::size_t from) const {
    if (from + size() > text.size()) return kNone;
    if (m_sets.empty()) return from;
    if (m_first) return scan(text, from, [this](const char* at) { return matchesAt(at); });
    for (std::size_t pos = from; pos + size() <= text.size(); ++pos) {
        if (matchesAt(text.data() + pos)) return pos;
    }
    return kNone;
}

std::size_t PatternSegment::findLast(std::string_view text, std::size_t from) const {
    if (from + size() > text.size()) return kNone;
    for (std::size_t pos = text.size() - size() + 1; pos-- > from;) {
        if (matchesAt(text.data() + pos)) return pos;
    }
    return kNone;
}
