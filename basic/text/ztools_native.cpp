#include "text/ztools_sys.h"

#include "sv/codepage1252.h"
#include "sv/string.h"

// Of code page 1252, which the others resemble enough for this machine's programs.
char16_t codePageCharacter(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return static_cast<char16_t>(SV::CodePage1252ToCharacter(number).value_or(number));
}

bool isUpperLetter(char c) { return SV::String(&c, 1).Lower()[0] != c; }

bool isLetter(char c) { return isUpperLetter(c) || SV::String(&c, 1).Upper()[0] != c; }

// By bytes, where a locale would have its rules.
Order orderIgnoringCase(const char* a, const char* b) {
    if (!a || !b) return Order::kFailed;
    const auto order = SV::String(a).Lower() <=> SV::String(b).Lower();
    return order < 0 ? Order::kLess : order > 0 ? Order::kGreater : Order::kEqual;
}

char decimalSeparator() { return '.'; }
