#include "source.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>
#include <utility>

#include "sv/ascii.h"
#include "utf8.h"
#include "sv/codepage1252.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::uint32_t kHighestId = 0xFFFF;

struct Escape {
    char letter;
    char byte;
};
constexpr Escape kEscapes[] = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'"', '"'}, {'\\', '\\'}};

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string hexadecimal(const char* format, unsigned long number) {
    char text[24];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

std::string nameOf(char32_t character) {
    return hexadecimal("U+%04lX", static_cast<unsigned long>(character));
}

std::string escapeOf(char byte) {
    return hexadecimal("\\x%02lX", static_cast<unsigned char>(byte));
}

class Parser {
public:
    explicit Parser(std::string_view content) : m_content(content) {}

    Source parse() {
        if (m_content.starts_with(kByteOrderMark)) m_at = kByteOrderMark.size();
        while (m_at < m_content.size()) {
            ++m_number;
            const std::size_t end = std::min(m_content.find('\n', m_at), m_content.size());
            m_start = m_at;
            const bool hasReturn = end > m_at && m_content[end - 1] == '\r';
            m_end = hasReturn ? end - 1 : end;
            parseLine();
            m_at = end + 1;
        }
        return std::move(m_source);
    }

private:
    void parseLine() {
        skipBlanks();
        if (isAtEnd()) return;
        const std::optional<std::uint16_t> id = parseId();
        if (!id) return;
        skipBlanks();
        if (!take('=')) return error("expected \"=\" behind the id");
        skipBlanks();
        if (!take('"')) return error("expected a text in double quotes behind \"=\"");
        std::string text;
        if (!parseText(text)) return;
        skipBlanks();
        if (!isAtEnd()) return error("unexpected characters behind the closing quote");
        m_source.texts.push_back({*id, std::move(text)});
    }

    // The id, or 0 for one that was reported but behind which the line can be read on.
    std::optional<std::uint16_t> parseId() {
        const std::size_t start = m_at;
        while (m_at < m_end && SV::IsAsciiDigit(m_content[m_at])) ++m_at;
        const std::string_view digits = m_content.substr(start, m_at - start);
        if (digits.empty()) {
            error("expected an id (a decimal number) at the start of the line");
            return std::nullopt;
        }
        std::uint32_t id = 0;
        const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), id);
        if (fault != std::errc() || id > kHighestId) {
            error("id " + std::string(digits) + " is above 65535");
            return 0;
        }
        if (id == 0) {
            error("id 0 cannot be used: it is what a look-up answers when it finds nothing");
            return 0;
        }
        std::size_t& line = m_lineOfId[id];
        if (line != 0) {
            error("id " + std::to_string(id) + " has a text already, on line " +
                  std::to_string(line));
        } else {
            line = m_number;
        }
        return static_cast<std::uint16_t>(id);
    }

    // Up to and with the closing quote. False when the line cannot be read on.
    bool parseText(std::string& text) {
        const std::size_t errors = m_source.errors.size();
        while (m_at < m_end && m_content[m_at] != '"') {
            if (!parseCharacter(text)) return false;
        }
        if (!take('"')) {
            error("the closing quote is missing");
            return false;
        }
        if (text.empty() && errors == m_source.errors.size()) {
            error("the text is empty: a record without text would end the file");
        }
        return true;
    }

    bool parseCharacter(std::string& text) {
        if (take('\\')) {
            parseEscape(text);
            return true;
        }
        const Decoded decoded = decodeUtf8(m_content.substr(m_at, m_end - m_at));
        if (decoded.size == 0) {
            error("invalid UTF-8 at byte " + std::to_string(m_at - m_start + 1) +
                  " of the line (byte " + std::to_string(m_at) + " of the file)");
            return false;
        }
        m_at += decoded.size;
        const std::optional<char> byte = SV::CharacterToCodePage1252(decoded.character);
        if (!byte) {
            error("code page 1252 has no " + nameOf(decoded.character));
        } else if (decoded.character < ' ' && *byte != '\t') {
            error("control character " + nameOf(decoded.character) + ": write it as " +
                  escapeOf(*byte));
        } else {
            text += *byte;
        }
        return true;
    }

    void parseEscape(std::string& text) {
        if (take('x')) {
            const char* const digits = m_content.data() + m_at;
            const std::size_t size = std::min<std::size_t>(2, m_end - m_at);
            unsigned char byte = 0;
            const auto [end, fault] = std::from_chars(digits, digits + size, byte, 16);
            if (fault != std::errc() || end != digits + 2) {
                return error("\\x needs two hexadecimal digits");
            }
            m_at += 2;
            text += static_cast<char>(byte);
            return;
        }
        const char letter = m_at < m_end ? m_content[m_at] : '\0';
        const auto escape = std::ranges::find(kEscapes, letter, &Escape::letter);
        if (escape == std::end(kEscapes)) {
            return error("unknown escape: there are \\n \\r \\t \\\" \\\\ and \\xHH");
        }
        ++m_at;
        text += escape->byte;
    }

    void skipBlanks() {
        while (m_at < m_end && isBlank(m_content[m_at])) ++m_at;
    }
    bool isAtEnd() const { return m_at >= m_end || m_content[m_at] == '#'; }
    bool take(char c) {
        if (m_at >= m_end || m_content[m_at] != c) return false;
        ++m_at;
        return true;
    }
    void error(std::string message) { m_source.errors.push_back({m_number, std::move(message)}); }

    std::string_view m_content;
    std::size_t m_at = 0;
    std::size_t m_start = 0;  // of the line
    std::size_t m_end = 0;
    std::size_t m_number = 0;
    std::vector<std::size_t> m_lineOfId = std::vector<std::size_t>(kHighestId + 1);  // 0: none yet
    Source m_source;
};

// Characters that would not be seen, or not be told apart from a blank.
bool isInvisible(char32_t character) {
    return character < ' ' || character == 0x7F || character == 0xA0 || character == 0xAD;
}

void appendSourceCharacter(std::string& line, char byte) {
    const auto escape = std::ranges::find(kEscapes, byte, &Escape::byte);
    if (escape != std::end(kEscapes)) {
        line += '\\';
        line += escape->letter;
        return;
    }
    const std::optional<char32_t> character =
        SV::CodePage1252ToCharacter(static_cast<unsigned char>(byte));
    if (!character || isInvisible(*character)) {
        line += escapeOf(byte);
    } else {
        appendUtf8(line, *character);
    }
}

}  // namespace

Source parseSource(std::string_view content) { return Parser(content).parse(); }

std::string sourceLine(std::uint16_t id, std::string_view text) {
    std::string line = std::to_string(id) + " = \"";
    for (const char byte : text) appendSourceCharacter(line, byte);
    return line + '"';
}
