// Any text as a number: what the run-time library reads with every "," a ".".

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "zbasic/ztools.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string withPoints = text;
    std::ranges::replace(withPoints, ',', '.');
    const double expected = std::strtod(withPoints.c_str(), nullptr);
    const double value = zel_atof(text.c_str());
    const bool isSame = std::isnan(expected) ? std::isnan(value)
                                             : std::bit_cast<std::uint64_t>(value) ==
                                                   std::bit_cast<std::uint64_t>(expected);
    if (!isSame) std::abort();
    Zel_Valid_Integer(text.c_str());
    Zel_Valid_Double(text.c_str());
    return 0;
}
