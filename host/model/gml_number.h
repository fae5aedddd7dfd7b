// The numbers of GML.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zelhost {

struct GmlNumber {
    enum class Kind { none, integer, real };

    Kind kind = Kind::none;
    std::int64_t integer = 0;  // of an `integer`
};

// What a word, which is not empty, is as a number. Whole numbers beyond 64 bits are reals.
//
//     +7  integer      -.5  1.  1e5  real      .  1e  1,5  none
GmlNumber readGmlNumber(std::string_view word);

// A real with a point and a signed exponent where it has an exponent ("1e5": "1.0e+5"): readers
// that take the grammar at its word know no other.
std::string strictSpelling(std::string_view real);

}  // namespace zelhost
