// A look at a text file before it is parsed: encoding, and what no parser should meet.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "model/encoding.h"
#include "model/message.h"

namespace zelhost {

// The text reader ends the process at a longer line; line ends are not counted.
constexpr std::size_t kLongestLine = 8191;

struct FileProblem {
    std::int64_t line;  // counted from 1; 0 when it is not about a line
    Message message;
};

struct FileScan {
    Encoding encoding = Encoding::utf8;  // code page 1252 when the bytes cannot be UTF-8
    bool hasByteOrderMark = false;       // the three bytes of the UTF-8 one
    std::int64_t size = 0;               // in bytes, as far as it was read
    std::optional<FileProblem> problem;  // unreadable, empty, not a text, too long a line
};

// Reads the file once, at about the speed of memory, and stops at the first problem.
// `fileName` as the C library takes it (the process code page on Windows).
FileScan scanTextFile(const std::string& fileName);

}  // namespace zelhost
