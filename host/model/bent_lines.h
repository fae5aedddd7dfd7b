// How edges run past the boxes in their way.

#pragma once

#include <span>
#include <vector>

#include "model/geometry.h"
#include "model/layers.h"
#include "model/skeleton.h"

namespace zelhost {

// The lines of `links`, which `skeleton` was made of, from `from` to `to`; empty where it leads
// them straight. `boxes` are those of its items, `heights` those of their layers, in the middle
// of which they stand.
Polylines bentLines(std::span<const Link> links, std::span<const double> lanes,
                    const Skeleton& skeleton, const std::vector<Box>& boxes,
                    const std::vector<double>& heights);

}  // namespace zelhost
