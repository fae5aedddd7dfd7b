// Export of graphs in GraphML.

#pragma once

#include "model/graph.h"
#include "model/text_output.h"

namespace zelhost {

// Writes GraphML 1.0 in UTF-8: a `<key>` for every attribute of graph, nodes and edges with the
// narrowest type that holds all its values (int, long, double, string), nested keys joined by a
// point ("graphics.x"), a key that repeats counted ("point", "point.2"). Nodes are named "n" and
// their id; the attributes beside the graph become the graph's. Lists without content are left
// out, as are the characters that XML 1.0 forbids.
// False when something could not be written.
bool writeGraphml(const Graph& graph, const WriteChunk& write);

}  // namespace zelhost
