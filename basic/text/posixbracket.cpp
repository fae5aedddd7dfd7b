#include <optional>

#include "text/bytekinds.h"
#include "text/posixpattern.h"

namespace {

class BracketParser {
public:
    BracketParser(std::string_view rest) : m_rest(rest) {}

    ZelRegExError parse(ByteSet& result) {
        for (bool isFirst = true; isFirst || !startsWith("]"); isFirst = false) {
            if (m_rest.empty()) return REG_EBRACK;
            if (const ZelRegExError error = parseItem(isFirst, result)) return error;
        }
        m_rest.remove_prefix(1);
        return 0;
    }

    std::string_view rest() const { return m_rest; }

private:
    bool startsWith(std::string_view text) const { return m_rest.substr(0, text.size()) == text; }

    // A class, a character, or a range of them.
    ZelRegExError parseItem(bool isFirst, ByteSet& result) {
        if (startsWith("[:")) return parseClass(result);
        // A hyphen that stands for itself comes first, last, or at the end of a range.
        if (!isFirst && startsWith("-") && !startsWith("-]")) return REG_ERANGE;
        unsigned char first = 0;
        if (const ZelRegExError error = parseCharacter(first)) return error;
        unsigned char last = first;
        if (startsWith("-") && !startsWith("-]")) {
            m_rest.remove_prefix(1);
            if (startsWith("[:")) return REG_ERANGE;
            if (const ZelRegExError error = parseCharacter(last)) return error;
            if (last < first) return REG_ERANGE;
        }
        for (int byte = first; byte <= last; ++byte) result.add(static_cast<unsigned char>(byte));
        return 0;
    }

    ZelRegExError parseClass(ByteSet& result) {
        std::string_view name;
        if (const ZelRegExError error = takeNamed(":]", name)) return error;
        const std::optional<ByteSet> members = byteClass(name);
        if (!members) return REG_ECTYPE;
        result.add(*members);
        return 0;
    }

    ZelRegExError parseCharacter(unsigned char& byte) {
        if (m_rest.empty()) return REG_EBRACK;
        std::string_view name = m_rest.substr(0, 1);
        if (startsWith("[.") || startsWith("[=")) {
            const char end[] = {m_rest[1], ']'};
            if (const ZelRegExError error = takeNamed({end, 2}, name)) return error;
            if (name.size() != 1) return REG_ECOLLATE;
        } else {
            m_rest.remove_prefix(1);
        }
        byte = static_cast<unsigned char>(name[0]);
        return 0;
    }

    // What stands between "[:" and ":]" and their like.
    ZelRegExError takeNamed(std::string_view end, std::string_view& name) {
        // From the second byte on: "[.].]" and "[...]" name the characters "]" and ".".
        const std::size_t size = m_rest.find(end, end == ":]" ? 2 : 3);
        if (size == std::string_view::npos) return REG_EBRACK;
        name = m_rest.substr(2, size - 2);
        m_rest.remove_prefix(size + end.size());
        return 0;
    }

    std::string_view m_rest;
};

}  // namespace

ByteSet withOtherCase(const ByteSet& set) {
    ByteSet result = set;
    set.forEach([&](unsigned char byte) { result.add(byteKinds().otherCase[byte]); });
    return result;
}

ZelRegExError parseBracket(std::string_view& rest, bool ignoreCase, ByteSet& result) {
    const bool isNegated = rest.substr(0, 1) == "^";
    if (isNegated) rest.remove_prefix(1);
    BracketParser parser(rest);
    if (const ZelRegExError error = parser.parse(result)) return error;
    if (ignoreCase) result = withOtherCase(result);
    if (isNegated) result.invert();
    rest = parser.rest();
    return 0;
}
