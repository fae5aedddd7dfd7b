// A graph as a picture.

#pragma once

#include "model/graph.h"
#include "sv/image.h"

namespace zelhost {

// Nodes as boxes with their captions, edges as lines with their labels, and with arrow heads in a
// directed graph. Up to about 60 nodes in a size that can be read; larger graphs are drawn smaller,
// captions only while they can be read. Empty when memory runs out.
SV::Image drawPicture(const Graph& graph);

}  // namespace zelhost
