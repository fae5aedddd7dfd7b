#include "graph_figures.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>
#include <unordered_map>
#include <utility>

namespace figures {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kMostIds = 12;  // of a path that is shown

std::string_view nextLine(std::string_view& text) {
    const std::size_t size = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, size);
    text.remove_prefix(std::min(size + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// The number of an entry such as "    id 7"; nothing for another one.
std::optional<std::int64_t> numberOf(std::string_view line, std::string_view entry) {
    if (!line.starts_with(entry)) return std::nullopt;
    std::int64_t number = 0;
    const char* const end = line.data() + line.size();
    const auto [stop, error] = std::from_chars(line.data() + entry.size(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

// A tree of the nodes that are known to belong together.
class Groups {
public:
    explicit Groups(std::size_t count) : m_parents(count) {
        std::iota(m_parents.begin(), m_parents.end(), std::size_t{0});
    }
    // False when they belong together already.
    bool join(std::size_t a, std::size_t b) {
        a = top(a);
        b = top(b);
        m_parents[a] = b;
        return a != b;
    }

private:
    std::size_t top(std::size_t node) {
        while (m_parents[node] != node) node = m_parents[node] = m_parents[m_parents[node]];
        return node;
    }

    std::vector<std::size_t> m_parents;
};

// The neighbours of each node, behind each other.
class Neighbours {
public:
    Neighbours(const Graph& graph, bool isBothWays) : m_starts(graph.ids.size() + 1) {
        for (const Edge& edge : graph.edges) {
            ++m_starts[edge.source];
            if (isBothWays) ++m_starts[edge.target];
        }
        std::exclusive_scan(m_starts.begin(), m_starts.end(), m_starts.begin(), std::size_t{0});
        m_all.resize(m_starts.back());
        std::vector<std::size_t> places(m_starts);
        for (const Edge& edge : graph.edges) {
            m_all[places[edge.source]++] = edge.target;
            if (isBothWays) m_all[places[edge.target]++] = edge.source;
        }
    }
    auto begin(std::size_t node) const { return m_all.begin() + at(node); }
    auto end(std::size_t node) const { return m_all.begin() + at(node + 1); }

private:
    std::ptrdiff_t at(std::size_t node) const {
        return static_cast<std::ptrdiff_t>(m_starts[node]);
    }

    std::vector<std::size_t> m_starts;
    std::vector<std::size_t> m_all;
};

std::vector<std::size_t> pathTo(std::size_t last, const std::vector<std::size_t>& before) {
    std::vector<std::size_t> path;
    for (std::size_t node = last; node != kNone; node = before[node]) path.push_back(node);
    std::ranges::reverse(path);
    return path;
}

// Nodes are taken when all edges to them are; those on a cycle never are.
std::vector<std::size_t> longestDirectedPath(const Graph& graph) {
    const std::size_t count = graph.ids.size();
    const Neighbours followers(graph, false);
    std::vector<std::size_t> waiting(count), length(count), before(count, kNone), order;
    for (const Edge& edge : graph.edges) ++waiting[edge.target];
    for (std::size_t node = 0; node < count; ++node) {
        if (waiting[node] == 0) order.push_back(node);
    }
    for (std::size_t done = 0; done < order.size(); ++done) {
        const std::size_t node = order[done];
        for (auto next = followers.begin(node); next != followers.end(node); ++next) {
            if (length[node] + 1 > length[*next]) {
                length[*next] = length[node] + 1;
                before[*next] = node;
            }
            if (--waiting[*next] == 0) order.push_back(*next);
        }
    }
    if (order.size() < count) return {};
    const auto last = std::ranges::max_element(length) - length.begin();
    return pathTo(static_cast<std::size_t>(last), before);
}

// The tree of `start`, nearer nodes first; `before` leads back to it.
std::vector<std::size_t> walkTree(std::size_t start, const Neighbours& neighbours,
                                  std::vector<std::size_t>& before) {
    std::vector<std::size_t> order = {start};
    before[start] = kNone;
    for (std::size_t done = 0; done < order.size(); ++done) {
        const std::size_t node = order[done];
        for (auto next = neighbours.begin(node); next != neighbours.end(node); ++next) {
            if (*next == before[node]) continue;
            before[*next] = node;
            order.push_back(*next);
        }
    }
    return order;
}

// In a tree, a longest path begins at the node that is farthest from any other.
std::vector<std::size_t> longestPathOfTrees(const Graph& graph) {
    const std::size_t count = graph.ids.size();
    Groups seen(count);
    for (const Edge& edge : graph.edges) {
        if (!seen.join(edge.source, edge.target)) return {};
    }
    const Neighbours neighbours(graph, true);
    std::vector<std::size_t> before(count, kNone), longest;
    std::vector<bool> isDone(count);
    for (std::size_t node = 0; node < count; ++node) {
        if (isDone[node]) continue;
        const std::vector<std::size_t> tree = walkTree(node, neighbours, before);
        for (const std::size_t member : tree) isDone[member] = true;
        const std::size_t last = walkTree(tree.back(), neighbours, before).back();
        std::vector<std::size_t> path = pathTo(last, before);
        if (path.size() > longest.size()) longest = std::move(path);
    }
    return longest;
}

struct Words {
    const char* nodes;
    const char* edges;
    const char* components;
    const char* degree;
    const char* node;  // one of them
    const char* edge;
    const char* longestPath;
    const char* none;
    const char* noneForCycle;
};

constexpr Words kEnglish = {
    .nodes = "nodes",
    .edges = "edges",
    .components = "components",
    .degree = "degree",
    .node = "node",
    .edge = "edge",
    .longestPath = "longest path",
    .none = "none",
    .noneForCycle = "none, as the graph has a cycle",
};
constexpr Words kGerman = {
    .nodes = "Knoten",
    .edges = "Kanten",
    .components = "Komponenten",
    .degree = "Grad",
    .node = "Knoten",
    .edge = "Kante",
    .longestPath = "l\xE4ngster Weg",
    .none = "keiner",
    .noneForCycle = "keiner, denn der Graph hat einen Kreis",
};

std::string counted(std::size_t count, const char* one, const char* several) {
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string pathText(const Graph& graph, const std::vector<std::size_t>& path, const Words& words) {
    if (path.empty()) return graph.ids.empty() ? words.none : words.noneForCycle;
    std::string text = counted(path.size() - 1, words.edge, words.edges) + " (" + words.nodes;
    for (std::size_t i = 0; i < std::min(path.size(), kMostIds); ++i) {
        text += " " + std::to_string(graph.ids[path[i]]);
    }
    return text + (path.size() > kMostIds ? " ...)" : ")");
}

}  // namespace

Graph readGraph(std::string_view gml) {
    Graph graph;
    std::unordered_map<std::int64_t, std::size_t> places;
    std::vector<std::pair<std::int64_t, std::int64_t>> edges;
    bool isInGraph = false;  // or beside it, where lists may look the same
    bool isInText = false;
    bool isNode = false;
    while (!gml.empty()) {
        const std::string_view line = nextLine(gml);
        const bool isOfText = isInText;
        // Quotation marks within a text are encoded.
        if (std::ranges::count(line, '"') % 2 != 0) isInText = !isInText;
        if (isOfText) continue;
        if (line == "graph [" || line == "]") {
            isInGraph = line == "graph [";
        } else if (!isInGraph) {
            continue;
        } else if (line == "  node [" || line == "  edge [") {
            isNode = line == "  node [";
            if (!isNode) edges.emplace_back();
        } else if (const auto id = numberOf(line, "    id "); id && isNode) {
            if (places.emplace(*id, graph.ids.size()).second) graph.ids.push_back(*id);
        } else if (const auto source = numberOf(line, "    source "); source && !edges.empty()) {
            edges.back().first = *source;
        } else if (const auto target = numberOf(line, "    target "); target && !edges.empty()) {
            edges.back().second = *target;
        } else if (const auto directed = numberOf(line, "  directed ")) {
            graph.isDirected = *directed != 0;
        }
    }
    for (const auto& [source, target] : edges) {
        const auto from = places.find(source), to = places.find(target);
        if (from != places.end() && to != places.end())
            graph.edges.push_back({from->second, to->second});
    }
    return graph;
}

std::size_t countComponents(const Graph& graph) {
    Groups groups(graph.ids.size());
    std::size_t count = graph.ids.size();
    for (const Edge& edge : graph.edges) {
        if (groups.join(edge.source, edge.target)) --count;
    }
    return count;
}

std::vector<std::size_t> degreeDistribution(const Graph& graph) {
    std::vector<std::size_t> degrees(graph.ids.size());
    for (const Edge& edge : graph.edges) {
        ++degrees[edge.source];
        ++degrees[edge.target];
    }
    std::vector<std::size_t> counts;
    for (const std::size_t degree : degrees) {
        if (degree >= counts.size()) counts.resize(degree + 1);
        ++counts[degree];
    }
    return counts;
}

std::vector<std::size_t> longestPath(const Graph& graph) {
    if (graph.ids.empty()) return {};
    return graph.isDirected ? longestDirectedPath(graph) : longestPathOfTrees(graph);
}

std::string report(const Graph& graph, Language language) {
    const Words& words = language == Language::german ? kGerman : kEnglish;
    std::string text;
    const auto add = [&](const std::string& name, const std::string& value) {
        text += name + ": " + value + "\n";
    };
    add(words.nodes, std::to_string(graph.ids.size()));
    add(words.edges, std::to_string(graph.edges.size()));
    add(words.components, std::to_string(countComponents(graph)));
    const std::vector<std::size_t> counts = degreeDistribution(graph);
    for (std::size_t degree = 0; degree < counts.size(); ++degree) {
        if (counts[degree] == 0) continue;
        add(words.degree + (" " + std::to_string(degree)),
            counted(counts[degree], words.node, words.nodes));
    }
    add(words.longestPath, pathText(graph, longestPath(graph), words));
    return text;
}

}  // namespace figures
