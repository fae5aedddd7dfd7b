// Times of day in the user interface: what is read is written again as it was.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "input.h"
#include "zbasic/zdattime.h"

namespace {

// As the American form has it: one blank before the half, two digits for the hour.
std::string tidied(const SV::String& text) {
    std::string tidy;
    for (const char c : text) {
        if (c != ' ') tidy += c;
    }
    if (tidy.size() == 9) tidy.insert(0, "0");
    return tidy.insert(8, " ");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SV::String text(reinterpret_cast<const char*>(data), size);
    for (const bool isAmerican : {false, true}) {
        ZelTimeFunctions::SetAmericanTimeFormat(isAmerican);
        const SV::Time before(1, 2, 3, 4);
        SV::Time time = before;
        if (!ZelTimeFunctions::setTimeInUIRep(text, time)) {
            check(time == before);
            continue;
        }
        check(time >= SV::Time(0, 0) && time <= SV::Time(24, 0) && time.Get100Sec() == 0);
        const SV::String written = ZelTimeFunctions::getTimeInUIRep(time);
        check(written == (isAmerican ? SV::String(tidied(text)) : text));
        const long seconds = ZelTimeFunctions::getTimeInSeconds(time);
        check(ZelTimeFunctions::setTimeInSeconds(seconds) == time);
    }
    return 0;
}
