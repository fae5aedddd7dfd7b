#include "model/bent_lines.h"

#include <algorithm>
#include <cmath>

#include "model/edge_lines.h"

namespace zelhost {

namespace {

constexpr double kInset = 6;    // from the corner of a box to a line
constexpr double kTiny = 1e-6;  // no distance

// Draws the lines along the skeleton: down through a layer, across the gap to the next. So no line
// comes near a box that is not its own.
class LineDrawer {
public:
    LineDrawer(const Skeleton& skeleton, const std::vector<Box>& boxes,
               const std::vector<double>& heights)
        : m_skeleton(skeleton), m_boxes(boxes), m_heights(heights) {}

    // From the upper box to the lower; valid until the next call.
    std::span<Point> draw(std::size_t link, double lane);

private:
    double layerTop(std::uint32_t item) const {
        return m_boxes[item].center.y - m_heights[item] / 2;
    }
    double layerBottom(std::uint32_t item) const {
        return m_boxes[item].center.y + m_heights[item] / 2;
    }
    void add(Point point);

    const Skeleton& m_skeleton;
    const std::vector<Box>& m_boxes;
    const std::vector<double>& m_heights;
    std::vector<Point> m_line;
};

// Where the line to another box leaves this one.
double portTowards(const Box& box, const Box& other, double lane) {
    const double share = box.size.height / 2 / std::abs(other.center.y - box.center.y);
    const double most = std::max(0.0, box.size.width / 2 - kInset - std::abs(lane));
    const double distance = (other.center.x - box.center.x) * share;
    return box.center.x + std::clamp(distance, -most, most) + lane;
}

// Where the line to a bend leaves the box: straight above it or below, if it can.
double portTowardsBend(const Box& box, double x) {
    const double most = std::max(0.0, box.size.width / 2 - kInset);
    return std::clamp(x, box.center.x - most, box.center.x + most);
}

// A point on the way from the one before to the next is none of the line's corners.
void LineDrawer::add(Point point) {
    if (m_line.size() > 1) {
        const Point& start = m_line[m_line.size() - 2];
        Point& last = m_line.back();
        if (std::abs(start.x - last.x) < kTiny && std::abs(last.x - point.x) < kTiny) {
            last = point;
            return;
        }
    }
    m_line.push_back(point);
}

std::span<Point> LineDrawer::draw(std::size_t link, double lane) {
    const auto [upper, lower] = m_skeleton.links[link];
    const std::uint32_t first = m_skeleton.firstBend[link];
    const std::uint32_t end = m_skeleton.firstBend[link + 1];
    const Box& from = m_boxes[upper];
    const Box& to = m_boxes[lower];
    double start, stop;
    if (first == end) {
        lane = laneWithin(laneWithin(lane, from.size.width), to.size.width);
        start = portTowards(from, to, lane);
        stop = portTowards(to, from, lane);
    } else {
        start = portTowardsBend(from, m_boxes[first].center.x);
        stop = portTowardsBend(to, m_boxes[end - 1].center.x);
    }
    m_line.clear();
    m_line.push_back({start, from.bottom()});
    if (layerBottom(upper) > from.bottom() + kTiny) add({start, layerBottom(upper)});
    for (std::uint32_t bend = first; bend < end; ++bend) {
        add({m_boxes[bend].center.x, layerTop(bend)});
        add({m_boxes[bend].center.x, layerBottom(bend)});
    }
    if (layerTop(lower) < to.top() - kTiny) add({stop, layerTop(lower)});
    add({stop, to.top()});
    return m_line;
}

}  // namespace

Polylines bentLines(std::span<const Link> links, std::span<const double> lanes,
                    const Skeleton& skeleton, const std::vector<Box>& boxes,
                    const std::vector<double>& heights) {
    LineDrawer drawer(skeleton, boxes, heights);
    Polylines lines;
    for (std::size_t i = 0; i < links.size(); ++i) {
        if (skeleton.isStraight(i)) {
            lines.add({});
            continue;
        }
        const std::span<Point> line = drawer.draw(i, lanes[i]);
        if (skeleton.links[i].from != links[i].from) std::ranges::reverse(line);
        lines.add(line);
    }
    return lines;
}

}  // namespace zelhost
