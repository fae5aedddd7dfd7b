// Conversions between UTF-8, single characters, code page 1252 and SGML entities.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelhost {

// How the bytes of a text file are to be read; plain ASCII counts as UTF-8.
enum class Encoding { utf8, codePage1252 };

void appendUtf8(std::string& text, char32_t character);

struct DecodedCharacter {
    char32_t character;
    std::size_t size;  // in bytes
};

// The character at the start of `utf8`, which is valid and not empty.
DecodedCharacter decodeUtf8(std::string_view utf8);

// Text in `encoding` with its entities replaced, as UTF-8 into `utf8`: the named ones of
// ISO 8859-1 and of code page 1252, `&apos;`, and `&#228;` or `&#xE4;` of every character but
// NUL. What only looks like an entity stays as it is.
void decodeEntities(std::string_view text, Encoding encoding, std::string& utf8);

// Checks a byte sequence piece by piece.
class Utf8Validator {
public:
    // False, and it stays so, once what came so far cannot be UTF-8.
    bool accept(std::string_view bytes);
    bool isInCharacter() const { return m_pending != 0; }

private:
    bool acceptLead(unsigned char byte);

    int m_pending = 0;  // continuation bytes that are still to come
    unsigned char m_lowest = 0x80;
    unsigned char m_highest = 0xBF;  // range of the next one
    bool m_isValid = true;
};

}  // namespace zelhost
