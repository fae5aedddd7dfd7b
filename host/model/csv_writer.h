// Export of graphs as tables for spreadsheets.

#pragma once

#include "model/graph.h"
#include "model/text_output.h"

namespace zelhost {

// One line a node: `id;caption;` and a column for every attribute, named as in GraphML.
// UTF-8 with a byte order mark, without which spreadsheets take it for the code page; fields
// are separated by semicolons, and line breaks in them become a blank each.
// Where nodes have durations, the last line is their sum: no id, the caption "total".
// False when something could not be written.
bool writeNodesCsv(const Graph& graph, const WriteChunk& write);

// The same for the edges: `source;target;`, both as ids, and the attributes.
bool writeEdgesCsv(const Graph& graph, const WriteChunk& write);

}  // namespace zelhost
