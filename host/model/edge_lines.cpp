#include "model/edge_lines.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace zelhost {

namespace {

constexpr double kLane = 14;  // between links of the same two nodes
constexpr double kLoop = 10;  // from a box to its loops
constexpr double kInset = 4;  // from the corners of a box, which are round

constexpr double kTiny = 1e-6;  // no distance

// How much of the way from `start`, which lies in the box, by (dx, dy) lies in the box.
double shareInside(const Box& box, Point start, double dx, double dy) {
    const double toSide = (dx < 0 ? box.left() : box.right()) - start.x;
    const double toEnd = (dy < 0 ? box.top() : box.bottom()) - start.y;
    return std::min(dx == 0 ? INFINITY : toSide / dx, dy == 0 ? INFINITY : toEnd / dy);
}

// To the right of the way by (dx, dy).
Point besides(Point point, double dx, double dy, double lane) {
    const double length = std::hypot(dx, dy);
    if (length == 0) return point;
    return {point.x - lane * dy / length, point.y + lane * dx / length};
}

}  // namespace

std::vector<double> lanesOf(std::span<const Link> links) {
    using Ends = std::pair<std::uint32_t, std::uint32_t>;
    const auto key = [&](std::uint32_t link) {
        return Ends(std::minmax(links[link].from, links[link].to));
    };
    std::vector<std::uint32_t> order(links.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, {}, key);
    std::vector<double> lanes(links.size());
    for (std::size_t first = 0; first < order.size();) {
        std::size_t end = first + 1;
        while (end < order.size() && key(order[end]) == key(order[first])) ++end;
        const double middle = static_cast<double>(end - first - 1) / 2;
        for (std::size_t i = first; i < end; ++i) {
            lanes[order[i]] = kLane * (static_cast<double>(i - first) - middle);
        }
        first = end;
    }
    return lanes;
}

double laneWithin(double lane, double extent) {
    const double most = std::max(0.0, extent / 2 - kInset);
    return std::clamp(lane, -most, most);
}

StraightLine lineBetween(const Box& from, const Box& to, double lane) {
    const double dx = to.center.x - from.center.x;
    const double dy = to.center.y - from.center.y;
    const auto shift = [&](const Box& box) {
        const double extent = std::min(box.size.width, box.size.height);
        return besides(box.center, dx, dy, laneWithin(lane, extent));
    };
    const Point start = shift(from);
    const Point end = shift(to);
    const double x = end.x - start.x;
    const double y = end.y - start.y;
    const double leaving = shareInside(from, start, x, y);
    const double arriving = 1 - shareInside(to, end, -x, -y);
    if (!(leaving < arriving)) return {from.center, to.center};
    return {Point{start.x + x * leaving, start.y + y * leaving},
            Point{start.x + x * arriving, start.y + y * arriving}};
}

LoopLine loopAt(const Box& box) {
    const double x = box.center.x + box.size.width / 4;
    const double y = box.center.y - box.size.height / 4;
    const double above = box.top() - kLoop;
    const double aside = box.right() + kLoop;
    return {Point{x, box.top()}, Point{x, above}, Point{aside, above}, Point{aside, y},
            Point{box.right(), y}};
}

Point labelPlace(std::span<const Point> line) {
    const auto height = [&](std::size_t i) { return std::abs(line[i + 1].y - line[i].y); };
    std::size_t i = 0;
    while (i + 1 < line.size() && height(i) < kLayerGap - kTiny) ++i;
    if (i + 1 == line.size()) i = 0;
    const Point& from = line[i];
    const Point& to = line[i + 1];
    const bool goesOn = std::abs(from.x - to.x) < kTiny && height(i) > kLayerGap;
    const double share = goesOn ? kLayerGap / 2 / height(i) : 0.5;
    return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

}  // namespace zelhost
