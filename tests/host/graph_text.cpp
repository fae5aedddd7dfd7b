#include "host/graph_text.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

using zelhost::Attribute;
using zelhost::AttributeSequence;
using zelhost::AttributeSpan;
using zelhost::GmlResult;
using zelhost::Graph;
using zelhost::ValueType;

namespace {

std::string describe(const Graph& graph, const AttributeSequence& sequence, AttributeSpan span) {
    std::string text;
    for (std::size_t i = 0; i < span.size(); i += span[i].extent()) {
        const Attribute& attribute = span[i];
        text += (i ? " " : "") + std::string(graph.keys.name(attribute.key()));
        switch (attribute.type()) {
            case ValueType::integer:
                text += "=" + std::to_string(attribute.integer());
                break;
            case ValueType::real:
                text += "=r" + std::string(sequence.text(attribute));
                break;
            case ValueType::text:
                text += "=\"" + std::string(sequence.text(attribute)) + "\"";
                break;
            case ValueType::list:
                text += "{" + describe(graph, sequence, contentOf(attribute)) + "}";
        }
    }
    return text;
}

}  // namespace

std::string describe(const Graph& graph) {
    std::string text = describe(graph, graph.fileAttributes, graph.fileAttributes.all()) + "|" +
                       describe(graph, graph.graphAttributes, graph.graphAttributes.all()) + "|";
    for (const zelhost::Node& node : graph.nodes) {
        text +=
            std::to_string(node.id) + "{" + describe(graph, graph.attributes, graph.of(node)) + "}";
    }
    text += "|";
    for (const zelhost::Edge& edge : graph.edges) {
        text += std::to_string(graph.nodes[edge.source].id) + "-" +
                std::to_string(graph.nodes[edge.target].id) + "{" +
                describe(graph, graph.attributes, graph.of(edge)) + "}";
    }
    return text;
}

Graph graphOf(std::string_view gml) {
    const TempDir directory;
    Graph graph;
    const GmlResult result = zelhost::readGml(directory.write("model.gml", gml), graph);
    EXPECT_EQ(result.status, GmlResult::Status::done) << inEnglish(result.message);
    return graph;
}

GmlResult resultOf(std::string_view gml) {
    const TempDir directory;
    Graph graph;
    return zelhost::readGml(directory.write("model.gml", gml), graph);
}
