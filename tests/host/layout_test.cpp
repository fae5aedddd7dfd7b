#include "model/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "host/graph_text.h"
#include "host/layout_geometry.h"
#include "model/edge_lines.h"
#include "support/temp_dir.h"

using zelhost::Box;
using zelhost::Graph;
using zelhost::Layout;
using zelhost::Point;
using zelhost::Size;

namespace {

// A line of text for each "\n".
Size measured(std::string_view caption) {
    const auto breaks = static_cast<double>(std::ranges::count(caption, '\n'));
    return {20 + 7 * static_cast<double>(caption.size()), 26 + 16 * breaks};
}

Layout layoutOf(const std::string& gml) { return zelhost::layOut(graphOf(gml), measured); }

std::string nodes(int count) {
    std::string gml;
    for (int i = 0; i < count; ++i) gml += " node [ id " + std::to_string(i) + " ]\n";
    return gml;
}

std::string edge(int from, int to) {
    return " edge [ source " + std::to_string(from) + " target " + std::to_string(to) + " ]\n";
}

void expectRoomForBoxes(const Layout& layout) {
    for (std::size_t i = 0; i < layout.boxes.size(); ++i) {
        const Box& box = layout.boxes[i];
        EXPECT_TRUE(box.left() > 0 && box.top() > 0 && box.right() < layout.size.width &&
                    box.bottom() < layout.size.height)
            << i;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(overlap(box, layout.boxes[k])) << k << " and " << i;
        }
    }
}

// What must hold for every picture in layers.
void expectReadable(const Layout& layout, const Graph& graph) {
    ASSERT_EQ(layout.boxes.size(), graph.nodes.size());
    ASSERT_EQ(layout.lines.size(), graph.edges.size());
    expectRoomForBoxes(layout);
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        const std::span<const Point> line = layout.lines[i];
        const std::uint32_t source = graph.edges[i].source;
        const std::uint32_t target = graph.edges[i].target;
        ASSERT_GE(line.size(), 2u) << i;
        EXPECT_TRUE(isOnBorder(layout.boxes[source], line.front())) << i;
        EXPECT_TRUE(isOnBorder(layout.boxes[target], line.back())) << i;
        for (const Point& point : line) {
            EXPECT_TRUE(point.x > 0 && point.y > 0 && point.x < layout.size.width &&
                        point.y < layout.size.height)
                << i;
        }
        for (std::uint32_t k = 0; k < layout.boxes.size(); ++k) {
            EXPECT_FALSE(passesThrough(line, layout.boxes[k])) << "edge " << i << " through " << k;
        }
    }
}

std::string orderModel() { return readFile(ZBASIC_FIXTURES "/../../host/models/order.gml"); }

}  // namespace

TEST(Layout, KeepsBoxesApartAndLinesAtTheirBorders) {
    std::string grid = nodes(60);
    for (int i = 0; i < 60; ++i) grid += edge(i, (i * 7 + 3) % 60) + edge(i, (i * 11 + 5) % 60);
    const auto box = [](int id, const std::string& caption) {
        return " node [ id " + std::to_string(id) + " label \"" + caption + "\" ]\n";
    };
    std::string layers;  // of boxes of many widths and heights, most edges long
    for (int i = 0; i < 40; ++i) {
        layers += box(i, std::string(static_cast<std::size_t>(i * 7 % 11), 'x') +
                             std::string(static_cast<std::size_t>(i % 4), '\n'));
    }
    std::mt19937 random(5);
    for (int i = 1; i < 40; ++i) {
        layers += edge(static_cast<int>(random() % static_cast<unsigned>(i)), i);
        layers += edge(std::max(0, i - 1 - static_cast<int>(random() % 4)), i);
    }
    const std::string wide(60, 'x');
    const std::string high(8, '\n');
    const std::string cross = edge(0, 2) + edge(0, 3) + edge(1, 2) + edge(1, 3);
    std::string star = nodes(40);
    for (int i = 1; i < 40; ++i) star += edge(0, i);
    const struct {
        const char* why;
        std::string gml;
    } cases[] = {
        {"nothing", ""},
        {"one node with a loop", nodes(1) + edge(0, 0)},
        {"no edges", nodes(50)},
        {"a circle", nodes(3) + edge(0, 1) + edge(1, 2) + edge(2, 0)},
        {"there and back, twice", nodes(2) + edge(0, 1) + edge(1, 0) + edge(0, 1)},
        {"many to one", star},
        {"crossing", grid},
        {"long edges past high boxes", layers},
        {"from beside a high box",
         box(0, "a") + box(1, high) + box(2, wide) + box(3, wide) + cross},
        {"to beside a high box", box(0, wide) + box(1, wide) + box(2, "a") + box(3, high) + cross},
        {"parts and loners", nodes(9) + edge(0, 1) + edge(2, 3) + edge(3, 4) + edge(6, 6)},
    };
    for (const auto& [why, gml] : cases) {
        SCOPED_TRACE(why);
        const Graph graph = graphOf("graph [" + gml + "]");
        expectReadable(zelhost::layOut(graph, measured), graph);
    }
}

