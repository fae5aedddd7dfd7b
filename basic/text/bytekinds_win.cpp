#include "text/bytekinds.h"

#include <windows.h>

namespace {

using Characters = std::array<wchar_t, 256>;

// 0 for bytes that are no character by themselves.
Characters charactersOfBytes() {
    Characters characters{};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const char byte = static_cast<char>(i);
        ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &byte, 1, &characters[i], 1);
    }
    return characters;
}

void addKinds(ByteKinds& kinds, unsigned char byte, WORD type) {
    const auto addIf = [&](ByteSet& set, WORD bit) {
        if (type & bit) set.add(byte);
    };
    addIf(kinds.upper, C1_UPPER);
    addIf(kinds.lower, C1_LOWER);
    addIf(kinds.alpha, C1_ALPHA);
    addIf(kinds.digit, C1_DIGIT);
    addIf(kinds.xdigit, C1_XDIGIT);
    addIf(kinds.space, C1_SPACE);
    addIf(kinds.blank, C1_BLANK);
    addIf(kinds.punct, C1_PUNCT);
    addIf(kinds.cntrl, C1_CNTRL);
}

wchar_t mapped(wchar_t character, DWORD mapping) {
    wchar_t result = character;
    ::LCMapStringW(LOCALE_INVARIANT, mapping, &character, 1, &result, 1);
    return result;
}

wchar_t inOtherCase(wchar_t character) {
    const wchar_t upper = mapped(character, LCMAP_UPPERCASE);
    return upper != character ? upper : mapped(character, LCMAP_LOWERCASE);
}

// Only pairs count in which each letter is the other one's: the Greek capital that belongs to the
// micro sign is not in code page 1252, for one.
unsigned char otherCaseOf(const Characters& characters, std::size_t index) {
    const auto byte = static_cast<unsigned char>(index);
    const wchar_t other = inOtherCase(characters[index]);
    if (characters[index] == 0 || inOtherCase(other) != characters[index]) return byte;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (characters[i] == other) return static_cast<unsigned char>(i);
    }
    return byte;
}

ByteKinds askSystem() {
    ByteKinds kinds{};
    const Characters characters = charactersOfBytes();
    for (std::size_t i = 0; i < characters.size(); ++i) {
        WORD type = 0;
        if (i == 0 || characters[i] != 0) ::GetStringTypeW(CT_CTYPE1, &characters[i], 1, &type);
        addKinds(kinds, static_cast<unsigned char>(i), type);
        kinds.otherCase[i] = otherCaseOf(characters, i);
    }
    return kinds;
}

}  // namespace

const ByteKinds& byteKinds() {
    static const ByteKinds kinds = askSystem();
    return kinds;
}
