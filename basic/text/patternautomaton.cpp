#include "text/patternautomaton.h"

#include <algorithm>
#include <utility>

namespace {

using Operation = PatternProgram::Operation;

constexpr std::size_t kMaxMemory = std::size_t{4} << 20;
constexpr std::size_t kStateOverhead = 128;

}  // namespace

std::size_t PatternAutomaton::ThreadsHash::operator()(const Threads& threads) const {
    std::uint64_t hash = threads.size();
    for (const std::uint32_t thread : threads) {
        hash = (hash ^ thread) * 0x9E37'79B9'7F4A'7C15;
        hash ^= hash >> 32;
    }
    return hash;
}

PatternAutomaton::PatternAutomaton(const PosixPattern& pattern, PatternProgram::Direction direction)
    : m_program(pattern, direction),
      m_width(m_program.classes.size()),
      m_seen(m_program.code.size(), 0) {
    forget();
}

bool PatternAutomaton::contains(std::string_view text, Window* window) {
    Entry state = startState(true, Place::kTextStart);
    bool isFound = stateOf(state).isMatch;
    std::size_t pos = 0;
    std::size_t lastRest = 0;  // no match that was found has begun before
    if (m_firstPairs.empty()) findFirstPairs();
    while (!isFound && pos < text.size()) {
        if (state == m_rest) {
            const std::size_t from = pos;
            pos = skipToPair(text, pos);
            if (pos != from) lastRest = pos;  // whatever was under way ended here
        }
        state = run(state, text, pos, m_rest);
        isFound = (state & kMark) != 0;  // a search is never dead
    }
    if (!isFound && !stateOf(state).isMatchAtEnd) return false;
    if (!window) return true;
    // The leftmost match has begun by now, if it is not this one, so nothing may begin any more.
    if (isFound) state = withoutSearch(state);
    while (pos < text.size() && state != kDead) state = run(state, text, pos, kDead);
    *window = {lastRest, pos};
    return true;
}

std::size_t PatternAutomaton::longestEnd(std::string_view text, std::size_t start) {
    Entry state = startState(false, start == 0 ? Place::kTextStart : Place::kWithin);
    std::size_t end = stateOf(state).isMatch ? start : kNone;
    for (std::size_t pos = start; pos < text.size();) {
        state = run(state, text, pos, kDead);
        if (state == kDead) return end;
        if (state & kMark) end = pos;
    }
    return stateOf(state).isMatchAtEnd ? text.size() : end;
}

std::size_t PatternAutomaton::leftmostStart(std::string_view text, Window window) {
    const bool isWhole = window.end == text.size();
    Entry state = startState(true, isWhole ? Place::kTextStart : Place::kWithin);
    std::size_t start = stateOf(state).isMatch ? window.end : kNone;
    for (std::size_t pos = window.end; pos > window.start;) {
        state = next(state, text[--pos]);
        if (state & kMark) start = pos;
    }
    return window.start == 0 && stateOf(state).isMatchAtEnd ? 0 : start;
}

PatternAutomaton::Entry PatternAutomaton::startState(bool isSearch, Place place) {
    Entry& start = m_starts[isSearch][place == Place::kWithin];
    if (start != kUnknown) return start;
    Threads threads;
    beginSet();
    follow(threads, isSearch ? m_program.searchEntry : m_program.entry, place == Place::kTextStart,
           false);
    std::ranges::sort(threads);
    // What is known of a set does not hold at the start of the text, where ^ matches.
    start = place == Place::kWithin ? stateFor(threads) : addState(threads, place);
    return start;
}

PatternAutomaton::Entry PatternAutomaton::withoutSearch(Entry state) {
    Threads threads = stateOf(state).threads;
    std::erase(threads, m_program.searchLoop);
    return stateFor(threads);
}

PatternAutomaton::Entry PatternAutomaton::run(Entry state, std::string_view text, std::size_t& pos,
                                              Entry stop) {
    const std::uint8_t* const classOf = m_program.classOf.data();
    const Entry* const table = m_table.data();
    const char* at = text.data() + pos;
    const char* const end = text.data() + text.size();
    Entry row = state & ~kMark;
    Entry entry = row;
    do {
        const std::uint8_t column = classOf[static_cast<unsigned char>(*at++)];
        entry = table[row + column];
        if (entry & kMark) {
            if (entry == kUnknown) entry = makeTransition(row, column);
            break;  // the table may have moved
        }
        row = entry;
    } while (at != end && entry != stop);
    pos = static_cast<std::size_t>(at - text.data());
    return entry;
}

void PatternAutomaton::findFirstPairs() {
    m_firstPairs.assign(256, {});
    const Threads atRest = stateOf(m_rest).threads;
    for (const unsigned char first : m_program.classes) {
        Threads behind;
        beginSet();
        for (const std::uint32_t thread : atRest) {
            const auto& instruction = m_program.code[thread];
            const bool isStep = instruction.operation == Operation::kSet &&
                                thread != m_program.searchLoop &&
                                m_program.accepts(instruction, first);
            if (isStep) follow(behind, instruction.next, false, false);
        }
        if (behind.empty()) continue;
        const ByteSet seconds = secondBytes(behind);
        for (std::size_t byte = 0; byte < 256; ++byte) {
            if (m_program.classOf[byte] == m_program.classOf[first]) m_firstPairs[byte] = seconds;
        }
    }
}

