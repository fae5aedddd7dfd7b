// UTF-8 into the process code page, piece by piece.

#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "sv/string.h"

// As `SV::ConvertUTF8StringToString`, with buffers of its own: for texts of many megabytes, which
// would otherwise be copied five times.
class CodePageDecoder {
public:
    explicit CodePageDecoder(std::size_t mostBytes);  // of UTF-8 at a time

    // Appends what `utf8`, which is valid, is in the code page.
    void append(SV::String& text, std::string_view utf8);

private:
    const std::size_t m_outSize;
    const std::unique_ptr<wchar_t[]> m_wide;
    const std::unique_ptr<char[]> m_out;
};
