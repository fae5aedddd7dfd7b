#include "time/localeitem.h"

#include <string>

#include <windows.h>

SV::String localeItem(unsigned long locale, unsigned long item) {
    const int size = ::GetLocaleInfoA(locale, item, nullptr, 0);
    if (size <= 0) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    const int got = ::GetLocaleInfoA(locale, item, text.data(), size);
    if (got <= 0) return {};
    text.resize(static_cast<std::size_t>(got) - 1);  // less the closing NUL
    return SV::String(text);
}
