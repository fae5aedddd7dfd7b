#include "model/layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "host/graph_text.h"

using zelhost::Box;
using zelhost::Graph;
using zelhost::Layout;
using zelhost::Line;
using zelhost::Point;
using zelhost::Size;

namespace {

constexpr double kTiny = 1e-6;

Size measured(std::string_view caption) {
    return {20 + 7 * static_cast<double>(caption.size()), 26};
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

bool overlap(const Box& a, const Box& b) {
    return a.left() < b.right() - kTiny && b.left() < a.right() - kTiny &&
           a.top() < b.bottom() - kTiny && b.top() < a.bottom() - kTiny;
}

bool isOnBorder(const Box& box, Point point) {
    const double x = std::abs(point.x - box.center.x) / (box.size.width / 2);
    const double y = std::abs(point.y - box.center.y) / (box.size.height / 2);
    return std::abs(std::max(x, y) - 1) < kTiny;
}

// What must hold for every picture whose boxes have room.
void expectReadable(const Layout& layout, const Graph& graph) {
    ASSERT_EQ(layout.boxes.size(), graph.nodes.size());
    ASSERT_EQ(layout.lines.size(), graph.edges.size());
    for (std::size_t i = 0; i < layout.boxes.size(); ++i) {
        const Box& box = layout.boxes[i];
        EXPECT_TRUE(box.left() > 0 && box.top() > 0 && box.right() < layout.size.width &&
                    box.bottom() < layout.size.height)
            << i;
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(overlap(box, layout.boxes[k])) << k << " and " << i;
        }
    }
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        EXPECT_TRUE(isOnBorder(layout.boxes[graph.edges[i].source], layout.lines[i].from)) << i;
        const bool isLoop = graph.edges[i].source == graph.edges[i].target;
        EXPECT_TRUE(isLoop || isOnBorder(layout.boxes[graph.edges[i].target], layout.lines[i].to));
    }
}

}  // namespace

TEST(Layout, KeepsBoxesApartAndLinesAtTheirBorders) {
    std::string grid = nodes(60);
    for (int i = 0; i < 60; ++i) grid += edge(i, (i * 7 + 3) % 60) + edge(i, (i * 11 + 5) % 60);
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
    for (const Line& line : layout.lines) EXPECT_LT(line.from.y, line.to.y);
    EXPECT_EQ(layout.boxes[4].center.y, layout.boxes[2].center.y);  // directly above its successor
    EXPECT_EQ(layout.boxes[5].center.y, layout.boxes[0].center.y);  // a part of its own, beside
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

TEST(Layout, WalksDeepAndWideGraphs) {
    constexpr std::uint32_t kCount = 100000;
    Graph chain;
    for (std::uint32_t i = 0; i < kCount; ++i) chain.nodes.push_back({i, 0, 0});
    for (std::uint32_t i = 0; i < kCount; ++i) chain.edges.push_back({i, (i + 1) % kCount, 0, 0});
    const Layout layout = zelhost::layOut(chain, measured);
    EXPECT_GT(layout.boxes[kCount - 1].center.y, 26.0 * kCount);
}
