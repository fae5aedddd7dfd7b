// Texts as formats without arguments: no conversion survives, and what has none stays as it is.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "diag/logtext.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string result = "start";
    appendWithoutArguments(result, text);
    if (!result.starts_with("start")) std::abort();
    result.erase(0, 5);
    if (result.size() > text.size()) std::abort();
    if (text.find('%') == text.npos && result != text) std::abort();
    // A text whose signs are all doubled comes out as it was.
    std::string doubled;
    for (const char c : text) doubled.append(c == '%' ? 2 : 1, c);
    std::string plain;
    appendWithoutArguments(plain, doubled);
    if (plain != text) std::abort();
    return 0;
}
