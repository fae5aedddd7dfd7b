// Figures of a graph.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace figures {

struct Edge {
    std::size_t source;  // places of nodes
    std::size_t target;
};

struct Graph {
    bool isDirected = false;
    std::vector<std::int64_t> ids;  // of the nodes, as the file has them
    std::vector<Edge> edges;
};

// Reads GML as zelhost exports it: an entry a line, two blanks a level, `id`, `source` and `target`
// first. Anything else in it does not matter.
Graph readGraph(std::string_view gml);

// How many parts there are between which no edge leads, whatever its direction.
std::size_t countComponents(const Graph& graph);

// `[d]` is how many nodes are the end of `d` edges; a loop ends twice at its node.
std::vector<std::size_t> degreeDistribution(const Graph& graph);

// The nodes of a path with the most edges; of several one. Empty when there is no node, and in a
// graph with a cycle (in an undirected graph two edges between the same nodes are one, too).
std::vector<std::size_t> longestPath(const Graph& graph);

enum class Language { english, german };

// All of it as text in code page 1252, a figure a line.
std::string report(const Graph& graph, Language language);

}  // namespace figures
