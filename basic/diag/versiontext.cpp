#include "diag/versiontext.h"

#include <string>

#include "zbasic/zversionnumber.h"

#define ZBASIC_TEXT_OF(number) #number
#define ZBASIC_TEXT(macro) ZBASIC_TEXT_OF(macro)

const Version kVersion = {
    ZBASIC_TEXT(ZBASIC_VERSION_HIGH),
    ZBASIC_TEXT(ZBASIC_VERSION_LOW),
    ZBASIC_TEXT(ZBASIC_VERSION_PATCH),
    ZBASIC_TEXT(ZBASIC_VERSION_BUILD),
    "",
};

namespace {

constexpr std::size_t kMinBuildDigits = 4;

std::string joined(std::string_view a, char separator, std::string_view b) {
    return std::string(a).append(1, separator).append(b);
}

std::string paddedBuild(std::string_view build) {
    const std::size_t missing = build.size() < kMinBuildDigits ? kMinBuildDigits - build.size() : 0;
    return std::string(missing, '0').append(build);
}

}  // namespace

SV::String versionText(const Version& version) {
    std::string text = joined(version.high, '.', version.low);
    // Relied on by callers: a low part of 10 shows as 1.
    while (text.size() > version.high.size() + 2 && text.back() == '0') text.pop_back();
    return SV::String(text);
}

SV::String buildVersionText(const Version& version) {
    const std::string text = joined(version.high, '.', version.low);
    return SV::String(joined(text, '_', paddedBuild(version.build)));
}

SV::String patchVersionText(const Version& version) {
    const std::string text = joined(version.high, '.', version.low);
    return SV::String(joined(text, '.', version.patch));
}

SV::String patchBuildVersionText(const Version& version) {
    const std::string text = joined(patchVersionText(version), '.', paddedBuild(version.build));
    if (version.developmentTag.empty()) return SV::String(text);
    return SV::String(joined(text, '-', version.developmentTag));
}
