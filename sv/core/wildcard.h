// Names with "*" and "?".

#pragma once

#include <string_view>

namespace SV {

// Whether "*" for any text and "?" for any character make `pattern` into `name`; bytes are
// compared as they are.
bool matchesWildcard(std::string_view pattern, std::string_view name);

}  // namespace SV
