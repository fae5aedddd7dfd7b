// XML character data.

#include <array>
#include <cstring>
#include <string>

#include "text/bytescan.h"
#include "zbasic/zsgml.h"
#include "zbasic/ztools.h"

namespace {

// What becomes of a byte; at most seven bytes, in one machine word with their number.
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

    std::string_view piece(char byte) const {
        const Piece& piece = m_pieces[static_cast<unsigned char>(byte)];
        return {piece.text, piece.size};
    }

private:
    std::array<Piece, 256> m_pieces;
    std::array<bool, 256> m_isChanged;
};

SV::String escaped(const SV::String& text, const XmlBytes& bytes) {
    const char* at = findByte(text.begin(), text.end(), bytes);
    if (at == text.end()) return text;
    SV::String out;
    out.reserve(text.size() + text.size() / 8 + 16);
    for (const char* from = text.begin();; at = findByte(from, text.end(), bytes)) {
        out.append(from, static_cast<std::size_t>(at - from));
        if (at == text.end()) return out;
        out.append(bytes.piece(*at));
        from = at + 1;
    }
}

}  // namespace

SV::String ZelSGMLString::XMLStr(const SV::String& text, bool checkControlRange) {
    static const XmlBytes kBytes[] = {XmlBytes(false), XmlBytes(true)};
    return SV::ConvertStringToUTF8String(escaped(text, kBytes[checkControlRange]));
}
