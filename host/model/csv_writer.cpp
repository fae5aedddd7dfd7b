#include "model/csv_writer.h"

#include <algorithm>
#include <vector>

#include "model/columns.h"
#include "model/node_times.h"
#include "sv/string.h"
#include "zbasic/ztools.h"

namespace zelhost {

namespace {

constexpr const char* kUtf8Mark = "\xEF\xBB\xBF";

void putField(TextOutput& output, std::string_view utf8) {
    std::string field(utf8);
    std::ranges::replace_if(
        field, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    output << std::string_view(Zel_MaskCSV(SV::String(std::string_view(field))));
}

// The attributes of one kind of element, a line each behind the fields that all have.
class Table {
public:
    Table(const Graph& graph, TextOutput& output)
        : m_graph(graph), m_output(output), m_columns(graph.keys) {}

    template <typename Element>
    void collectColumns(const std::vector<Element>& elements) {
        for (const Element& element : elements) collect(m_graph.of(element));
        m_row.resize(m_columns.columns().size());
    }
    void putHeader(const char* fixedFields);
    void putAttributes(AttributeSpan attributes);
    void putTotal(const char* fixedFields, std::string_view column, std::string_view total);

private:
    void collect(AttributeSpan attributes);

    const Graph& m_graph;
    TextOutput& m_output;
    ColumnTable m_columns;
    std::vector<const Attribute*> m_row;
};

void Table::collect(AttributeSpan attributes) {
    m_columns.beginElement();
    m_columns.visitValues(m_graph.attributes, attributes,
                          [](std::size_t, const AttributeSequence&, const Attribute&) {});
}

void Table::putHeader(const char* fixedFields) {
    m_output << kUtf8Mark << fixedFields;
    for (const Column& column : m_columns.columns()) m_output << ';' << column.name;
    m_output << '\n';
}

void Table::putAttributes(AttributeSpan attributes) {
    std::ranges::fill(m_row, nullptr);
    m_columns.beginElement();
    m_columns.visitValues(m_graph.attributes, attributes,
                          [&](std::size_t column, const AttributeSequence&,
                              const Attribute& value) { m_row[column] = &value; });
    for (const Attribute* const value : m_row) {
        m_output << ';';
        if (!value) continue;
        if (value->type() == ValueType::integer) {
            m_output << value->integer();
        } else {
            putField(m_output, m_graph.attributes.text(*value));
        }
    }
    m_output << '\n';
}

void Table::putTotal(const char* fixedFields, std::string_view column, std::string_view total) {
    m_output << fixedFields;
    for (const Column& each : m_columns.columns()) {
        m_output << ';' << (each.name == column ? total : std::string_view());
    }
    m_output << '\n';
}

}  // namespace

bool writeNodesCsv(const Graph& graph, const WriteChunk& write) {
    TextOutput output(write);
    Table table(graph, output);
    table.collectColumns(graph.nodes);
    table.putHeader("id;caption");
    for (const Node& node : graph.nodes) {
        output << node.id << ';';
        putField(output, graph.caption(node));
        table.putAttributes(graph.of(node));
    }
    const NodeTimes times = timesOf(graph);
    if (times.durations > 0) {
        table.putTotal(";total", graph.keys.name(kDuration), times.total.asString());
    }
    return output.finish();
}

bool writeEdgesCsv(const Graph& graph, const WriteChunk& write) {
    TextOutput output(write);
    Table table(graph, output);
    table.collectColumns(graph.edges);
    table.putHeader("source;target");
    for (const Edge& edge : graph.edges) {
        output << graph.nodes[edge.source].id << ';' << graph.nodes[edge.target].id;
        table.putAttributes(graph.of(edge));
    }
    return output.finish();
}

}  // namespace zelhost