TEST(Layout, PointsEdgesDown) {
    const std::string gml =
        nodes(7) + edge(0, 1) + edge(1, 2) + edge(0, 2) + edge(2, 3) + edge(4, 3) + edge(5, 6);
    const Layout layout = layoutOf("graph [" + gml + "]");
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        EXPECT_LT(layout.lines[i].front().y, layout.lines[i].back().y);
    }
    EXPECT_EQ(layout.boxes[4].center.y, layout.boxes[2].center.y);  // directly above its successor
    EXPECT_EQ(layout.boxes[5].center.y, layout.boxes[0].center.y);  // a part of its own, beside
}

TEST(Layout, LeadsEdgesOfTheSampleRoundBoxes) {
    const Graph graph = graphOf(orderModel());
    const Layout layout = zelhost::layOut(graph, measured);
    expectReadable(layout, graph);
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        const Point label = zelhost::labelPlace(layout.lines[i]);
        const Box text = {label, {40, 12}};
        for (const Box& box : layout.boxes) EXPECT_FALSE(overlap(text, box)) << i;
    }
    // From "Reject the order" down to "Order closed", six layers of nothing else aside.
    const std::span<const Point> longest = layout.lines[graph.edges.size() - 1];
    EXPECT_LE(longest.size(), 3u);
}

// Aside, down and back: nothing needs more than four points.
TEST(Layout, KeepsLongEdgesStraight) {
    using Edges = std::vector<std::pair<int, int>>;
    const struct {
        const char* why;
        Edges edges;
    } cases[] = {
        {"two past a chain",
         {{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}, {6, 7}, {7, 8}, {8, 9}, {0, 9}, {1, 8}}},
        {"side by side, of unequal length",
         {{0, 1},
          {0, 2},
          {2, 3},
          {1, 4},
          {4, 5},
          {0, 6},
          {6, 7},
          {5, 8},
          {2, 9},
          {1, 8},
          {4, 9},
          {0, 9},
          {0, 6}}},
        {"to one node from many layers",
         {{0, 1},
          {1, 2},
          {2, 3},
          {0, 4},
          {0, 5},
          {2, 6},
          {5, 7},
          {6, 8},
          {6, 9},
          {5, 8},
          {4, 9},
          {5, 9},
          {3, 6}}},
    };
    for (const auto& [why, edges] : cases) {
        SCOPED_TRACE(why);
        std::string gml = nodes(10);
        for (const auto& [from, to] : edges) gml += edge(from, to);
        const Layout layout = layoutOf("graph [" + gml + "]");
        for (std::size_t i = 0; i < edges.size(); ++i) EXPECT_LE(layout.lines[i].size(), 4u) << i;
    }
}

