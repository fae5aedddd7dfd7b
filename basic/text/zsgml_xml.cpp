// XML character data.

#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "text/bytescan.h"
#include "zbasic/zsgml.h"
#include "zbasic/ztools.h"

namespace {

// What becomes of a byte. With its size it fills a machine word, so that it is written by one
// store.
struct Piece {
    char text[7];
    unsigned char size;
};

Piece pieceOf(std::string_view text) {
    Piece piece{};
    std::memcpy(piece.text, text.data(), text.size());
    piece.size = static_cast<unsigned char>(text.size());
    return piece;
}

Piece pieceOf(char c, bool checkControlRange) {
    // The control range check passes what is below 32; XML does not hold it.
    if (!Zel_IsValidXMLChar(c, true, checkControlRange)) return {};
    if (c == '\0' || !Zel_IsValidXMLChar(c, true, false)) return {};
    switch (c) {
        case '<':
            return pieceOf("&lt;");
        case '>':
            return pieceOf("&gt;");
        case '&':
            return pieceOf("&amp;");
        case '"':
            return pieceOf("&quot;");
        case '\x80':
            return pieceOf("&#8364;");
        default:
            break;
    }
    if (c > 0 && c < 32) return pieceOf("&#" + std::to_string(c) + ";");
    return pieceOf(std::string_view(&c, 1));
}

class XmlBytes {
public:
    explicit XmlBytes(bool checkControlRange) {
        for (std::size_t byte = 0; byte < m_pieces.size(); ++byte) {
            const char c = static_cast<char>(byte);
            m_pieces[byte] = pieceOf(c, checkControlRange);
            m_isChanged[byte] = m_pieces[byte].size != 1;  // every reference is longer
        }
    }

    __m128i operator()(__m128i bytes) const {
        const __m128i controls =
            _mm_or_si128(isInRange(bytes, 0, 31), isInRange(bytes, 0x7F, 0x9F));
        return _mm_or_si128(controls, isMarkup(bytes));
    }
    bool operator()(char byte) const { return m_isChanged[static_cast<unsigned char>(byte)]; }

    // Writes what becomes of the byte, and rubbish behind it up to a whole `Piece`.
    char* put(char* to, char byte) const {
        const Piece& piece = m_pieces[static_cast<unsigned char>(byte)];
        std::memcpy(to, &piece, sizeof piece);
        return to + piece.size;
    }

private:
    std::array<Piece, 256> m_pieces;
    std::array<bool, 256> m_isChanged;
};

// Appends by the buffer, as each call of `SV::String::append` costs more than a piece.
class BufferedText {
public:
    static constexpr std::ptrdiff_t kRoom = 16 * sizeof(Piece);  // is there after `makeRoom`

    explicit BufferedText(std::size_t expected) {
        if (expected > kSize) m_text.reserve(expected);
    }

    char* makeRoom(char* to) {
        if (m_buffer + sizeof m_buffer - to >= kRoom) return to;
        m_text.append(m_buffer, static_cast<std::size_t>(to - m_buffer));
        return m_buffer;
    }
    char* begin() { return m_buffer; }
    SV::String finish(const char* to) {
        return std::move(m_text.append(m_buffer, static_cast<std::size_t>(to - m_buffer)));
    }

private:
    static constexpr std::size_t kSize = 4096;

    SV::String m_text;
    char m_buffer[kSize];
};

struct Escaped {
    SV::String text;
    bool isAscii;
};

// Each step copies 16 bytes, and goes on behind the first of them that is to be replaced.
Escaped escaped(const SV::String& text, const XmlBytes& bytes) {
    constexpr std::ptrdiff_t kStep = sizeof(__m128i);
    BufferedText out(text.size() + text.size() / 8);
    char* to = out.begin();
    int upper = 0;
    const char* at = text.begin();
    while (text.end() - at >= kStep) {
        to = out.makeRoom(to);
        const __m128i step = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), step);
        upper |= _mm_movemask_epi8(step);
        const auto hits = static_cast<unsigned>(_mm_movemask_epi8(bytes(step)));
        const int clean = hits ? std::countr_zero(hits) : static_cast<int>(kStep);
        at += clean;
        to += clean;
        if (hits) to = bytes.put(to, *at++);
    }
    to = out.makeRoom(to);
    for (; at != text.end(); ++at) {
        upper |= *at & 0x80;
        to = bytes.put(to, *at);
    }
    return {out.finish(to), upper == 0};
}

}  // namespace

SV::String ZelSGMLString::XMLStr(const SV::String& text, bool checkControlRange) {
    static const XmlBytes kBytes[] = {XmlBytes(false), XmlBytes(true)};
    const XmlBytes& bytes = kBytes[checkControlRange];
    if (findByte(text.begin(), text.end(), bytes) == text.end()) {
        return SV::ConvertStringToUTF8String(text);
    }
    Escaped escapedText = escaped(text, bytes);
    if (escapedText.isAscii) return std::move(escapedText.text);
    return SV::ConvertStringToUTF8String(escapedText.text);
}
