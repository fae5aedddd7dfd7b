// Checks UTF-8.

#pragma once

#include <cstddef>
#include <string_view>

struct Utf8Prefix {
    std::size_t size;       // of the longest start that is whole characters of UTF-8
    bool isAscii;           // that start holds nothing else
    bool isCharacterBegun;  // what follows it is the beginning of one more, cut off by the end
};

// By RFC 3629, section 4.
Utf8Prefix utf8Prefix(std::string_view text);
