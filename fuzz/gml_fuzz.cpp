// Graph models: what is read and written is read as the same graph, by the plug-in with the figures
// as well, and its tables have a field for everything.

#include <vector>

#include "figures/graph_figures.h"
#include "input.h"
#include "model/csv_writer.h"
#include "model/gml_reader.h"
#include "model/gml_writer.h"
#include "model/graphml_writer.h"
#include "model/node_times.h"
#include "sys/utf8prefix.h"

using zelhost::Attribute;
using zelhost::AttributeSequence;
using zelhost::AttributeSpan;
using zelhost::GmlResult;
using zelhost::Graph;
using zelhost::ValueType;

namespace {

constexpr std::size_t kBlockSize = 8192;  // of the text reader

GmlResult read(const std::string& text, Graph& graph) {
    const MemoryFile file(text);
    return zelhost::readGml(file.path(), graph);
}

std::string written(const Graph& graph, bool (*write)(const Graph&, const zelhost::WriteChunk&)) {
    std::string text;
    const bool isDone = write(graph, [&text](std::string_view bytes) {
        text += bytes;
        return true;
    });
    check(isDone);
    return text;
}

void checkFailure(const GmlResult& result, std::string_view text) {
    check(result.status == GmlResult::Status::failed && !result.message.empty());
    const auto lines = static_cast<std::int64_t>(
        std::ranges::count_if(text, [](char c) { return c == '\n' || c == '\r'; }));
    check(result.line >= 0 && result.line <= lines + 1);
    const std::string message = inEnglish(result.message);
    check(std::ranges::all_of(message, [](char c) { return c >= ' ' && c < 0x7F; }));
}

bool isSame(const Graph& a, const AttributeSequence& sequenceA, AttributeSpan spanA, const Graph& b,
            const AttributeSequence& sequenceB, AttributeSpan spanB) {
    return std::ranges::equal(spanA, spanB, [&](const Attribute& x, const Attribute& y) {
        if (a.keys.name(x.key()) != b.keys.name(y.key()) || x.type() != y.type()) return false;
        if (x.type() == ValueType::integer) return x.integer() == y.integer();
        if (x.type() == ValueType::list) return x.extent() == y.extent();
        return sequenceA.text(x) == sequenceB.text(y);
    });
}

void checkIsSame(const Graph& a, const Graph& b) {
    const auto checkAll = [&](const AttributeSequence& x, const AttributeSequence& y) {
        check(isSame(a, x, x.all(), b, y, y.all()));
    };
    checkAll(a.fileAttributes, b.fileAttributes);
    checkAll(a.graphAttributes, b.graphAttributes);
    const auto isSameElement = [&](const auto& x, const auto& y) {
        return isSame(a, a.attributes, a.of(x), b, b.attributes, b.of(y));
    };
    check(std::ranges::equal(a.nodes, b.nodes, isSameElement));
    check(std::ranges::equal(a.edges, b.edges, isSameElement));
    check(std::ranges::equal(a.nodes, b.nodes, {}, &zelhost::Node::id, &zelhost::Node::id));
    for (std::size_t i = 0; i < a.edges.size(); ++i) {
        check(a.edges[i].source == b.edges[i].source && a.edges[i].target == b.edges[i].target);
    }
}

void checkFigures(const Graph& graph, std::string_view text) {
    const figures::Graph seen = figures::readGraph(text);
    check(std::ranges::equal(graph.nodes, seen.ids, {}, &zelhost::Node::id));
    check(std::ranges::equal(graph.edges, seen.edges,
                             [](const zelhost::Edge& x, const figures::Edge& y) {
                                 return x.source == y.source && x.target == y.target;
                             }));
}

// The fields of each line, read as spreadsheets do.
std::vector<std::vector<std::string>> rowsOf(std::string_view csv) {
    std::vector<std::vector<std::string>> rows(1, {""});
    bool isQuoted = false;
    for (const char c : csv) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == ';' && !isQuoted) {
            rows.back().emplace_back();
        } else if (c == '\n' && !isQuoted) {
            rows.push_back({""});
        } else {
            rows.back().back() += c;
        }
    }
    check(!isQuoted && rows.back().size() == 1 && rows.back()[0].empty());
    rows.pop_back();
    return rows;
}

void checkTable(const std::string& csv, std::size_t lines) {
    const auto rows = rowsOf(csv);
    check(rows.size() == lines + 1);
    for (const auto& row : rows) check(row.size() == rows[0].size());
}

std::size_t countOf(std::string_view part, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
}

void checkExports(const Graph& graph) {
    const std::size_t totals = zelhost::timesOf(graph).durations > 0 ? 1 : 0;
    checkTable(written(graph, zelhost::writeNodesCsv), graph.nodes.size() + totals);
    checkTable(written(graph, zelhost::writeEdgesCsv), graph.edges.size());
    const std::string graphml = written(graph, zelhost::writeGraphml);
    check(utf8Prefix(graphml).size == graphml.size());
    check(countOf("<node ", graphml) == graph.nodes.size());
    check(countOf("<edge ", graphml) == graph.edges.size());
    check(countOf("<data ", graphml) == countOf("</data>", graphml));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const std::string text = textAcrossBlocks(input, kBlockSize, '#');
    Graph graph;
    const GmlResult result = read(text, graph);
    if (result.status != GmlResult::Status::done) {
        checkFailure(result, text);
        return 0;
    }
    checkExports(graph);
    const std::string first = written(graph, zelhost::writeGml);
    if (longestLine(first) > zelhost::kLongestLine) return 0;  // for other programs only
    Graph again;
    check(read(first, again).status == GmlResult::Status::done);
    checkIsSame(graph, again);
    check(written(again, zelhost::writeGml) == first);
    checkFigures(graph, first);
    return 0;
}
