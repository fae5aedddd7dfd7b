// The usual formats of log entries, several times faster than the run-time library.

#pragma once

#include <cstdarg>
#include <cstddef>
#include <optional>
#include <span>

// What `vsnprintf` writes for `format`, without the NUL; nothing when there is not enough room or
// the format has anything but these conversions, without flags, width or precision:
// %d %i %u (also with l, ll), %zu, %s, %c, %%. The argument of %s must not be null, else: nothing.
std::optional<std::size_t> formatPlain(std::span<char> out, const char* format, std::va_list args);
