#include "model/graphml_writer.h"

#include "model/code_page_runs.h"
#include "model/columns.h"
#include "zbasic/zsgml.h"

namespace zelhost {

namespace {

constexpr const char* kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\""
    " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
    " xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns"
    " http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\">\n";

// The XML routine drops DEL, which XML 1.0 allows; it drops what XML forbids.
bool isForXmlRoutine(char32_t character) { return character != 0x7F; }

// XML 1.0 section 2.2.
bool isForbiddenInXml(char32_t character) { return character == 0xFFFE || character == 0xFFFF; }

const char* typeName(ColumnType type) {
    switch (type) {
        case ColumnType::int32:
            return "int";
        case ColumnType::int64:
            return "long";
        case ColumnType::real:
            return "double";
        default:
            return "string";
    }
}

class GraphmlWriter {
public:
    GraphmlWriter(const Graph& graph, const WriteChunk& write)
        : m_graph(graph),
          m_output(write),
          m_domains{{"graph", "g", ColumnTable(graph.keys)},
                    {"node", "v", ColumnTable(graph.keys)},
                    {"edge", "e", ColumnTable(graph.keys)}} {}

    bool run();

private:
    struct Domain {
        const char* name;
        const char* prefix;  // of the ids of its keys
        ColumnTable table;
    };

    void collectColumns();
    void visitGraph(const ColumnTable::Visitor& visitor);
    void putKeys(const Domain& domain);
    void putNodes();
    void putEdges();
    ColumnTable::Visitor widening(Domain& domain);
    ColumnTable::Visitor writing(const char* prefix, const char* indentation);
    void putText(std::string_view utf8);
    Domain& ofGraph() { return m_domains[0]; }
    Domain& ofNodes() { return m_domains[1]; }
    Domain& ofEdges() { return m_domains[2]; }

    const Graph& m_graph;
    TextOutput m_output;
    Domain m_domains[3];
};

void GraphmlWriter::putText(std::string_view utf8) {
    std::string plain;
    splitByCodePage(
        utf8, isForXmlRoutine,
        [&](const SV::String& run) {
            m_output << std::string_view(ZelSGMLString::XMLStr(run, true));
        },
        [&](char32_t character) {
            if (isForbiddenInXml(character)) return;
            plain.clear();
            appendUtf8(plain, character);
            m_output << plain;
        });
}

ColumnTable::Visitor GraphmlWriter::widening(Domain& domain) {
    return [&table = domain.table](std::size_t column, const AttributeSequence&,
                                   const Attribute& value) { table.widen(column, value); };
}

ColumnTable::Visitor GraphmlWriter::writing(const char* prefix, const char* indentation) {
    return
        [=, this](std::size_t column, const AttributeSequence& sequence, const Attribute& value) {
            m_output << indentation << "<data key=\"" << prefix << std::uint64_t{column} << "\">";
            if (value.type() == ValueType::integer) {
                m_output << value.integer();
            } else {
                putText(sequence.text(value));
            }
            m_output << "</data>\n";
        };
}

void GraphmlWriter::visitGraph(const ColumnTable::Visitor& visitor) {
    ColumnTable& table = ofGraph().table;
    table.beginElement();
    table.visitValues(m_graph.fileAttributes, m_graph.fileAttributes.all(), visitor);
    table.visitValues(m_graph.graphAttributes, m_graph.graphAttributes.all(), visitor);
}

void GraphmlWriter::collectColumns() {
    visitGraph(widening(ofGraph()));
    const ColumnTable::Visitor onNode = widening(ofNodes());
    for (const Node& node : m_graph.nodes) {
        ofNodes().table.beginElement();
        ofNodes().table.visitValues(m_graph.attributes, m_graph.of(node), onNode);
    }
    const ColumnTable::Visitor onEdge = widening(ofEdges());
    for (const Edge& edge : m_graph.edges) {
        ofEdges().table.beginElement();
        ofEdges().table.visitValues(m_graph.attributes, m_graph.of(edge), onEdge);
    }
}

void GraphmlWriter::putKeys(const Domain& domain) {
    std::uint64_t number = 0;
    for (const Column& column : domain.table.columns()) {
        m_output << "  <key id=\"" << domain.prefix << number++ << "\" for=\"" << domain.name
                 << "\" attr.name=\"" << column.name << "\" attr.type=\"" << typeName(column.type)
                 << "\"/>\n";
    }
}

void GraphmlWriter::putNodes() {
    const ColumnTable::Visitor visitor = writing(ofNodes().prefix, "      ");
    for (const Node& node : m_graph.nodes) {
        m_output << "    <node id=\"n" << node.id << "\">\n";
        ofNodes().table.beginElement();
        ofNodes().table.visitValues(m_graph.attributes, m_graph.of(node), visitor);
        m_output << "    </node>\n";
    }
}

void GraphmlWriter::putEdges() {
    const ColumnTable::Visitor visitor = writing(ofEdges().prefix, "      ");
    for (const Edge& edge : m_graph.edges) {
        m_output << "    <edge source=\"n" << m_graph.nodes[edge.source].id << "\" target=\"n"
                 << m_graph.nodes[edge.target].id << "\">\n";
        ofEdges().table.beginElement();
        ofEdges().table.visitValues(m_graph.attributes, m_graph.of(edge), visitor);
        m_output << "    </edge>\n";
    }
}

bool GraphmlWriter::run() {
    collectColumns();
    m_output << kHeader;
    for (const Domain& domain : m_domains) putKeys(domain);
    const char* const direction = m_graph.isDirected() ? "directed" : "undirected";
    m_output << "  <graph id=\"G\" edgedefault=\"" << direction << "\">\n";
    visitGraph(writing(ofGraph().prefix, "    "));
    putNodes();
    putEdges();
    m_output << "  </graph>\n</graphml>\n";
    return m_output.finish();
}

}  // namespace

bool writeGraphml(const Graph& graph, const WriteChunk& write) {
    return GraphmlWriter(graph, write).run();
}

}  // namespace zelhost
