// A pattern in PCRE2's own language.

#pragma once

#include <string>

#include "text/posixpattern.h"

// For PCRE2_DOTALL, PCRE2_DOLLAR_ENDONLY, and PCRE2_CASELESS when the pattern ignores case.
std::string pcrePattern(const PosixPattern& pattern);
