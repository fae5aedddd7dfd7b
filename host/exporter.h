// Writes a model in all formats.

#pragma once

#include <string>
#include <vector>

#include "model/graph.h"

namespace zelhost {

struct ExportResult {
    std::vector<std::string> files;  // as written, in their order
    std::string problem;             // why it ended early; empty when all is done
};

// The names of a model's files, in the order in which they are written.
std::vector<std::string> exportFileNames(const std::string& name);

// Writes <directory>\<name>.gml, .graphml, .nodes.csv, .edges.csv and .png. The directory is
// made when it is not there. Each file is there whole or not at all: one that cannot be written
// leaves what was there before.
ExportResult exportModel(const Graph& graph, const std::string& directory, const std::string& name);

}  // namespace zelhost