TEST(Layout, DrawsEdgesBetweenTheSameNodesSideBySide) {
    const std::string given =
        " node [ id 0 graphics [ x 0 y 0 ] ] node [ id 1 graphics [ x 90 y 200 ] ]";
    const struct {
        const char* why;
        std::string gml;
    } cases[] = {
        {"there and back", nodes(2) + edge(0, 1) + edge(1, 0)},
        {"doubled", nodes(2) + edge(0, 1) + edge(0, 1)},
        {"doubled, turned round", nodes(3) + edge(2, 1) + edge(2, 1) + edge(1, 0) + edge(0, 2)},
        {"past a box", nodes(3) + edge(0, 2) + edge(2, 0) + edge(0, 1) + edge(1, 2)},
        {"far aside", nodes(9) + edge(0, 8) + edge(8, 0) + edge(0, 1) + edge(0, 2) + edge(0, 3) +
                          edge(0, 4) + edge(0, 5) + edge(0, 6) + edge(0, 7)},
        {"at given places", given + edge(0, 1) + edge(1, 0)},
        {"at given places, doubled", given + edge(1, 0) + edge(1, 0)},
    };
    for (const auto& [why, gml] : cases) {
        SCOPED_TRACE(why);
        const Layout layout = layoutOf("graph [" + gml + "]");
        const Point one = zelhost::labelPlace(layout.lines[0]);
        const Point two = zelhost::labelPlace(layout.lines[1]);
        EXPECT_GT(std::hypot(one.x - two.x, one.y - two.y), 4);
    }
}

TEST(Layout, TakesGivenPositions) {
    const auto node = [](int id, const std::string& position) {
        return " node [ id " + std::to_string(id) + " graphics [ " + position + " ] ]";
    };
    const std::string three =
        node(1, "x 0 y 0") + node(2, "x 300.0 y -100") + node(3, "y 200 x 300");
    const Layout layout = layoutOf("graph [" + three + "]");
    EXPECT_DOUBLE_EQ(layout.boxes[1].center.x - layout.boxes[0].center.x, 300);
    EXPECT_DOUBLE_EQ(layout.boxes[1].center.y - layout.boxes[0].center.y, -100);
    EXPECT_DOUBLE_EQ(layout.boxes[2].center.y - layout.boxes[1].center.y, 300);

    // In the unit square boxes would lie on one another: same shape, drawn apart.
    const Layout small = layoutOf("graph [" + node(1, "x 0 y 0") + node(2, "x 1 y .5") + "]");
    const double dx = small.boxes[1].center.x - small.boxes[0].center.x;
    EXPECT_FALSE(overlap(small.boxes[0], small.boxes[1]));
    EXPECT_NEAR(small.boxes[1].center.y - small.boxes[0].center.y, dx / 2, kTiny);

    // Far apart, boxes would be too small to see.
    const Layout large =
        layoutOf("graph [" + node(1, "x -1e6 y 0") + node(2, "x 1.0e+6 y 5") + "]");
    EXPECT_LT(large.size.width, 5000);
}

TEST(Layout, PlacesNodesWithoutPositionBelowTheOthers) {
    const std::string two =
        " node [ id 1 graphics [ x 0 y 0 ] ] node [ id 2 graphics [ x 200 y 300 ] ]";
    const Layout layout =
        layoutOf("graph [" + two + " node [ id 3 ] node [ id 4 graphics [ x 5 ] ] ]");
    for (const std::size_t i : {2u, 3u}) EXPECT_GT(layout.boxes[i].top(), layout.boxes[1].bottom());
    EXPECT_FALSE(overlap(layout.boxes[2], layout.boxes[3]));

    // When most have none, or one that is no place, none counts.
    const std::string one =
        " node [ id 1 graphics [ x 5 y 7000 ] ] node [ id 2 graphics [ x 1 y \"2\" ] ]"
        " node [ id 3 graphics [ x 1e300 y 0 ] ]";
    const Layout layered = layoutOf("graph [" + one + "]");
    EXPECT_EQ(layered.boxes[0].center.y, layered.boxes[1].center.y);
}

