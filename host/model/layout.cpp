#include "model/layout.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "model/layered_layout.h"
#include "sv/string.h"

namespace zelhost {

namespace {

constexpr double kMargin = 16;
constexpr double kRoomPerBox = 4;  // area of the picture to the area of its boxes, at least
constexpr double kMostRoom = 20;   // side of the picture to the side of that area, at most
constexpr double kFarthest = 1e9;  // a coordinate beyond is none
constexpr double kBelow = 48;      // from the positioned nodes down to the others

std::optional<double> numberOf(const Graph& graph, AttributeSpan attributes, KeyId key) {
    const Attribute* const found = findAttribute(attributes, key);
    if (!found) return std::nullopt;
    if (found->type() == ValueType::integer) return static_cast<double>(found->integer());
    if (found->type() != ValueType::real) return std::nullopt;
    const double value = static_cast<double>(SV::String(graph.attributes.text(*found)));
    return value;
}

std::optional<Point> positionOf(const Graph& graph, const Node& node) {
    const Attribute* const graphics = findAttribute(graph.of(node), kGraphics);
    if (!graphics) return std::nullopt;
    const auto x = numberOf(graph, contentOf(*graphics), kX);
    const auto y = numberOf(graph, contentOf(*graphics), kY);
    if (!x || !y || std::abs(*x) > kFarthest || std::abs(*y) > kFarthest) return std::nullopt;
    return Point{*x, *y};
}

using Indices = std::vector<std::uint32_t>;

// How much positions must be drawn apart (or together) for the boxes to have room (or be seen).
double scaleFor(const std::vector<Box>& boxes, const Indices& nodes) {
    double area = 0;
    Point low{INFINITY, INFINITY};
    Point high{-INFINITY, -INFINITY};
    for (const std::uint32_t node : nodes) {
        const Box& box = boxes[node];
        area += box.size.width * box.size.height;
        low = {std::min(low.x, box.center.x), std::min(low.y, box.center.y)};
        high = {std::max(high.x, box.center.x), std::max(high.y, box.center.y)};
    }
    const double side = std::sqrt(area * kRoomPerBox);
    const double extent = std::max(high.x - low.x, high.y - low.y);
    if (extent <= 0 || side <= 0) return 1.0;
    return std::clamp(1.0, side / extent, kMostRoom * side / extent);
}

void moveBy(std::vector<Box>& boxes, const Indices& nodes, double x, double y) {
    for (const std::uint32_t node : nodes) {
        boxes[node].center.x += x;
        boxes[node].center.y += y;
    }
}

// The nodes without a position, in rows below the others.
void placeBelow(std::vector<Box>& boxes, const Indices& placed, const Indices& others) {
    if (others.empty()) return;
    std::vector<Indices> groups;
    for (const std::uint32_t node : others) groups.push_back({node});
    packGroups(groups, boxes);
    double left = INFINITY;
    double bottom = -INFINITY;
    for (const std::uint32_t node : placed) {
        left = std::min(left, boxes[node].left());
        bottom = std::max(bottom, boxes[node].bottom());
    }
    moveBy(boxes, others, left, bottom + kBelow);
}

// False when too few nodes bring a position.
bool placeAsGiven(const Graph& graph, std::vector<Box>& boxes) {
    Indices placed;
    Indices others;
    for (std::uint32_t i = 0; i < graph.nodes.size(); ++i) {
        const std::optional<Point> position = positionOf(graph, graph.nodes[i]);
        if (position) boxes[i].center = *position;
        (position ? placed : others).push_back(i);
    }
    if (placed.size() < others.size() || placed.empty()) return false;
    const double scale = scaleFor(boxes, placed);
    for (const std::uint32_t node : placed) {
        boxes[node].center = {boxes[node].center.x * scale, boxes[node].center.y * scale};
    }
    placeBelow(boxes, placed, others);
    return true;
}

// Moves everything behind the margin; the size of the picture.
Size fitIntoPicture(std::vector<Box>& boxes) {
    if (boxes.empty()) return {2 * kMargin, 2 * kMargin};
    Point low{INFINITY, INFINITY};
    Point high{-INFINITY, -INFINITY};
    for (const Box& box : boxes) {
        low = {std::min(low.x, box.left()), std::min(low.y, box.top())};
        high = {std::max(high.x, box.right()), std::max(high.y, box.bottom())};
    }
    for (Box& box : boxes) {
        box.center = {box.center.x - low.x + kMargin, box.center.y - low.y + kMargin};
    }
    return {high.x - low.x + 2 * kMargin, high.y - low.y + 2 * kMargin};
}

// How much of the way from its centre by (dx, dy) lies in the box.
double shareInside(const Box& box, double dx, double dy) {
    const double acrossWidth = dx == 0 ? INFINITY : box.size.width / 2 / std::abs(dx);
    const double acrossHeight = dy == 0 ? INFINITY : box.size.height / 2 / std::abs(dy);
    return std::min(acrossWidth, acrossHeight);
}

// Boxes that overlap are joined from centre to centre.
Line lineBetween(const Box& from, const Box& to) {
    const double dx = to.center.x - from.center.x;
    const double dy = to.center.y - from.center.y;
    const double start = shareInside(from, dx, dy);
    const double end = 1 - shareInside(to, dx, dy);
    if (!(start < end)) return {from.center, to.center};
    return {{from.center.x + dx * start, from.center.y + dy * start},
            {from.center.x + dx * end, from.center.y + dy * end}};
}

Line loopAt(const Box& box) {
    return {{box.center.x + box.size.width / 4, box.top()},
            {box.right(), box.center.y - box.size.height / 4}};
}

}  // namespace

Layout layOut(const Graph& graph, const MeasureCaption& measure) {
    Layout layout;
    layout.boxes.reserve(graph.nodes.size());
    for (const Node& node : graph.nodes) {
        layout.boxes.push_back({{0, 0}, measure(graph.caption(node))});
    }
    if (!placeAsGiven(graph, layout.boxes)) {
        std::vector<Link> links;
        links.reserve(graph.edges.size());
        for (const Edge& edge : graph.edges) links.push_back({edge.source, edge.target});
        layOutInLayers(links, layout.boxes);
    }
    layout.size = fitIntoPicture(layout.boxes);
    layout.lines.reserve(graph.edges.size());
    for (const Edge& edge : graph.edges) {
        const Box& from = layout.boxes[edge.source];
        const bool isLoop = edge.source == edge.target;
        layout.lines.push_back(isLoop ? loopAt(from)
                                      : lineBetween(from, layout.boxes[edge.target]));
    }
    return layout;
}

}  // namespace zelhost
