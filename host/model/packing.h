// Groups of boxes side by side.

#pragma once

#include <vector>

#include "model/geometry.h"
#include "model/layers.h"

namespace zelhost {

// Moves each group of boxes so that the groups stand side by side, in rows of about equal width
// where there are many. The left upper corner of all is (0, 0).
void packGroups(const std::vector<Group>& groups, std::vector<Box>& boxes);

}  // namespace zelhost
