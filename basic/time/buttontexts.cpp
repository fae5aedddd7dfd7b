#include "time/buttontexts.h"

#include <cstdint>

#include "diag/librarytext.h"

namespace {

constexpr std::uint32_t kOKText = 10530;
constexpr std::uint32_t kCancelText = 10531;
constexpr std::uint32_t kHelpText = 10532;

}  // namespace

SV::International withButtonTexts(SV::International settings) {
    settings.ChangeOKText(libraryText(kOKText));
    settings.ChangeCancelText(libraryText(kCancelText));
    settings.ChangeHelpText(libraryText(kHelpText));
    return settings;
}
