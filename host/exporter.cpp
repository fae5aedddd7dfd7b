#include "exporter.h"

#include "model/csv_writer.h"
#include "model/gml_writer.h"
#include "model/graphml_writer.h"
#include "paths.h"
#include "picture.h"
#include "png_writer.h"

namespace zelhost {

namespace {

bool writePicture(const Graph& graph, const WriteChunk& write) {
    return writePng(drawPicture(graph), write);
}

struct Format {
    const char* extension;
    bool (*write)(const Graph& graph, const WriteChunk& write);
};

constexpr Format kFormats[] = {
    {".gml", writeGml},
    {".graphml", writeGraphml},
    {".nodes.csv", writeNodesCsv},
    {".edges.csv", writeEdgesCsv},
    {".png", writePicture},
};

}  // namespace

std::vector<std::string> exportFileNames(const std::string& name) {
    std::vector<std::string> names;
    for (const Format& format : kFormats) names.push_back(name + format.extension);
    return names;
}

ExportResult exportModel(const Graph& graph, const std::string& directory,
                         const std::string& name) {
    ExportResult result;
    if (!makeDirectory(directory, result.problem)) return result;
    for (const Format& format : kFormats) {
        const std::string path = directory + "\\" + name + format.extension;
        PendingFile file(path);
        const bool isWritten = format.write(graph, file.writer());
        if (!isWritten && file.problem().empty()) {
            result.problem = path + ": cannot be made: not enough memory";
            return result;
        }
        if (!file.commit()) {
            result.problem = file.problem();
            return result;
        }
        result.files.push_back(path);
    }
    return result;
}

}  // namespace zelhost
