// A pattern as the instructions of a nondeterministic automaton.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "text/posixpattern.h"

struct PatternProgram {
    enum class Operation : std::uint8_t { kSet, kSplit, kTextStart, kTextEnd, kMatch };
    struct Instruction {
        Operation operation;
        std::uint32_t next;   // what follows, behind a byte of the set for `kSet`
        std::uint32_t other;  // number of the set; the second way of a split
    };
    enum class Direction { kForward, kBackward };

    // The pattern has no back references and outlives the program. `kBackward` reads texts from
    // their end; start and end of the text then have changed places.
    PatternProgram(const PosixPattern& pattern, Direction direction);

    const std::vector<ByteSet>& sets;
    std::vector<Instruction> code;
    std::uint32_t entry = 0;
    // Steps over any bytes before it goes to `entry`.
    std::uint32_t searchEntry = 0;
    std::uint32_t searchLoop = 0;  // the instruction that steps
    std::uint32_t anyByte = 0;     // its set, which `sets` need not have: the number behind them

    // Bytes that no set tells apart belong to one class.
    std::array<std::uint8_t, 256> classOf{};
    std::vector<unsigned char> classes;  // a byte of each

    bool accepts(const Instruction& instruction, unsigned char byte) const {
        return instruction.other == anyByte || sets[instruction.other].contains(byte);
    }

private:
    void divideIntoClasses();
};
