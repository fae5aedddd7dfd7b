#include "model/layered_layout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zelhost {

namespace {

constexpr double kGap = 24;        // between boxes of a layer, and between groups
constexpr double kLayerGap = 48;   // between layers
constexpr double kRowShape = 1.6;  // width to height that rows of groups aim at
constexpr int kSweeps = 8;         // down and up alternately

// The neighbours of every node in one array.
class Neighbours {
public:
    enum class Side { from, to, both };

    Neighbours(std::size_t nodes, std::span<const Link> links, Side side) : m_first(nodes + 1) {
        const bool countsTo = side != Side::from;
        const bool countsFrom = side != Side::to;
        for (const auto& [from, to] : links) {
            if (countsTo) ++m_first[from + 1];
            if (countsFrom) ++m_first[to + 1];
        }
        std::partial_sum(m_first.begin(), m_first.end(), m_first.begin());
        m_all.resize(m_first.back());
        std::vector<std::uint32_t> next(m_first.begin(), m_first.end() - 1);
        for (const auto& [from, to] : links) {
            if (countsTo) m_all[next[from]++] = to;
            if (countsFrom) m_all[next[to]++] = from;
        }
    }

    std::span<const std::uint32_t> of(std::uint32_t node) const {
        return std::span(m_all).subspan(m_first[node], m_first[node + 1] - m_first[node]);
    }

private:
    std::vector<std::uint32_t> m_first;
    std::vector<std::uint32_t> m_all;
};

using Group = std::vector<std::uint32_t>;

std::vector<Group> connectedParts(std::size_t nodes, std::span<const Link> links) {
    const Neighbours neighbours(nodes, links, Neighbours::Side::both);
    std::vector<bool> isSeen(nodes);
    std::vector<Group> parts;
    for (std::uint32_t start = 0; start < nodes; ++start) {
        if (isSeen[start]) continue;
        isSeen[start] = true;
        Group& part = parts.emplace_back(Group{start});
        for (std::size_t i = 0; i < part.size(); ++i) {
            for (const std::uint32_t other : neighbours.of(part[i])) {
                if (isSeen[other]) continue;
                isSeen[other] = true;
                part.push_back(other);
            }
        }
    }
    return parts;
}

// Without loops, and with every link turned round that would close a circle: those are the ones
// that lead a depth-first walk back to a node that it has not left yet.
std::vector<Link> acyclicLinks(std::size_t nodes, std::span<const Link> links) {
    enum class State : std::uint8_t { unseen, entered, left };
    const Neighbours next(nodes, links, Neighbours::Side::to);
    std::vector<State> states(nodes, State::unseen);
    std::vector<std::uint32_t> place(nodes);  // of the next neighbour to walk to
    std::vector<std::uint32_t> path;
    std::vector<Link> result;
    result.reserve(links.size());
    for (std::uint32_t start = 0; start < nodes; ++start) {
        if (states[start] == State::unseen) path.push_back(start);
        while (!path.empty()) {
            const std::uint32_t node = path.back();
            states[node] = State::entered;
            if (place[node] == next.of(node).size()) {
                states[node] = State::left;
                path.pop_back();
                continue;
            }
            const std::uint32_t other = next.of(node)[place[node]++];
            if (other == node) continue;
            const bool closesCircle = states[other] == State::entered;
            result.push_back(closesCircle ? Link{other, node} : Link{node, other});
            if (states[other] == State::unseen) path.push_back(other);
        }
    }
    return result;
}

// Nodes without predecessor go directly above the first of their successors.
void pullDownSources(const Neighbours& next, std::span<const Link> links,
                     std::vector<std::uint32_t>& layers) {
    std::vector<bool> isTarget(layers.size());
    for (const auto& [from, to] : links) isTarget[to] = true;
    for (std::uint32_t node = 0; node < layers.size(); ++node) {
        const std::span<const std::uint32_t> successors = next.of(node);
        if (isTarget[node] || successors.empty()) continue;
        std::uint32_t first = layers[successors[0]];
        for (const std::uint32_t other : successors) first = std::min(first, layers[other]);
        layers[node] = first - 1;
    }
}

// The longest way from a node without predecessor.
std::vector<std::uint32_t> layersOf(std::size_t nodes, std::span<const Link> links) {
    const Neighbours next(nodes, links, Neighbours::Side::to);
    std::vector<std::uint32_t> waiting(nodes);  // predecessors without a layer
    for (const auto& [from, to] : links) ++waiting[to];
    std::vector<std::uint32_t> layers(nodes);
    std::vector<std::uint32_t> ready;
    for (std::uint32_t i = 0; i < nodes; ++i) {
        if (waiting[i] == 0) ready.push_back(i);
    }
    for (std::size_t i = 0; i < ready.size(); ++i) {
        for (const std::uint32_t other : next.of(ready[i])) {
            layers[other] = std::max(layers[other], layers[ready[i]] + 1);
            if (--waiting[other] == 0) ready.push_back(other);
        }
    }
    pullDownSources(next, links, layers);
    return layers;
}

// Places the boxes of connected parts, one after the other.
class LayerPlacer {
public:
    LayerPlacer(std::span<const Link> links, std::vector<Box>& boxes)
        : m_boxes(boxes),
          m_links(acyclicLinks(boxes.size(), links)),
          m_layerOf(layersOf(boxes.size(), m_links)),
          m_before(boxes.size(), m_links, Neighbours::Side::from),
          m_behind(boxes.size(), m_links, Neighbours::Side::to),
          m_wanted(boxes.size()) {}

