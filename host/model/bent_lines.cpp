#include "model/bent_lines.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "model/ascending_fit.h"
#include "model/edge_lines.h"

namespace zelhost {

namespace {

constexpr double kInset = 6;    // from the corner of a box to a line
constexpr double kPortGap = 8;  // between lines at a box: their heads lie side by side
constexpr double kTiny = 1e-6;  // no distance

// Draws the lines along the skeleton: down through a layer, across the gap to the next. So no line
// comes near a box that is not its own, unless its layer is wrapped.
class LineDrawer {
public:
    LineDrawer(const Skeleton& skeleton, const std::vector<Box>& boxes,
               const std::vector<double>& heights, std::span<const double> lanes)
        : m_skeleton(skeleton), m_boxes(boxes), m_heights(heights) {
        choosePorts(lanes);
    }

    // From the upper box to the lower; valid until the next call.
    std::span<Point> draw(std::size_t link);

private:
    // Where a link touches its boxes.
    struct Ports {
        double upper;
        double lower;
    };
    // One end of a link.
    struct End {
        std::uint32_t box;
        bool isAbove;  // of the box
        double* port;
    };

    Ports wishOf(std::size_t link, double lane) const;
    void choosePorts(std::span<const double> lanes);
    void spread(std::span<const End> ends);
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
    std::vector<Ports> m_ports;  // of each link
    std::vector<Point> m_line;
    AscendingFit m_fit;
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

LineDrawer::Ports LineDrawer::wishOf(std::size_t link, double lane) const {
    const auto [upper, lower] = m_skeleton.links[link];
    const std::uint32_t first = m_skeleton.firstBend[link];
    const std::uint32_t end = m_skeleton.firstBend[link + 1];
    const Box& from = m_boxes[upper];
    const Box& to = m_boxes[lower];
    if (first != end) {
        return {portTowardsBend(from, m_boxes[first].center.x),
                portTowardsBend(to, m_boxes[end - 1].center.x)};
    }
    lane = laneWithin(laneWithin(lane, from.size.width), to.size.width);
    return {portTowards(from, to, lane), portTowards(to, from, lane)};
}

void LineDrawer::choosePorts(std::span<const double> lanes) {
    m_ports.resize(lanes.size());
    std::vector<End> ends;
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        if (m_skeleton.isStraight(i)) continue;
        m_ports[i] = wishOf(i, lanes[i]);
        ends.push_back({m_skeleton.links[i].from, false, &m_ports[i].upper});
        ends.push_back({m_skeleton.links[i].to, true, &m_ports[i].lower});
    }
    const auto side = [](const End& end) { return std::pair(end.box, end.isAbove); };
    std::ranges::stable_sort(ends, [&](const End& a, const End& b) {
        return std::pair(side(a), *a.port) < std::pair(side(b), *b.port);
    });
    for (std::size_t first = 0; first < ends.size();) {
        std::size_t end = first + 1;
        while (end < ends.size() && side(ends[end]) == side(ends[first])) ++end;
        spread(std::span(ends).subspan(first, end - first));
        first = end;
    }
}

// Draws apart the ends at one side of a box, given from the left, as far as there is room.
void LineDrawer::spread(std::span<const End> ends) {
    const Box& box = m_boxes[ends[0].box];
    const double most = std::max(0.0, box.size.width / 2 - kInset);
    const auto gaps = static_cast<double>(ends.size() - 1);
    const double gap = std::min(kPortGap, 2 * most / std::max(1.0, gaps));
    m_fit.clear();
    double shift = 0;
    for (const End& end : ends) {
        m_fit.add(*end.port - shift, 1);
        shift += gap;
    }
    const double low = std::min(box.center.x - most, *ends.front().port);
    const double high = std::max(box.center.x + most, *ends.back().port) - gap * gaps;
    std::size_t i = 0;
    m_fit.giveTo([&](double x) {
        *ends[i].port = std::clamp(x, low, std::max(low, high)) + gap * static_cast<double>(i);
        ++i;
    });
}

std::span<Point> LineDrawer::draw(std::size_t link) {
    const auto [upper, lower] = m_skeleton.links[link];
    const std::uint32_t first = m_skeleton.firstBend[link];
    const std::uint32_t end = m_skeleton.firstBend[link + 1];
    const Box& from = m_boxes[upper];
    const Box& to = m_boxes[lower];
    const auto [start, stop] = m_ports[link];
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
    LineDrawer drawer(skeleton, boxes, heights, lanes);
    Polylines lines;
    for (std::size_t i = 0; i < links.size(); ++i) {
        if (skeleton.isStraight(i)) {
            lines.add({});
            continue;
        }
        const std::span<Point> line = drawer.draw(i);
        if (skeleton.links[i].from != links[i].from) std::ranges::reverse(line);
        lines.add(line);
    }
    return lines;
}

}  // namespace zelhost
