// Layered positions for graphs that bring none.

#pragma once

#include <span>
#include <vector>

#include "model/geometry.h"
#include "model/layers.h"

namespace zelhost {

// Sets the centres of `boxes` (their sizes are given) and gives the line of each link, from the
// border of one box to that of the other, past all boxes between. `links` may hold loops, circles
// and doubles; `lanes` are theirs (`lanesOf`). Empty are the lines of loops and, where there are
// very many layers to cross, of the links that cross most. A layer that would be far wider than all
// of the picture is high is wrapped into rows: lines may run behind the boxes of those.
Polylines layOutInLayers(std::span<const Link> links, std::span<const double> lanes,
                         std::vector<Box>& boxes);

}  // namespace zelhost
