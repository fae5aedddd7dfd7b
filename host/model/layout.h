// Where the nodes and edges of a graph go in a picture.

#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "model/geometry.h"
#include "model/graph.h"

namespace zelhost {

// Everything lies between (0, 0) and `size`, a margin included.
struct Layout {
    Size size{};
    std::vector<Box> boxes;  // one a node
    // One an edge, from the border of the source's box to that of the target's; at least two
    // points. A loop goes around the right upper corner of its box; edges between the same two
    // nodes lie side by side.
    Polylines lines;
};

// The size of a box around a caption.
using MeasureCaption = std::function<Size(std::string_view caption)>;

// Takes the positions `graphics [ x y ]` when at least half of the nodes have one (the others
// go in rows below them), drawn apart as far as the boxes need; edges are straight lines. All
// other graphs are laid out in layers, edges pointing down where there are no circles, parts
// without connection side by side. There an edge bends round the boxes in its way; only in
// graphs with very many long edges the longest are straight, and very wide layers are wrapped into
// rows, with lines behind their boxes. Boxes have the size that their
// caption needs. Takes about a second for 100,000 nodes.
Layout layOut(const Graph& graph, const MeasureCaption& measure);

}  // namespace zelhost
