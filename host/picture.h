// A graph as a picture.

#pragma once

#include <stop_token>

#include "model/graph.h"
#include "sv/image.h"

namespace zelhost {

// Nodes as boxes with their captions, edges as lines with their labels, and with arrow heads in a
// directed graph. Up to about 60 nodes in a size that can be read; larger graphs are drawn smaller,
// captions only while they can be read, and of those that are very long the beginning. What can be
// read is drawn `zoom` times as large. Empty when memory runs out, unfinished once it is to stop.
// Any thread.
SV::Image drawPicture(const Graph& graph, double zoom = 1, const std::stop_token& stop = {});

// Few enough nodes for a picture in a size that can be read.
bool isReadable(const Graph& graph);

}  // namespace zelhost
