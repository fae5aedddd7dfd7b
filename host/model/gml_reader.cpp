#include "model/gml_reader.h"

#include <limits>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include "model/file_scan.h"
#include "model/gml_lexer.h"
#include "model/gml_number.h"
#include "model/node_index.h"
#include "model/node_times.h"

namespace zelhost {

namespace {

constexpr std::int64_t kProgressBytes = std::int64_t{1} << 20;
constexpr std::uint32_t kProgressEntries = 4096;  // how often to look whether so much was read
constexpr std::size_t kMostEntries = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kLongestText = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kBytesPerAttribute = 27;  // about, in large files: saves copying them
constexpr std::size_t kShownBytes = 40;          // of a token in a message
constexpr std::size_t kMostRemarks = 20;         // that are told one by one

bool isKeyStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

bool isKey(std::string_view word) {
    if (!isKeyStart(word[0])) return false;
    for (const char c : word) {
        if (!isKeyStart(c) && !(c >= '0' && c <= '9')) return false;
    }
    return true;
}

// For a message: what cannot be shown in ASCII as a number.
std::string quoted(std::string_view text) {
    std::string shown = "\"";
    for (const char c : text.substr(0, kShownBytes)) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            shown += c;
        } else {
            constexpr char kHex[] = "0123456789ABCDEF";
            shown += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
        }
    }
    return shown + (text.size() > kShownBytes ? "...\"" : "\"");
}

Message placed(const std::string& fileName, std::int64_t line, Message message) {
    message.place = placeOf(fileName, line);
    return message;
}

class GmlReader {
public:
    GmlReader(GmlLexer& lexer, Graph& graph, const Progress& progress)
        : m_lexer(lexer), m_graph(graph), m_progress(progress), m_index(graph.nodes) {}

    GmlResult run();

private:
    enum class Scope { file, graph, node, edge, list };
    struct Level {
        Scope scope;
        std::int64_t line;          // of the bracket
        AttributeSequence* target;  // where its attributes go
        std::size_t list;           // there, for a `list`
    };
    // The node or edge that is being read.
    struct Element {
        std::int64_t line;
        std::size_t firstAttribute;
        std::optional<std::int64_t> id;
        std::optional<std::int64_t> source;
        std::optional<std::int64_t> target;
    };
    struct OpenEdge {  // to a node that has not come yet
        std::size_t edge;
        std::int64_t line;
        std::int64_t source;
        std::int64_t target;
    };

    bool readEntries();
    bool readEntry();
    std::optional<KeyId> keyOf(std::string_view word);
    bool openList(KeyId key);
    bool closeList();
    bool addText(KeyId key);
    bool addNumber(KeyId key);
    std::optional<std::int64_t>* memberOf(KeyId key);
    bool failAsMember(KeyId key);
    bool setMember(KeyId key, std::optional<std::int64_t>& member, std::int64_t value);
    bool finishNode();
    bool finishEdge();
    bool resolve(std::size_t edge, std::int64_t line, std::int64_t source, std::int64_t target);
    bool finishFile();
    bool reportProgress();
    void checkTime(KeyId key, std::string_view value);
    std::string nameOf(KeyId key) const { return std::string(m_graph.keys.name(key)); }
    bool fail(std::int64_t line, Message message);

    GmlLexer& m_lexer;
    Graph& m_graph;
    const Progress& m_progress;
    NodeIndex m_index;
    GmlResult m_result;
    std::vector<Level> m_levels;
    Element m_element{};
    std::vector<OpenEdge> m_openEdges;
    bool m_hasGraph = false;
    std::uint32_t m_entries = 0;
    std::int64_t m_reportedOffset = 0;
};

bool GmlReader::fail(std::int64_t line, Message message) {
    m_result.status = GmlResult::Status::failed;
    m_result.line = line;
    m_result.message = std::move(message);
    return false;
}

GmlResult GmlReader::run() {
    m_levels.push_back({Scope::file, 0, &m_graph.fileAttributes, 0});
    if (readEntries()) finishFile();
    return m_result;
}

// Until the end of the file; false when it was not reached.
bool GmlReader::readEntries() {
    for (;;) {
        const GmlLexer::Kind kind = m_lexer.next();
        if (kind == GmlLexer::Kind::end) return true;
        const std::int64_t line = m_lexer.line();
        switch (kind) {
            case GmlLexer::Kind::word:
                if (!readEntry()) return false;
                break;
            case GmlLexer::Kind::close:
                if (!closeList()) return false;
                break;
            case GmlLexer::Kind::open:
                return fail(line, "a list without a key");
            case GmlLexer::Kind::text:
                return fail(line, {"a text without a key: %s", {quoted(m_lexer.text())}});
            default:
                return fail(m_lexer.problem().line, m_lexer.problem().message);
        }
        if (++m_entries % kProgressEntries == 0 && !reportProgress()) return false;
    }
}

