#include "diag/format.h"

#include <cstdarg>
#include <cstdio>
#include <string>

SV::String formatted(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int size = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return SV::String(text);
}
