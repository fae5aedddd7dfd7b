// Texts of durations: what is accepted, and that it comes back when it is written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "input.h"
#include "zbasic/zcoretime.h"

namespace {

// Any bits as lengths of the year and the day, and as a duration: no text may be too long.
void writeAnything(const std::uint8_t* data) {
    double numbers[3];
    std::memcpy(numbers, data, sizeof numbers);
    const ZelCoreTime time(numbers[0], numbers[1], numbers[2]);
    check(time.asString().size() < 400);
    static_cast<void>(time.asSeconds());
    static_cast<void>(time.asLong());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    ZelCoreTime time(text.c_str());
    if (!ZelCoreTime::isTime(text.c_str())) check(time.asDouble() == 0);
    check(time.asDouble() >= 0 && !time.overFlow());
    const std::string written = time.asChar();
    constexpr double kExact = 4503599627370496.0;  // beyond, adding a half rounds
    if (time.asDouble() < kExact) {
        check(ZelCoreTime::isTime(written.c_str()));
        check(ZelCoreTime(written.c_str()).asDouble() == time.asDouble());
    }
    // Years with few digits come back as they were.
    const std::size_t colon = text.find(':');
    if (ZelCoreTime::isTime(text.c_str()) && colon == 2) check(written == text.c_str());
    if (size >= 3 * sizeof(double)) writeAnything(data);
    return 0;
}
