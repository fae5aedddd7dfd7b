#include "model/encoding.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "sv/codepage1252.h"

namespace zelhost {

namespace {

// HTML 4.01 section 24.2, U+00A0 to U+00FF in order.
constexpr const char* kLatin1Names[] = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",
    "copy",   "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn",
    "sup2",   "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",
    "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde",
    "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave",
    "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde",
    "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",
    "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil",
    "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",
    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};
static_assert(std::size(kLatin1Names) == 96);

// HTML 4.01 section 24.4 and, for the two Z, the ISO set of Latin 2.
struct NamedCharacter {
    const char* name;
    char32_t character;
};
constexpr NamedCharacter kOtherNames[] = {
    {"amp", U'&'},      {"lt", U'<'},       {"gt", U'>'},       {"quot", U'"'},
    {"apos", U'\''},    {"euro", 0x20AC},   {"sbquo", 0x201A},  {"fnof", 0x0192},
    {"bdquo", 0x201E},  {"hellip", 0x2026}, {"dagger", 0x2020}, {"Dagger", 0x2021},
    {"circ", 0x02C6},   {"permil", 0x2030}, {"Scaron", 0x0160}, {"lsaquo", 0x2039},
    {"OElig", 0x0152},  {"Zcaron", 0x017D}, {"lsquo", 0x2018},  {"rsquo", 0x2019},
    {"ldquo", 0x201C},  {"rdquo", 0x201D},  {"bull", 0x2022},   {"ndash", 0x2013},
    {"mdash", 0x2014},  {"tilde", 0x02DC},  {"trade", 0x2122},  {"scaron", 0x0161},
    {"rsaquo", 0x203A}, {"oelig", 0x0153},  {"zcaron", 0x017E}, {"Yuml", 0x0178}};

constexpr std::size_t kLongestEntity = 12;  // "&#x0010FFFF;", white space is no part of one

std::optional<char32_t> numericReference(std::string_view digits) {
    int base = 10;
    if (digits.starts_with('x') || digits.starts_with('X')) {
        base = 16;
        digits.remove_prefix(1);
    }
    std::uint32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (error != std::errc() || stop != end || value == 0 || value > 0x10FFFF || isSurrogate) {
        return std::nullopt;
    }
    return value;
}

std::optional<char32_t> namedEntity(std::string_view name) {
    const auto latin1 = std::ranges::find(kLatin1Names, name);
    if (latin1 != std::end(kLatin1Names)) {
        return static_cast<char32_t>(0xA0 + (latin1 - std::begin(kLatin1Names)));
    }
    const auto other = std::ranges::find(kOtherNames, name, &NamedCharacter::name);
    return other != std::end(kOtherNames) ? std::optional(other->character) : std::nullopt;
}

// `text` begins with "&": the character and the size of what stands for it.
std::optional<DecodedCharacter> entityAt(std::string_view text) {
    const std::size_t end = text.substr(0, kLongestEntity).find(';');
    if (end == text.npos || end < 2) return std::nullopt;
    const std::string_view body = text.substr(1, end - 1);
    const auto found = body[0] == '#' ? numericReference(body.substr(1)) : namedEntity(body);
    if (!found) return std::nullopt;
    return DecodedCharacter{*found, end + 1};
}

}  // namespace

void appendUtf8(std::string& text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    const auto putRest = [&](int shift) { put(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | (character >> 6));
        putRest(0);
    } else if (character < 0x10000) {
        put(0xE0 | (character >> 12));
        putRest(6);
        putRest(0);
    } else {
        put(0xF0 | (character >> 18));
        putRest(12);
        putRest(6);
        putRest(0);
    }
}

DecodedCharacter decodeUtf8(std::string_view utf8) {
    const unsigned char lead = static_cast<unsigned char>(utf8[0]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t character = lead & (0xFFu >> (size + 1));
    for (std::size_t i = 1; i < size && i < utf8.size(); ++i) {
        character = (character << 6) | (static_cast<unsigned char>(utf8[i]) & 0x3F);
    }
    return {character, std::min(size, utf8.size())};
}

void decodeEntities(std::string_view text, Encoding encoding, std::string& utf8) {
    utf8.clear();
    while (!text.empty()) {
        const unsigned char byte = static_cast<unsigned char>(text[0]);
        if (byte == '&') {
            if (const auto entity = entityAt(text)) {
                appendUtf8(utf8, entity->character);
                text.remove_prefix(entity->size);
                continue;
            }
        }
        if (byte < 0x80 || encoding == Encoding::utf8) {
            utf8 += text[0];
        } else {
            // A byte without a character is the control character of its number.
            appendUtf8(utf8, SV::CodePage1252ToCharacter(byte).value_or(byte));
        }
        text.remove_prefix(1);
    }
}

// The Unicode Standard, table 3-7: well-formed byte sequences.
bool Utf8Validator::acceptLead(unsigned char byte) {
    m_lowest = 0x80;
    m_highest = 0xBF;
    if (byte < 0x80) return true;
    if (byte < 0xC2 || byte > 0xF4) return false;
    m_pending = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    if (byte == 0xE0) m_lowest = 0xA0;
    if (byte == 0xED) m_highest = 0x9F;
    if (byte == 0xF0) m_lowest = 0x90;
    if (byte == 0xF4) m_highest = 0x8F;
    return true;
}

bool Utf8Validator::accept(std::string_view bytes) {
    for (const char c : bytes) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (!m_isValid) return false;
        if (m_pending == 0) {
            m_isValid = acceptLead(byte);
        } else {
            m_isValid = byte >= m_lowest && byte <= m_highest;
            --m_pending;
            m_lowest = 0x80;
            m_highest = 0xBF;
        }
    }
    return m_isValid;
}

}  // namespace zelhost
