// The parts of the version and the texts made of them.

#pragma once

#include <string_view>

#include "sv/string.h"

struct Version {
    std::string_view high;
    std::string_view low;
    std::string_view patch;
    std::string_view build;
    std::string_view developmentTag;  // empty for a release
};

extern const Version kVersion;  // of this library

SV::String versionText(const Version& version);            // "1.8"
SV::String buildVersionText(const Version& version);       // "1.8_230922"
SV::String patchVersionText(const Version& version);       // "1.8.0"
SV::String patchBuildVersionText(const Version& version);  // "1.8.0.230922", then "-rc1"
