#include "text/patternprogram.h"

namespace {

using Kind = PatternNode::Kind;
using Operation = PatternProgram::Operation;
using Direction = PatternProgram::Direction;

// Writes nodes from the last to the first, so that each knows what follows it.
class Writer {
public:
    Writer(std::vector<PatternProgram::Instruction>& code, Direction direction)
        : m_code(code), m_direction(direction) {}

    std::uint32_t add(Operation operation, std::uint32_t next, std::uint32_t other = 0) {
        m_code.push_back({operation, next, other});
        return static_cast<std::uint32_t>(m_code.size() - 1);
    }

    // The entry of the node's code, which goes on at `next`.
    std::uint32_t write(const PatternNode& node, std::uint32_t next) {
        const bool isForward = m_direction == Direction::kForward;
        switch (node.kind) {
            case Kind::kSet:
                return add(Operation::kSet, next, static_cast<std::uint32_t>(node.number));
            case Kind::kTextStart:
                return add(isForward ? Operation::kTextStart : Operation::kTextEnd, next);
            case Kind::kTextEnd:
                return add(isForward ? Operation::kTextEnd : Operation::kTextStart, next);
            case Kind::kAlternatives:
                return writeAlternatives(node, next);
            case Kind::kRepeat:
                return writeRepeat(node, next);
            default:
                return writeSequence(node, next);
        }
    }

private:
    std::uint32_t writeSequence(const PatternNode& node, std::uint32_t next) {
        const std::size_t count = node.children.size();
        for (std::size_t i = 0; i < count; ++i) {
            const bool isForward = m_direction == Direction::kForward;
            next = write(node.children[isForward ? count - 1 - i : i], next);
        }
        return next;
    }

    std::uint32_t writeAlternatives(const PatternNode& node, std::uint32_t next) {
        std::uint32_t entry = write(node.children.back(), next);
        for (std::size_t i = node.children.size() - 1; i-- > 0;) {
            entry = add(Operation::kSplit, write(node.children[i], next), entry);
        }
        return entry;
    }

    std::uint32_t writeRepeat(const PatternNode& node, std::uint32_t next) {
        const PatternNode& child = node.children[0];
        std::uint32_t entry = next;
        if (node.max == PatternNode::kUnlimited) {
            entry = add(Operation::kSplit, 0, next);
            const std::uint32_t round = write(child, entry);
            m_code[entry].next = round;
        } else {
            for (std::int32_t i = node.min; i < node.max; ++i) {
                entry = add(Operation::kSplit, write(child, entry), next);
            }
        }
        for (std::int32_t i = 0; i < node.min; ++i) entry = write(child, entry);
        return entry;
    }

    std::vector<PatternProgram::Instruction>& m_code;
    const Direction m_direction;
};

}  // namespace

PatternProgram::PatternProgram(const PosixPattern& pattern, Direction direction)
    : sets(pattern.sets), anyByte(static_cast<std::uint32_t>(pattern.sets.size())) {
    Writer writer(code, direction);
    entry = writer.write(pattern.root, writer.add(Operation::kMatch, 0));
    searchEntry = writer.add(Operation::kSplit, entry);
    searchLoop = writer.add(Operation::kSet, searchEntry, anyByte);
    code[searchEntry].other = searchLoop;

    divideIntoClasses();
}

// Each set divides the classes that there are into bytes that it has and those that it lacks.
void PatternProgram::divideIntoClasses() {
    constexpr int kNone = -1;
    int count = 1;
    for (const ByteSet& set : sets) {
        std::array<std::array<int, 2>, 256> parts;
        for (auto& part : parts) part.fill(kNone);
        count = 0;
        for (std::size_t byte = 0; byte < classOf.size(); ++byte) {
            int& number = parts[classOf[byte]][set.contains(static_cast<unsigned char>(byte))];
            if (number == kNone) number = count++;
            classOf[byte] = static_cast<std::uint8_t>(number);
        }
        if (count == static_cast<int>(classOf.size())) break;
    }
    classes.resize(static_cast<std::size_t>(count));
    for (std::size_t byte = 0; byte < classOf.size(); ++byte) {
        classes[classOf[byte]] = static_cast<unsigned char>(byte);
    }
}
