#include "model/layout.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "model/edge_lines.h"
#include "model/layered_layout.h"
#include "model/packing.h"
#include "sv/string.h"

namespace zelhost {

namespace {

constexpr double kMargin = 16;
constexpr double kRoomPerBox = 4;  // area of the picture to the area of its boxes, at least
constexpr double kMostRoom = 20;   // side of the picture to the side of that area, at most
constexpr double kFarthest = 1e9;  // a coordinate beyond is none
constexpr double kNearest = 1e-9;  // positions within that are one
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

void moveBy(std::vector<Box>& boxes, const Indices& nodes, double x, double y) {
    for (const std::uint32_t node : nodes) {
        boxes[node].center.x += x;
        boxes[node].center.y += y;
    }
}

// Draws positions apart (or together) until the boxes have room (or can be seen). First they go to
// the corner: far from it, large factors would leave no digits for the boxes.
void drawApart(std::vector<Box>& boxes, const Indices& nodes) {
    double area = 0;
    Point low{INFINITY, INFINITY};
    Point high{-INFINITY, -INFINITY};
    for (const std::uint32_t node : nodes) {
        const Box& box = boxes[node];
        area += box.size.width * box.size.height;
        low = {std::min(low.x, box.center.x), std::min(low.y, box.center.y)};
        high = {std::max(high.x, box.center.x), std::max(high.y, box.center.y)};
    }
    moveBy(boxes, nodes, -low.x, -low.y);
    const double side = std::sqrt(area * kRoomPerBox);
    const double extent = std::max(high.x - low.x, high.y - low.y);
    if (extent < kNearest || side <= 0) return;
    const double scale = std::clamp(1.0, side / extent, kMostRoom * side / extent);
    for (const std::uint32_t node : nodes) {
        boxes[node].center = {boxes[node].center.x * scale, boxes[node].center.y * scale};
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
    drawApart(boxes, placed);
    placeBelow(boxes, placed, others);
    return true;
}

// Moves everything behind the margin, and sets the size of the picture.
void fitIntoPicture(Layout& layout) {
    layout.size = {2 * kMargin, 2 * kMargin};
    if (layout.boxes.empty()) return;
    Point low{INFINITY, INFINITY};
    Point high{-INFINITY, -INFINITY};
    const auto include = [&](double left, double top, double right, double bottom) {
        low = {std::min(low.x, left), std::min(low.y, top)};
        high = {std::max(high.x, right), std::max(high.y, bottom)};
    };
    const auto move = [&](Point& point) {
        point = {point.x - low.x + kMargin, point.y - low.y + kMargin};
    };
    for (const Box& box : layout.boxes) include(box.left(), box.top(), box.right(), box.bottom());
    for (const Point& point : layout.lines.points()) include(point.x, point.y, point.x, point.y);
    for (Box& box : layout.boxes) move(box.center);
    for (Point& point : layout.lines.points()) move(point);
    layout.size.width += high.x - low.x;
    layout.size.height += high.y - low.y;
}

// All lines: those of `led`, which may be empty, and straight ones.
Polylines withStraightLines(const Polylines& led, std::span<const Link> links,
                            std::span<const double> lanes, const std::vector<Box>& boxes) {
    Polylines lines;
    for (std::size_t i = 0; i < links.size(); ++i) {
        const auto [from, to] = links[i];
        if (i < led.size() && !led[i].empty()) {
            lines.add(led[i]);
        } else if (from == to) {
            lines.add(loopAt(boxes[from]));
        } else {
            lines.add(lineBetween(boxes[from], boxes[to], from < to ? lanes[i] : -lanes[i]));
        }
    }
    return lines;
}

}  // namespace

Layout layOut(const Graph& graph, const MeasureCaption& measure) {
    Layout layout;
    layout.boxes.reserve(graph.nodes.size());
    for (const Node& node : graph.nodes) {
        layout.boxes.push_back({{0, 0}, measure(graph.caption(node))});
    }
    std::vector<Link> links;
    links.reserve(graph.edges.size());
    for (const Edge& edge : graph.edges) links.push_back({edge.source, edge.target});
    const std::vector<double> lanes = lanesOf(links);
    const bool isGiven = placeAsGiven(graph, layout.boxes);
    const Polylines led = isGiven ? Polylines() : layOutInLayers(links, lanes, layout.boxes);
    layout.lines = withStraightLines(led, links, lanes, layout.boxes);
    fitIntoPicture(layout);
    return layout;
}

}  // namespace zelhost
