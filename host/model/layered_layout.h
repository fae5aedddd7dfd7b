// Layered positions for graphs that bring none.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "model/layout.h"

namespace zelhost {

struct Link {
    std::uint32_t from;
    std::uint32_t to;
};

// Sets the centres of `boxes` (their sizes are given); the left upper corner of all is (0, 0).
// `links` may hold loops, circles and doubles.
void layOutInLayers(std::span<const Link> links, std::vector<Box>& boxes);

// Moves each group of boxes so that the groups stand side by side, in rows of about equal width
// where there are many. The left upper corner of all is (0, 0).
void packGroups(const std::vector<std::vector<std::uint32_t>>& groups, std::vector<Box>& boxes);

}  // namespace zelhost
