// What the plug-in manager would say of a DLL.

#pragma once

#include <string>
#include <vector>

#include "peimage.h"

namespace zelplugcheck {

struct Check {
    enum class Outcome { kGood, kBad, kUnknown };

    Outcome outcome;
    std::string text;
};

// In the manager's order, up to the first check that fails.
std::vector<Check> judge(const PeImage& image);

}  // namespace zelplugcheck
