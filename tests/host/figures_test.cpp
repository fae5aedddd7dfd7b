// Figures of graphs that can be counted by hand.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "figures/graph_figures.h"

using figures::Language;

namespace {

// "0>1 1>2" on nodes 0 to `count` - 1, whose ids are ten times their places.
figures::Graph graphOf(std::size_t count, const std::string& edges, bool isDirected) {
    std::string gml = "graph [\n" + std::string(isDirected ? "  directed 1\n" : "");
    for (std::size_t i = 0; i < count; ++i) {
        gml += "  node [\n    id " + std::to_string(i) + "0\n    label \"    id 7\"\n  ]\n";
    }
    for (std::size_t i = 0; i + 2 < edges.size() + 1 && !edges.empty(); i += 4) {
        gml += std::string("  edge [\n    source ") + edges[i] + "0\n    target " + edges[i + 2] +
               "0\n    weights [\n      source 5\n    ]\n  ]\n";
    }
    return figures::readGraph(gml + "]\n");
}

using Counts = std::vector<std::size_t>;

struct FigureCase {
    const char* why;
    std::size_t nodes;
    const char* edges;
    bool isDirected;
    std::size_t components;
    Counts degrees;  // how many nodes have degree 0, 1, 2 ...
    Counts path;
};

const FigureCase kFigures[] = {
    {"nothing", 0, "", true, 0, {}, {}},
    {"one node", 1, "", true, 1, {1}, {0}},
    {"a chain and a lone node", 4, "0>1 1>2", true, 2, {1, 2, 1}, {0, 1, 2}},
    {"the longer way round", 4, "0>3 0>1 1>2 2>3", true, 1, {0, 0, 4}, {0, 1, 2, 3}},
    {"against the order of the file", 3, "2>1 1>0", true, 1, {0, 2, 1}, {2, 1, 0}},
    {"a cycle", 3, "0>1 1>2 2>0", true, 1, {0, 0, 3}, {}},
    {"a loop", 2, "0>1 1>1", true, 1, {0, 1, 0, 1}, {}},
    {"double edges are no cycle when directed", 2, "0>1 0>1", true, 1, {0, 0, 2}, {0, 1}},
    {"a tree without directions",
     6,
     "5>0 0>1 2>1 1>3 3>4",
     false,
     1,
     {0, 3, 2, 1},
     {5, 0, 1, 3, 4}},
    {"a cycle without directions", 3, "0>1 1>2 0>2", false, 1, {0, 0, 3}, {}},
    {"double edges without directions", 2, "0>1 1>0", false, 1, {0, 0, 2}, {}},
    {"a loop without directions", 1, "0>0", false, 1, {0, 0, 1}, {}},
    {"edges to nodes that are not there", 1, "0>5 6>7", true, 1, {1}, {0}},
};

}  // namespace

TEST(Figures, AgreeWithCountsByHand) {
    for (const auto& [why, nodes, edges, isDirected, components, degrees, path] : kFigures) {
        SCOPED_TRACE(why);
        const figures::Graph graph = graphOf(nodes, edges, isDirected);
        EXPECT_EQ(graph.ids.size(), nodes);
        EXPECT_EQ(figures::countComponents(graph), components);
        EXPECT_EQ(figures::degreeDistribution(graph), degrees);
        Counts found = figures::longestPath(graph);
        if (!isDirected && found.size() > 1 && found.front() != path.front()) {
            found = Counts(found.rbegin(), found.rend());  // it has no direction
        }
        EXPECT_EQ(found, path);
    }
}

TEST(Figures, AreALineEach) {
    EXPECT_EQ(figures::report(graphOf(4, "0>1 1>2", true), Language::english),
              "nodes: 4\nedges: 2\ncomponents: 2\ndegree 0: 1 node\ndegree 1: 2 nodes\n"
              "degree 2: 1 node\nlongest path: 2 edges (nodes 0 10 20)\n");
    EXPECT_EQ(figures::report({}, Language::english),
              "nodes: 0\nedges: 0\ncomponents: 0\nlongest path: none\n");
    EXPECT_EQ(figures::report(graphOf(3, "0>1", true), Language::german),
              "Knoten: 3\nKanten: 1\nKomponenten: 2\nGrad 0: 1 Knoten\nGrad 1: 2 Knoten\n"
              "l\xE4ngster Weg: 1 Kante (Knoten 0 10)\n");
    figures::Graph chain{true, {}, {}};
    for (std::size_t i = 0; i < 100'000; ++i) {
        chain.ids.push_back(static_cast<std::int64_t>(i));
        if (i > 0) chain.edges.push_back({i - 1, i});
    }
    EXPECT_NE(figures::report(chain, Language::english)
                  .find("99999 edges (nodes 0 1 2 3 4 5 6 7 8 9 10 11 ...)"),
              std::string::npos);
    chain.isDirected = false;
    EXPECT_EQ(figures::longestPath(chain).size(), 100'000u);
}
