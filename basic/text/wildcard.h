// Wildcard patterns as POSIX extended regular expressions.

#pragma once

#include <string>
#include <string_view>

// Flags of `ZelJokerz`.
constexpr int kWildcardIgnoreCase = 1;
constexpr int kWildcardAnywhere = 2;
constexpr int kWildcardWholeWords = 4;  // goes before `kWildcardAnywhere`

std::string expressionOfWildcard(std::string_view pattern, int flags);