    void place(const Group& part);

private:
    void sortIntoLayers(const Group& part);
    void placeInRow(Group& layer);
    void sweep(const Neighbours& fixed, Group& layer);
    double meanOf(std::uint32_t node, std::span<const std::uint32_t> others) const;
    void setWithoutOverlap(const Group& layer);
    void setHeights();

    std::vector<Box>& m_boxes;
    std::vector<Link> m_links;
    std::vector<std::uint32_t> m_layerOf;
    Neighbours m_before;
    Neighbours m_behind;
    std::vector<double> m_wanted;  // the x that suits the neighbours best
    std::vector<Group> m_layers;   // of the part that is being placed
};

void LayerPlacer::sortIntoLayers(const Group& part) {
    std::uint32_t last = 0;
    for (const std::uint32_t node : part) last = std::max(last, m_layerOf[node]);
    m_layers.assign(last + 1, {});
    for (const std::uint32_t node : part) m_layers[m_layerOf[node]].push_back(node);
}

void LayerPlacer::placeInRow(Group& layer) {
    double x = 0;
    for (const std::uint32_t node : layer) {
        m_boxes[node].center.x = x + m_boxes[node].size.width / 2;
        x += m_boxes[node].size.width + kGap;
    }
    for (const std::uint32_t node : layer) m_boxes[node].center.x -= (x - kGap) / 2;
}

double LayerPlacer::meanOf(std::uint32_t node, std::span<const std::uint32_t> others) const {
    if (others.empty()) return m_boxes[node].center.x;
    double sum = 0;
    for (const std::uint32_t other : others) sum += m_boxes[other].center.x;
    return sum / static_cast<double>(others.size());
}

void LayerPlacer::sweep(const Neighbours& fixed, Group& layer) {
    for (const std::uint32_t node : layer) m_wanted[node] = meanOf(node, fixed.of(node));
    std::ranges::stable_sort(layer, {}, [&](std::uint32_t node) { return m_wanted[node]; });
    setWithoutOverlap(layer);
}

// Between pushing right what overlaps and pushing it left: both keep the boxes apart, and so does
// the middle of the two.
void LayerPlacer::setWithoutOverlap(const Group& layer) {
    double limit = -INFINITY;
    for (const std::uint32_t node : layer) {
        Box& box = m_boxes[node];
        box.center.x = std::max(m_wanted[node], limit + box.size.width / 2);
        limit = box.right() + kGap;
    }
    limit = INFINITY;
    for (auto node = layer.rbegin(); node != layer.rend(); ++node) {
        Box& box = m_boxes[*node];
        const double x = std::min(m_wanted[*node], limit - box.size.width / 2);
        limit = x - box.size.width / 2 - kGap;
        box.center.x = (box.center.x + x) / 2;
    }
}

void LayerPlacer::setHeights() {
    double y = 0;
    for (const Group& layer : m_layers) {
        double height = 0;
        for (const std::uint32_t node : layer) {
            height = std::max(height, m_boxes[node].size.height);
        }
        for (const std::uint32_t node : layer) m_boxes[node].center.y = y + height / 2;
        y += height + kLayerGap;
    }
}

void LayerPlacer::place(const Group& part) {
    sortIntoLayers(part);
    for (Group& layer : m_layers) placeInRow(layer);
    for (int round = 0; round < kSweeps && m_layers.size() > 1; ++round) {
        const std::size_t count = m_layers.size();
        for (std::size_t i = 1; i < count; ++i) {
            const bool isDown = round % 2 == 0;
            sweep(isDown ? m_before : m_behind, m_layers[isDown ? i : count - 1 - i]);
        }
    }
    setHeights();
}

struct Extent {
    double left = INFINITY;
    double top = INFINITY;
    double right = -INFINITY;
    double bottom = -INFINITY;
};

Extent extentOf(const Group& group, const std::vector<Box>& boxes) {
    Extent extent;
    for (const std::uint32_t node : group) {
        extent.left = std::min(extent.left, boxes[node].left());
        extent.top = std::min(extent.top, boxes[node].top());
        extent.right = std::max(extent.right, boxes[node].right());
        extent.bottom = std::max(extent.bottom, boxes[node].bottom());
    }
    return extent;
}

double rowWidth(const std::vector<Extent>& extents) {
    double area = 0;
    double widest = 0;
    for (const Extent& extent : extents) {
        const double width = extent.right - extent.left + kGap;
        area += width * (extent.bottom - extent.top + kGap);
        widest = std::max(widest, width);
    }
    return std::max(widest, std::sqrt(area * kRowShape));
}

}  // namespace

void packGroups(const std::vector<Group>& groups, std::vector<Box>& boxes) {
    std::vector<Extent> extents;
    for (const Group& group : groups) extents.push_back(extentOf(group, boxes));
    const double limit = rowWidth(extents);
    double x = 0;
    double y = 0;
    double rowHeight = 0;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const double width = extents[i].right - extents[i].left;
        if (x > 0 && x + width > limit) {
            x = 0;
            y += rowHeight + kGap;
            rowHeight = 0;
        }
        for (const std::uint32_t node : groups[i]) {
            boxes[node].center.x += x - extents[i].left;
            boxes[node].center.y += y - extents[i].top;
        }
        x += width + kGap;
        rowHeight = std::max(rowHeight, extents[i].bottom - extents[i].top);
    }
}

void layOutInLayers(std::span<const Link> links, std::vector<Box>& boxes) {
    const std::vector<Group> parts = connectedParts(boxes.size(), links);
    LayerPlacer placer(links, boxes);
    for (const Group& part : parts) placer.place(part);
    packGroups(parts, boxes);
}

}  // namespace zelhost
