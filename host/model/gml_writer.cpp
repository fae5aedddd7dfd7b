#include "model/gml_writer.h"

#include <vector>

#include "model/code_page_runs.h"
#include "model/file_scan.h"
#include "zbasic/zsgml.h"

namespace zelhost {

namespace {

constexpr std::size_t kBlanksPerLevel = 2;
constexpr std::size_t kLongLine = kLongestLine - 1500;  // room for a key, deep in lists

// What may stand in a line as it is; the SGML map would drop a carriage return.
bool mayStandInText(char32_t character) {
    return character >= U' ' || character == U'\t' || character == U'\n';
}

// `onOther` puts characters that are not for the SGML map at the end of the text.
template <typename IsWanted, typename OnOther>
std::string encoded(std::string_view utf8, IsWanted isWanted, OnOther onOther) {
    std::string text;
    splitByCodePage(
        utf8, isWanted,
        [&](const SV::String& run) { text += std::string_view(ZelSGMLString::GetSGMLString(run)); },
        [&](char32_t character) { onOther(text, character); });
    return text;
}

void appendReference(std::string& text, char32_t character) {
    text += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
}

// References make a text up to seven times as long, too long a line for the reader. The file is
// UTF-8 then.
void appendShort(std::string& text, char32_t character) {
    if (mayStandInText(character)) {
        appendUtf8(text, character);
    } else {
        appendReference(text, character);
    }
}

bool isShortInText(char32_t character) { return mayStandInText(character) && character < 0x80; }

bool hasLongLine(std::string_view text) {
    while (text.size() > kLongLine) {
        const std::size_t end = text.find('\n');
        if (end > kLongLine) return true;  // no further line end counts as far away
        text.remove_prefix(end + 1);
    }
    return false;
}

class GmlWriter {
public:
    GmlWriter(const Graph& graph, const WriteChunk& write) : m_graph(graph), m_output(write) {}

    bool run();

private:
    void putAttributes(const AttributeSequence& sequence, AttributeSpan attributes,
                       std::size_t level);
    void putValue(const AttributeSequence& sequence, const Attribute& attribute);
    void putText(std::string_view utf8);
    void putNodes();
    void putEdges();

    const Graph& m_graph;
    TextOutput m_output;
};

void GmlWriter::putText(std::string_view utf8) {
    std::string text = encoded(utf8, mayStandInText, appendReference);
    if (hasLongLine(text)) text = encoded(utf8, isShortInText, appendShort);
    m_output << '"' << text << '"';
}

void GmlWriter::putValue(const AttributeSequence& sequence, const Attribute& attribute) {
    if (attribute.type() == ValueType::integer) {
        m_output << attribute.integer();
    } else if (attribute.type() == ValueType::real) {
        m_output << sequence.text(attribute);
    } else {
        putText(sequence.text(attribute));
    }
}

void GmlWriter::putAttributes(const AttributeSequence& sequence, AttributeSpan attributes,
                              std::size_t level) {
    std::vector<std::size_t> ends;  // of the lists that are open
    for (std::size_t i = 0; i <= attributes.size(); ++i) {
        while (!ends.empty() && ends.back() == i) {
            ends.pop_back();
            m_output.indent((level + ends.size()) * kBlanksPerLevel) << "]\n";
        }
        if (i == attributes.size()) break;
        const Attribute& attribute = attributes[i];
        m_output.indent((level + ends.size()) * kBlanksPerLevel)
            << m_graph.keys.name(attribute.key()) << ' ';
        if (attribute.type() == ValueType::list) {
            m_output << "[\n";
            ends.push_back(i + attribute.extent());
        } else {
            putValue(sequence, attribute);
            m_output << '\n';
        }
    }
}

void GmlWriter::putNodes() {
    for (const Node& node : m_graph.nodes) {
        m_output << "  node [\n    id " << node.id << '\n';
        putAttributes(m_graph.attributes, m_graph.of(node), 2);
        m_output << "  ]\n";
    }
}

void GmlWriter::putEdges() {
    for (const Edge& edge : m_graph.edges) {
        m_output << "  edge [\n    source " << m_graph.nodes[edge.source].id << "\n    target "
                 << m_graph.nodes[edge.target].id << '\n';
        putAttributes(m_graph.attributes, m_graph.of(edge), 2);
        m_output << "  ]\n";
    }
}

bool GmlWriter::run() {
    putAttributes(m_graph.fileAttributes, m_graph.fileAttributes.all(), 0);
    m_output << "graph [\n";
    putAttributes(m_graph.graphAttributes, m_graph.graphAttributes.all(), 1);
    putNodes();
    putEdges();
    m_output << "]\n";
    return m_output.finish();
}

}  // namespace

bool writeGml(const Graph& graph, const WriteChunk& write) { return GmlWriter(graph, write).run(); }

}  // namespace zelhost
