// Export of graphs in normalised GML.

#pragma once

#include "model/graph.h"
#include "model/text_output.h"

namespace zelhost {

// Writes what `readGml` reads back to the same graph: one entry a line, two blanks a level, an
// element's `id`, `source` and `target` first, all bytes ASCII as long as the SGML map makes
// them so. Characters that code page 1252 lacks become `&#19979;`, as do control characters.
//
// A text that would make too long a line that way is written in UTF-8. Where even that is too
// long (thousands of characters without a line end that GML wants encoded) it is written all
// the same, for other programs: `readGml` refuses the line.
//
// False when something could not be written.
bool writeGml(const Graph& graph, const WriteChunk& write);

}  // namespace zelhost
