#include "exporter.h"

#include <list>

#include "model/csv_writer.h"
#include "model/gml_writer.h"
#include "model/graphml_writer.h"
#include "paths.h"
#include "picture.h"
#include "png_writer.h"
#include "side_task.h"

namespace zelhost {

namespace {

struct Format {
    const char* extension;
    bool (*write)(const Graph& graph, const WriteChunk& write);
};

constexpr Format kTextFormats[] = {
    {".gml", writeGml},
    {".graphml", writeGraphml},
    {".nodes.csv", writeNodesCsv},
    {".edges.csv", writeEdgesCsv},
};
constexpr char kPictureExtension[] = ".png";

// Empty when memory runs out.
std::string pngOf(const Graph& graph, const SV::Image* picture, const std::stop_token& stop) {
    std::string bytes;
    const bool isMade =
        writePng(picture ? *picture : drawPicture(graph, 1, stop), [&](std::string_view more) {
            bytes += more;
            return !stop.stop_requested();
        });
    return isMade ? bytes : std::string();
}

// The files of one model.
class Export {
public:
    Export(std::string start, std::string name, const ExportGoesOn& goOn)
        : m_start(std::move(start)), m_name(std::move(name)), m_goOn(goOn) {}

    // `write` is called with the operation to write with. False when the export has ended.
    template <typename Write>
    bool add(const char* extension, Write write);
    void commit();

    // Whether the next piece of the file that was added last is wanted.
    bool goesOn() {
        m_result.isCancelled = m_result.isCancelled || !m_goOn(m_name + m_extension);
        return !m_result.isCancelled;
    }
    const ExportResult& result() const { return m_result; }

private:
    const std::string m_start;  // of the paths
    const std::string m_name;
    const ExportGoesOn& m_goOn;
    std::string m_extension;
    std::list<PendingFile> m_files;
    ExportResult m_result;
};

template <typename Write>
bool Export::add(const char* extension, Write write) {
    m_extension = extension;
    PendingFile& file = m_files.emplace_back(m_start + extension);
    const bool isWritten =
        write([&](std::string_view bytes) { return goesOn() && file.write(bytes); });
    if (m_result.isCancelled) return false;
    if (isWritten && file.complete()) return true;
    m_result.problem = file.problem();
    if (m_result.problem.empty()) {
        m_result.problem = "cannot be made: there is not enough memory";
        m_result.problem.place = file.path();
    }
    return false;
}

void Export::commit() {
    for (PendingFile& file : m_files) {
        if (!file.commit()) {
            m_result.problem = file.problem();
            return;
        }
        m_result.files.push_back(file.path());
    }
}

}  // namespace

std::vector<std::string> exportFileNames(const std::string& name) {
    std::vector<std::string> names;
    for (const Format& format : kTextFormats) names.push_back(name + format.extension);
    names.push_back(name + kPictureExtension);
    return names;
}

ExportResult exportModel(const Graph& graph, const SV::Image* picture, const std::string& directory,
                         const std::string& name, const ExportGoesOn& goOn) {
    ExportResult result;
    if (!makeDirectory(directory, result.problem)) return result;
    // The picture takes longest, and most of it is the system's: beside the texts.
    SideTask<std::string> png(
        [&](const std::stop_token& stop) { return pngOf(graph, picture, stop); });
    Export files(directory + "\\" + name, name, goOn);
    for (const Format& format : kTextFormats) {
        const auto write = [&](const WriteChunk& chunk) { return format.write(graph, chunk); };
        if (!files.add(format.extension, write)) return files.result();
    }
    const auto writePicture = [&](const WriteChunk& chunk) {
        if (!png.wait([&] { return files.goesOn(); })) return false;
        const std::string bytes = png.take();
        return !bytes.empty() && chunk(bytes);
    };
    if (files.add(kPictureExtension, writePicture)) files.commit();
    return files.result();
}

}  // namespace zelhost