bool GmlReader::reportProgress() {
    if (!m_progress || m_lexer.offset() - m_reportedOffset < kProgressBytes) return true;
    m_reportedOffset = m_lexer.offset();
    if (m_progress(m_lexer.percent())) return true;
    m_result.status = GmlResult::Status::cancelled;
    return false;
}

// The key that the lexer gives, nothing (and an error) when it is none.
std::optional<KeyId> GmlReader::keyOf(std::string_view word) {
    if (const std::optional<KeyId> known = m_graph.keys.find(word)) return known;
    if (isKey(word)) return m_graph.keys.add(word);
    const bool isWord = isKeyStart(word[0]);
    fail(m_lexer.line(), {isWord ? "a key may hold letters, digits and \"_\" only: %s"
                                 : "a key is missing before %s",
                          {quoted(word)}});
    return std::nullopt;
}

bool GmlReader::readEntry() {
    const std::optional<KeyId> key = keyOf(m_lexer.word());
    if (!key) return false;
    if (m_levels.back().target->size() >= kMostEntries) {
        return fail(m_lexer.line(), "there are too many attributes");
    }
    const std::int64_t line = m_lexer.line();
    switch (m_lexer.next()) {
        case GmlLexer::Kind::open:
            return openList(*key);
        case GmlLexer::Kind::text:
            return addText(*key);
        case GmlLexer::Kind::word:
            return addNumber(*key);
        case GmlLexer::Kind::failed:
            return fail(m_lexer.problem().line, m_lexer.problem().message);
        default:
            return fail(line, {"the key %s has no value", {quoted(nameOf(*key))}});
    }
}

bool GmlReader::openList(KeyId key) {
    const Level& outer = m_levels.back();
    const std::int64_t line = m_lexer.line();
    if (m_levels.size() > kDeepestList) {
        return fail(line, {"lists lie more than %s deep", {std::to_string(kDeepestList)}});
    }
    if (memberOf(key)) return failAsMember(key);
    if (outer.scope == Scope::file && key == kGraph) {
        if (m_hasGraph) return fail(line, "the file holds a second graph");
        m_hasGraph = true;
        m_levels.push_back({Scope::graph, line, &m_graph.graphAttributes, 0});
    } else if (outer.scope == Scope::graph && (key == kNode || key == kEdge)) {
        m_element = {line, m_graph.attributes.size(), {}, {}, {}};
        const Scope scope = key == kNode ? Scope::node : Scope::edge;
        m_levels.push_back({scope, line, &m_graph.attributes, 0});
    } else {
        const std::size_t list = outer.target->beginList(key);
        m_levels.push_back({Scope::list, line, outer.target, list});
    }
    return true;
}

bool GmlReader::closeList() {
    const Level level = m_levels.back();
    if (level.scope == Scope::file) return fail(m_lexer.line(), "\"]\" without a list");
    m_levels.pop_back();
    if (level.scope == Scope::list) level.target->endList(level.list);
    if (level.scope == Scope::node) return finishNode();
    if (level.scope == Scope::edge) return finishEdge();
    return true;
}

bool GmlReader::addText(KeyId key) {
    if (memberOf(key)) return failAsMember(key);
    if (m_lexer.text().size() > kLongestText) return fail(m_lexer.line(), "the text is too long");
    checkTime(key, m_lexer.text());
    m_levels.back().target->addText(key, m_lexer.text());
    return true;
}

bool GmlReader::addNumber(KeyId key) {
    const std::string_view word = m_lexer.word();
    const GmlNumber number = readGmlNumber(word);
    if (number.kind == GmlNumber::Kind::none) {
        return fail(m_lexer.line(), {"the value of %s is neither number, text nor list: %s",
                                     {quoted(nameOf(key)), quoted(word)}});
    }
    checkTime(key, word);
    AttributeSequence& target = *m_levels.back().target;
    std::optional<std::int64_t>* const member = memberOf(key);
    if (number.kind == GmlNumber::Kind::integer) {
        if (member) return setMember(key, *member, number.integer);
        target.addInteger(key, number.integer);
        return true;
    }
    if (member) return failAsMember(key);
    target.addReal(key, strictSpelling(word));
    return true;
}

