#include <algorithm>

#include "diag/comparetext.h"
#include "sv/ascii.h"

bool isEqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, SV::ToAsciiLower, SV::ToAsciiLower);
}
