#include "text/ztools_sys.h"

#include "sv/string.h"

// Of code page 1252, which the others resemble enough for this machine's programs.
char16_t codePageCharacter(char byte) {
    static constexpr char16_t kUpper[] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    };
    const auto index = static_cast<unsigned char>(byte);
    return index >= 0x80 && index <= 0x9F ? kUpper[index - 0x80] : index;
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
