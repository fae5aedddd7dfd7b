// What the bytes of the system's ANSI code page are: letters, punctuation, cases.

#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "text/byteset.h"

// Sets are those of the C run-time library's functions of that name under the locale ".ACP".
struct ByteKinds {
    ByteSet upper, lower, alpha, digit, xdigit, space, blank, punct, cntrl;
    // The same letter in the other case; the byte itself where there is none in the code page.
    std::array<unsigned char, 256> otherCase;
};

// Asked of the system once in the life of the process. In a code page with double-byte
// characters each byte counts by itself. Any thread.
const ByteKinds& byteKinds();

// The members of a POSIX class ("alpha", "print", ...); none for a name that is not one.
std::optional<ByteSet> byteClass(std::string_view name);
