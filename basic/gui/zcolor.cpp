#include "zbasic/zgui.h"

namespace {

std::uint8_t blend(std::uint8_t source, std::uint8_t target, double weight) {
    return static_cast<std::uint8_t>(source * weight + target * (1.0 - weight) + 0.5);
}

}  // namespace

SV::Color ZelColor::srcOver(SV::Color source, SV::Color target, double weight) {
    return {blend(source.GetRed(), target.GetRed(), weight),
            blend(source.GetGreen(), target.GetGreen(), weight),
            blend(source.GetBlue(), target.GetBlue(), weight)};
}