// With a place in each layer for each of them, half a million places would be needed.
TEST(Layout, DrawsTheLongestOfVeryManyLongEdgesStraight) {
    constexpr std::uint32_t kCount = 1000;
    Graph graph;
    for (std::uint32_t i = 0; i < kCount; ++i) graph.nodes.push_back({i, 0, 0});
    for (std::uint32_t i = 1; i < kCount; ++i) {
        graph.edges.push_back({i - 1, i, 0, 0});
        graph.edges.push_back({0, i, 0, 0});
    }
    const Layout layout = zelhost::layOut(graph, measured);
    EXPECT_EQ(layout.lines[2 * kCount - 3].size(), 2u);
    for (std::uint32_t k = 1; k < 99; ++k) {
        EXPECT_FALSE(passesThrough(layout.lines[2 * 99 - 1], layout.boxes[k])) << k;
    }
}

TEST(Layout, WrapsWideLayers) {
    constexpr int kLeaves = 3000;
    std::string star = nodes(kLeaves + 1);
    for (int i = 1; i <= kLeaves; ++i) star += edge(0, i);
    std::string tree = nodes(1 + 50 + 2500 + 1);  // and a line past its widest layer
    for (int i = 1; i <= 2550; ++i) tree += edge(i <= 50 ? 0 : (i - 51) / 50 + 1, i);
    tree += edge(51, 2551) + edge(0, 2551);
    const std::string wide(900, 'x');  // wider than a row is to be
    std::string oneWide = star + " node [ id 9999 label \"" + wide + "\" ]" + edge(1, 9999);
    for (const std::string& gml : {star, tree, oneWide}) {
        const Graph graph = graphOf("graph [" + gml + "]");
        const Layout layout = zelhost::layOut(graph, measured);
        EXPECT_LT(layout.size.width, 4 * layout.size.height);
        EXPECT_LT(layout.size.height, 4 * layout.size.width);
        expectRoomForBoxes(layout);
        for (std::size_t i = 0; i < layout.lines.size(); ++i) {
            const std::span<const Point> line = layout.lines[i];
            EXPECT_TRUE(isOnBorder(layout.boxes[graph.edges[i].source], line.front())) << i;
            EXPECT_TRUE(isOnBorder(layout.boxes[graph.edges[i].target], line.back())) << i;
            EXPECT_LT(line.front().y, line.back().y) << i;
        }
    }
}

TEST(Layout, KeepsTheHeadsOfEdgesApart) {
    std::string gml = nodes(12);
    for (int i = 0; i < 10; ++i) gml += edge(i, i + 1) + edge(i, 11);
    const Graph graph = graphOf("graph [" + gml + " node [ id 99 ]" + edge(10, 11) + "]");
    const Layout layout = zelhost::layOut(graph, measured);
    std::vector<double> heads;
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        if (graph.edges[i].target == 11) heads.push_back(layout.lines[i].back().x);
    }
    std::ranges::sort(heads);
    ASSERT_EQ(heads.size(), 11u);
    const double room = layout.boxes[11].size.width - 12;  // without the corners
    for (std::size_t i = 1; i < heads.size(); ++i) {
        EXPECT_GT(heads[i] - heads[i - 1], room / 10 - kTiny) << i;
    }
}

TEST(Layout, WalksDeepAndWideGraphs) {
    constexpr std::uint32_t kCount = 100000;
    Graph chain;
    for (std::uint32_t i = 0; i < kCount; ++i) chain.nodes.push_back({i, 0, 0});
    for (std::uint32_t i = 0; i < kCount; ++i) chain.edges.push_back({i, (i + 1) % kCount, 0, 0});
    const Layout layout = zelhost::layOut(chain, measured);
    EXPECT_GT(layout.boxes[kCount - 1].center.y, 26.0 * kCount);
}
