// A pattern as a deterministic automaton that is made while it runs.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/patternprogram.h"

// States are sets of instructions of the program, and are kept with their transitions once a text
// has led to them, in at most a few megabytes; then it forgets them all and begins again. So a
// byte costs a look into a table when it is usual, and a walk through the pattern at worst.
class PatternAutomaton {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // The pattern outlives the automaton.
    PatternAutomaton(const PosixPattern& pattern, PatternProgram::Direction direction);

    // Of a text: every match with the leftmost start lies within.
    struct Window {
        std::size_t start;
        std::size_t end;
    };

    // Forward: whether the pattern matches anywhere. The window, when asked for, is written then.
    bool contains(std::string_view text, Window* window);
    // Forward: end of the longest match that starts at `start`, or `kNone`.
    std::size_t longestEnd(std::string_view text, std::size_t start);
    // Backward: start of the leftmost match within the window, or `kNone`.
    std::size_t leftmostStart(std::string_view text, Window window);

private:
    // Of a transition table: the offset of a state's row, and a mark for what a loop must look at:
    // a state that matches, the dead one, or a transition that is not known yet.
    using Entry = std::uint32_t;
    using Threads = std::vector<std::uint32_t>;  // instructions, ascending

    struct State {
        Threads threads;
        bool isMatch = false;
        bool isMatchAtEnd = false;
    };
    struct ThreadsHash {
        std::size_t operator()(const Threads& threads) const;
    };
    enum class Place { kTextStart, kWithin };

    static constexpr Entry kMark = 0x8000'0000;
    static constexpr Entry kUnknown = 0xFFFF'FFFF;
    static constexpr Entry kDead = kMark;  // the first row

    Entry next(Entry state, char byte) {
        const std::uint8_t column = m_program.classOf[static_cast<unsigned char>(byte)];
        const Entry entry = m_table[(state & ~kMark) + column];
        return entry == kUnknown ? makeTransition(state & ~kMark, column) : entry;
    }
    // Reads bytes from `pos` on, at least one, until the state is marked or `stop`.
    Entry run(Entry state, std::string_view text, std::size_t& pos, Entry stop);
    const State& stateOf(Entry entry) const { return m_states[(entry & ~kMark) / m_width]; }

    Entry startState(bool isSearch, Place place);
    Entry withoutSearch(Entry state);
    void findFirstPairs();
    ByteSet secondBytes(const Threads& threads) const;
    std::size_t skipToPair(std::string_view text, std::size_t pos) const;
    Entry makeTransition(Entry row, std::uint8_t column);
    Entry stateFor(const Threads& threads);
    Entry addState(const Threads& threads, Place place);
    void forget();

    // Adds what is reached from the instruction without reading a byte.
    void follow(Threads& threads, std::uint32_t instruction, bool isTextStart, bool isTextEnd);
    void beginSet();
    bool matchesAtEnd(const Threads& threads, Place place);

    const PatternProgram m_program;
    const std::size_t m_width;  // of a row
    std::vector<Entry> m_table;
    std::vector<State> m_states;
    std::unordered_map<Threads, Entry, ThreadsHash> m_known;
    std::size_t m_memory = 0;
    Entry m_starts[2][2];  // by `isSearch` and place; `kUnknown` until needed
    Entry m_rest = 0;      // the one of a search within the text: no match has begun
    // Two bytes that lead from there to more than back there: by the first, the second ones. Empty
    // until needed.
    std::vector<ByteSet> m_firstPairs;

    std::vector<std::uint32_t> m_seen;  // by instruction: the set it was last added to
    std::uint32_t m_setNumber = 0;
    Threads m_stack;
};