// Bytes that do not end all of the threads. Where a match may end already any byte will do.
ByteSet PatternAutomaton::secondBytes(const Threads& threads) const {
    ByteSet bytes;
    for (const std::uint32_t thread : threads) {
        const auto& [operation, next, set] = m_program.code[thread];
        if (operation != Operation::kSet || set == m_program.anyByte) return ByteSet::all();
        bytes.add(m_program.sets[set]);
    }
    return bytes;
}

// The last byte is nowhere skipped: it has no second one.
std::size_t PatternAutomaton::skipToPair(std::string_view text, std::size_t pos) const {
    const ByteSet* const pairs = m_firstPairs.data();
    auto first = static_cast<unsigned char>(text[pos]);
    for (; pos + 1 < text.size(); ++pos) {
        const auto second = static_cast<unsigned char>(text[pos + 1]);
        if (pairs[first].contains(second)) break;
        first = second;
    }
    return pos;
}

PatternAutomaton::Entry PatternAutomaton::makeTransition(Entry row, std::uint8_t column) {
    const unsigned char byte = m_program.classes[column];
    Threads threads;
    beginSet();
    for (const std::uint32_t thread : stateOf(row).threads) {
        const auto& instruction = m_program.code[thread];
        if (instruction.operation == Operation::kSet && m_program.accepts(instruction, byte)) {
            follow(threads, instruction.next, false, false);
        }
    }
    std::ranges::sort(threads);
    if (m_memory > kMaxMemory) {
        forget();
        return stateFor(threads);
    }
    const Entry entry = stateFor(threads);
    m_table[row + column] = entry;
    return entry;
}

PatternAutomaton::Entry PatternAutomaton::stateFor(const Threads& threads) {
    if (threads.empty()) return kDead;
    const auto known = m_known.find(threads);
    if (known != m_known.end()) return known->second;
    const Entry entry = addState(threads, Place::kWithin);
    m_known.emplace(threads, entry);
    m_memory += threads.size() * sizeof(std::uint32_t);
    return entry;
}

PatternAutomaton::Entry PatternAutomaton::addState(const Threads& threads, Place place) {
    State state;
    state.threads = threads;
    for (const std::uint32_t thread : threads) {
        if (m_program.code[thread].operation == Operation::kMatch) state.isMatch = true;
    }
    state.isMatchAtEnd = state.isMatch || matchesAtEnd(threads, place);
    const auto row = static_cast<Entry>(m_states.size() * m_width);
    m_table.resize(m_table.size() + m_width, kUnknown);
    m_memory += m_width * sizeof(Entry) + threads.size() * sizeof(std::uint32_t) + kStateOverhead;
    const Entry entry = state.isMatch ? row | kMark : row;
    m_states.push_back(std::move(state));
    return entry;
}

void PatternAutomaton::forget() {
    m_known.clear();
    m_table.assign(m_width, kDead);
    m_states.assign(1, {});
    m_memory = 0;
    for (auto& starts : m_starts) std::ranges::fill(starts, kUnknown);
    m_rest = startState(true, Place::kWithin);
}

void PatternAutomaton::beginSet() {
    if (++m_setNumber == 0) {  // once in four thousand million sets
        std::ranges::fill(m_seen, 0U);
        m_setNumber = 1;
    }
}

void PatternAutomaton::follow(Threads& threads, std::uint32_t instruction, bool isTextStart,
                              bool isTextEnd) {
    m_stack.assign(1, instruction);
    while (!m_stack.empty()) {
        const std::uint32_t at = m_stack.back();
        m_stack.pop_back();
        if (m_seen[at] == m_setNumber) continue;
        m_seen[at] = m_setNumber;
        const auto& [operation, next, other] = m_program.code[at];
        const bool isPassed = (operation == Operation::kTextStart && isTextStart) ||
                              (operation == Operation::kTextEnd && isTextEnd);
        if (operation == Operation::kSplit) {
            m_stack.push_back(other);
            m_stack.push_back(next);
        } else if (isPassed) {
            m_stack.push_back(next);
        } else if (operation != Operation::kTextStart) {
            threads.push_back(at);
        }
    }
}

bool PatternAutomaton::matchesAtEnd(const Threads& threads, Place place) {
    Threads reached;
    beginSet();
    for (const std::uint32_t thread : threads) {
        if (m_program.code[thread].operation != Operation::kTextEnd) continue;
        follow(reached, thread, place == Place::kTextStart, true);
    }
    return std::ranges::any_of(reached, [this](std::uint32_t thread) {
        return m_program.code[thread].operation == Operation::kMatch;
    });
}
