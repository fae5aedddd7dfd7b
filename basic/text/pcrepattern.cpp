#include "text/pcrepattern.h"

#include <optional>

#include "text/bytekinds.h"

namespace {

using Kind = PatternNode::Kind;

// Letters and digits stand for themselves, any other byte is written by number.
void appendByte(std::string& out, unsigned char byte) {
    constexpr char kHexDigits[] = "0123456789abcdef";
    const bool isAlnum = (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
                         (byte >= 'A' && byte <= 'Z');
    if (isAlnum) {
        out += static_cast<char>(byte);
    } else {
        out += {'\\', 'x', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    }
}

class PcreWriter {
public:
    explicit PcreWriter(const PosixPattern& pattern) : m_pattern(pattern) {}

    std::string write() {
        write(m_pattern.root);
        return std::move(m_out);
    }

private:
    void write(const PatternNode& node) {
        switch (node.kind) {
            case Kind::kSet:
                return writeSet(m_pattern.sets[static_cast<std::size_t>(node.number)]);
            case Kind::kTextStart:
                m_out += '^';
                return;
            case Kind::kTextEnd:
                m_out += '$';
                return;
            case Kind::kSequence:
                for (const PatternNode& child : node.children) writePart(child);
                return;
            case Kind::kAlternatives:
                return writeAlternatives(node);
            case Kind::kRepeat:
                return writeRepeat(node);
            case Kind::kGroup:
                return writeGroup("(", node.children[0]);
            case Kind::kBackReference:
                m_out += "\\g{" + std::to_string(node.number) + "}";
                return;
        }
    }

    // The byte that stands for the set: the only one, or with letters of both cases either.
    std::optional<unsigned char> onlyByte(const ByteSet& set) const {
        if (set.size() > 2) return std::nullopt;
        std::optional<unsigned char> byte;
        set.forEach([&](unsigned char member) { byte = member; });
        if (!byte) return std::nullopt;
        ByteSet like;
        like.add(*byte);
        if (m_pattern.ignoresCase) like = withOtherCase(like);
        return like == set ? byte : std::nullopt;
    }

    void writeSet(const ByteSet& set) {
        if (set == ByteSet::all()) {
            m_out += '.';
        } else if (set == ByteSet()) {
            m_out += "(?!)";  // nothing matches
        } else if (const auto byte = onlyByte(set)) {
            appendByte(m_out, *byte);
        } else {
            writeRanges(set);
        }
    }

    void writeRanges(const ByteSet& set) {
        m_out += '[';
        for (int first = 0; first < 256; ++first) {
            if (!set.contains(static_cast<unsigned char>(first))) continue;
            int last = first;
            while (last < 255 && set.contains(static_cast<unsigned char>(last + 1))) ++last;
            appendByte(m_out, static_cast<unsigned char>(first));
            m_out += '-';
            appendByte(m_out, static_cast<unsigned char>(last));
            first = last;
        }
        m_out += ']';
    }

    void writeGroup(std::string_view opening, const PatternNode& content) {
        m_out += opening;
        write(content);
        m_out += ')';
    }

    // A part of a sequence.
    void writePart(const PatternNode& node) {
        if (node.kind == Kind::kAlternatives) {
            writeGroup("(?:", node);
        } else {
            write(node);
        }
    }

    void writeAlternatives(const PatternNode& node) {
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            if (i > 0) m_out += '|';
            write(node.children[i]);
        }
    }

    void writeRepeat(const PatternNode& node) {
        const PatternNode& child = node.children[0];
        if (child.kind == Kind::kSet || child.kind == Kind::kGroup) {
            write(child);
        } else {
            writeGroup("(?:", child);
        }
        const bool isUnlimited = node.max == PatternNode::kUnlimited;
        m_out += '{' + std::to_string(node.min) + ',';
        if (!isUnlimited) m_out += std::to_string(node.max);
        m_out += '}';
    }

    const PosixPattern& m_pattern;
    std::string m_out;
};

}  // namespace

std::string pcrePattern(const PosixPattern& pattern) { return PcreWriter(pattern).write(); }
