// Writes a model in all formats.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/graph.h"
#include "model/message.h"
#include "sv/image.h"

namespace zelhost {

struct ExportResult {
    std::vector<std::string> files;  // as written, in their order
    Message problem;                 // why it ended early; empty when all is done
    bool isCancelled = false;        // `goOn` said so: nothing is written then
};

// The names of a model's files, in the order in which they are written.
std::vector<std::string> exportFileNames(const std::string& name);

// Called with the name of the file that is being made, many times a second; false ends the export.
using ExportGoesOn = std::function<bool(const std::string& file)>;

// Writes <directory>\<name>.gml, .graphml, .nodes.csv, .edges.csv and .png. The directory is
// made when it is not there. `picture` is that of the graph; null: it is drawn. The files take
// their places when all of them are complete: until then, and for good when one cannot be written,
// what was there before stays. A place that cannot be taken leaves those before it taken.
ExportResult exportModel(const Graph& graph, const SV::Image* picture, const std::string& directory,
                         const std::string& name, const ExportGoesOn& goOn);

}  // namespace zelhost