void GmlReader::checkTime(KeyId key, std::string_view value) {
    if (m_levels.back().scope != Scope::node) return;
    const char* const problem = wrongTime(key, value);
    if (!problem || ++m_result.remarkCount > kMostRemarks) return;
    m_result.remarks.push_back({m_lexer.line(), {problem, {quoted(value)}}});
}

// Where the value goes when it is no attribute but part of the node or edge; else null.
std::optional<std::int64_t>* GmlReader::memberOf(KeyId key) {
    if (key < kId || key > kTarget) return nullptr;
    const Scope scope = m_levels.back().scope;
    if (scope == Scope::node && key == kId) return &m_element.id;
    if (scope == Scope::edge && key == kSource) return &m_element.source;
    if (scope == Scope::edge && key == kTarget) return &m_element.target;
    return nullptr;
}

bool GmlReader::failAsMember(KeyId key) {
    return fail(m_lexer.line(), {"%s must be a whole number", {quoted(nameOf(key))}});
}

bool GmlReader::setMember(KeyId key, std::optional<std::int64_t>& member, std::int64_t value) {
    if (member) return fail(m_lexer.line(), {"a second %s", {quoted(nameOf(key))}});
    member = value;
    return true;
}

bool GmlReader::finishNode() {
    if (!m_element.id) return fail(m_element.line, "the node has no \"id\"");
    const std::size_t first = m_element.firstAttribute;
    m_graph.nodes.push_back({*m_element.id, static_cast<std::uint32_t>(first),
                             static_cast<std::uint32_t>(m_graph.attributes.size() - first)});
    if (m_index.addLast()) return true;
    return fail(m_element.line, {"a node before has the id %s", {std::to_string(*m_element.id)}});
}

bool GmlReader::finishEdge() {
    if (!m_element.source) return fail(m_element.line, "the edge has no \"source\"");
    if (!m_element.target) return fail(m_element.line, "the edge has no \"target\"");
    const std::size_t first = m_element.firstAttribute;
    const auto source = m_index.find(*m_element.source);
    const auto target = m_index.find(*m_element.target);
    if (!source || !target) {
        m_openEdges.push_back(
            {m_graph.edges.size(), m_element.line, *m_element.source, *m_element.target});
    }
    m_graph.edges.push_back({source.value_or(0), target.value_or(0),
                             static_cast<std::uint32_t>(first),
                             static_cast<std::uint32_t>(m_graph.attributes.size() - first)});
    return true;
}

bool GmlReader::resolve(std::size_t edge, std::int64_t line, std::int64_t source,
                        std::int64_t target) {
    for (const bool isSource : {true, false}) {
        const std::int64_t id = isSource ? source : target;
        const std::optional<std::uint32_t> node = m_index.find(id);
        if (!node) {
            return fail(line, {isSource ? "the source of the edge is no node: %s"
                                        : "the target of the edge is no node: %s",
                               {std::to_string(id)}});
        }
        (isSource ? m_graph.edges[edge].source : m_graph.edges[edge].target) = *node;
    }
    return true;
}

bool GmlReader::finishFile() {
    if (m_levels.size() > 1) {
        return fail(m_levels.back().line, "the list that begins here is not closed");
    }
    if (!m_hasGraph) return fail(0, "the file holds no graph");
    for (const auto& [edge, line, source, target] : m_openEdges) {
        if (!resolve(edge, line, source, target)) return false;
    }
    return true;
}

}  // namespace

Message GmlResult::problemIn(const std::string& fileName) const {
    return placed(fileName, line, message);
}

std::vector<Message> GmlResult::remarksIn(const std::string& fileName) const {
    std::vector<Message> all;
    for (const auto& [remarkLine, remark] : remarks) {
        all.push_back(placed(fileName, remarkLine, remark));
    }
    if (remarkCount > remarks.size()) {
        const std::string rest = std::to_string(remarkCount - remarks.size());
        all.push_back(placed(fileName, 0, {"and %s more", {rest}}));
    }
    return all;
}

const char kNoMemoryForGraph[] =
    "there is not enough memory for this graph: close other models and programs";

GmlResult readGml(const std::string& fileName, Graph& graph, const Progress& progress) {
    const FileScan scan = scanTextFile(fileName);
    if (scan.problem) {
        return {GmlResult::Status::failed, scan.problem->line, scan.problem->message, {}, 0};
    }
    try {
        graph.attributes.reserve(static_cast<std::size_t>(scan.size / kBytesPerAttribute));
        GmlLexer lexer(fileName, scan);
        return GmlReader(lexer, graph, progress).run();
    } catch (const std::bad_alloc&) {
        return {GmlResult::Status::failed, 0, kNoMemoryForGraph, {}, 0};
    }
}

}  // namespace zelhost
