#include "model/layered_layout.h"

#include <algorithm>
#include <cmath>

#include "model/bent_lines.h"
#include "model/edge_lines.h"
#include "model/packing.h"
#include "model/skeleton.h"

namespace zelhost {

namespace {

constexpr double kGap = 24;      // between boxes of a layer
constexpr double kBendGap = 12;  // between lines that cross a layer
constexpr int kSweeps = 8;       // down and up alternately

// Ascending values that lie as near to the wishes as can be: the sum of the weighted squares of
// the distances is least. Wishes that do not ascend share their mean.
class AscendingFit {
public:
    void clear() { m_pools.clear(); }

    void add(double wish, double weight) {
        Pool pool{wish, weight, 1};
        while (!m_pools.empty() && m_pools.back().mean > pool.mean) {
            const Pool& before = m_pools.back();
            const double sum = before.weight + pool.weight;
            pool.mean = (before.mean * before.weight + pool.mean * pool.weight) / sum;
            pool.weight = sum;
            pool.count += before.count;
            m_pools.pop_back();
        }
        m_pools.push_back(pool);
    }

    // Calls `take` with the value of each wish.
    template <typename Take>
    void giveTo(Take take) const {
        for (const Pool& pool : m_pools) {
            for (std::size_t i = 0; i < pool.count; ++i) take(pool.mean);
        }
    }

private:
    struct Pool {
        double mean;
        double weight;
        std::size_t count;
    };

    std::vector<Pool> m_pools;
};

// Places the items of connected parts, one part after the other.
class LayerPlacer {
public:
    LayerPlacer(const Skeleton& skeleton, std::vector<Box>& boxes)
        : m_skeleton(skeleton),
          m_boxes(boxes),
          m_before(boxes.size(), skeleton.steps, Neighbours::Side::from),
          m_behind(boxes.size(), skeleton.steps, Neighbours::Side::to),
          m_wishes(boxes.size()),
          m_places(boxes.size()),
          m_heights(boxes.size()) {}

    void place(const Group& part);
    const std::vector<double>& heights() const { return m_heights; }

private:
    struct Wish {
        double x = 0;
        double weight = 0;
    };
    // The x that an item can have between its neighbours in the layer.
    struct Room {
        double low;
        double high;

        Room with(Room other) const {
            return {std::max(low, other.low), std::min(high, other.high)};
        }
    };

    double reach(std::uint32_t item) const;
    void sortIntoLayers(const Group& part);
    void placeInRow(const Group& layer);
    void sweep(const Neighbours& fixed, Group& layer);
    Wish wishOf(std::uint32_t item, std::span<const std::uint32_t> others) const;
    void setWithoutOverlap(const Group& layer);
    void setBoxes(std::span<const std::uint32_t> boxes, std::span<const double> shifts, Room room);
    void rememberPlaces();
    Room roomOf(std::uint32_t item) const;
    void straighten(const Group& part);
    std::uint32_t straightenRun(std::uint32_t bend);
    void setHeights();

    const Skeleton& m_skeleton;
    std::vector<Box>& m_boxes;  // those of bends have no width
    Neighbours m_before;
    Neighbours m_behind;
    std::vector<Wish> m_wishes;           // what suits the neighbours best
    std::vector<std::uint32_t> m_places;  // of each item in its layer
    std::vector<Group> m_layers;          // of the part that is being placed
    std::vector<double> m_heights;        // of the layer of each item
    std::vector<double> m_shifts;
    AscendingFit m_fit;
};

// To the middle of the gap behind.
double LayerPlacer::reach(std::uint32_t item) const {
    return m_boxes[item].size.width / 2 + (m_skeleton.isBend(item) ? kBendGap : kGap) / 2;
}

void LayerPlacer::sortIntoLayers(const Group& part) {
    std::uint32_t last = 0;
    for (const std::uint32_t item : part) last = std::max(last, m_skeleton.layers[item]);
    m_layers.assign(last + 1, {});
    for (const std::uint32_t item : part) m_layers[m_skeleton.layers[item]].push_back(item);
}

void LayerPlacer::placeInRow(const Group& layer) {
    double x = 0;
    for (const std::uint32_t item : layer) {
        m_boxes[item].center.x = x + reach(item);
        x += 2 * reach(item);
    }
    for (const std::uint32_t item : layer) m_boxes[item].center.x -= x / 2;
}

LayerPlacer::Wish LayerPlacer::wishOf(std::uint32_t item,
                                      std::span<const std::uint32_t> others) const {
    constexpr double kIndifferent = 1e-3;
    if (others.empty()) return {m_boxes[item].center.x, kIndifferent};
    double sum = 0;
    for (const std::uint32_t other : others) sum += m_boxes[other].center.x;
    const auto count = static_cast<double>(others.size());
    return {sum / count, count};
}

void LayerPlacer::sweep(const Neighbours& fixed, Group& layer) {
    for (const std::uint32_t item : layer) m_wishes[item] = wishOf(item, fixed.of(item));
    std::ranges::stable_sort(layer, {}, [&](std::uint32_t item) { return m_wishes[item].x; });
    setWithoutOverlap(layer);
}

// Bends choose first, so that long lines stay straight; the boxes between two of them follow.
// Shifted to the left by all that stands before it, each item only has to keep its order.
void LayerPlacer::setWithoutOverlap(const Group& layer) {
    m_shifts.clear();
    m_fit.clear();
    double shift = 0;
    for (const std::uint32_t item : layer) {
        m_shifts.push_back(shift + reach(item));
        shift += 2 * reach(item);
        if (m_skeleton.isBend(item)) m_fit.add(m_wishes[item].x - m_shifts.back(), 1);
    }
    std::size_t done = 0;
    double low = -INFINITY;
    const auto setUpTo = [&](std::size_t end, double high) {
        const std::size_t count = end - done;
        setBoxes(std::span(layer).subspan(done, count), std::span(m_shifts).subspan(done, count),
                 {low, high});
    };
    std::vector<double> bends;
    m_fit.giveTo([&](double x) { bends.push_back(x); });
    auto bend = bends.begin();
    for (std::size_t i = 0; i < layer.size(); ++i) {
        if (!m_skeleton.isBend(layer[i])) continue;
        setUpTo(i, *bend);
        m_boxes[layer[i]].center.x = *bend + m_shifts[i];
        low = *bend++;
        done = i + 1;
    }
    setUpTo(layer.size(), INFINITY);
}

void LayerPlacer::setBoxes(std::span<const std::uint32_t> boxes, std::span<const double> shifts,
                           Room room) {
    m_fit.clear();
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        m_fit.add(m_wishes[boxes[i]].x - shifts[i], m_wishes[boxes[i]].weight);
    }
    std::size_t i = 0;
    m_fit.giveTo([&](double x) {
        m_boxes[boxes[i]].center.x = std::clamp(x, room.low, room.high) + shifts[i];
        ++i;
    });
}

void LayerPlacer::rememberPlaces() {
    for (const Group& layer : m_layers) {
        for (std::uint32_t i = 0; i < layer.size(); ++i) m_places[layer[i]] = i;
    }
}

LayerPlacer::Room LayerPlacer::roomOf(std::uint32_t item) const {
    const Group& layer = m_layers[m_skeleton.layers[item]];
    const std::uint32_t place = m_places[item];
    Room room{-INFINITY, INFINITY};
    if (place > 0) {
        const std::uint32_t left = layer[place - 1];
        room.low = m_boxes[left].center.x + reach(left) + reach(item);
    }
    if (place + 1 < layer.size()) {
        const std::uint32_t right = layer[place + 1];
        room.high = m_boxes[right].center.x - reach(right) - reach(item);
    }
    return room;
}

// Gives as many bends of one line as possible, from this one, the same x. The bend behind them.
std::uint32_t LayerPlacer::straightenRun(std::uint32_t bend) {
    const std::uint32_t before = m_before.of(bend)[0];
    std::uint32_t behind = m_behind.of(bend)[0];
    std::uint32_t end = bend + 1;
    Room room = roomOf(bend);
    for (; behind == end; ++end) {
        const Room both = room.with(roomOf(end));
        if (both.low > both.high) break;
        room = both;
        behind = m_behind.of(end)[0];
    }
    const double wish = m_boxes[m_skeleton.isBend(before) ? behind : before].center.x;
    const double x = std::clamp(wish, room.low, std::max(room.low, room.high));
    for (std::uint32_t i = bend; i < end; ++i) m_boxes[i].center.x = x;
    return end;
}

void LayerPlacer::straighten(const Group& part) {
    for (const std::uint32_t item : part) {
        if (!m_skeleton.isBend(item) || m_skeleton.isBend(m_before.of(item)[0])) continue;
        std::uint32_t bend = item;
        std::uint32_t last = item;
        while (m_skeleton.isBend(m_behind.of(last)[0])) ++last;
        while (bend <= last) bend = straightenRun(bend);
    }
}

void LayerPlacer::setHeights() {
    double y = 0;
    for (const Group& layer : m_layers) {
        double height = 0;
        for (const std::uint32_t item : layer) {
            height = std::max(height, m_boxes[item].size.height);
        }
        for (const std::uint32_t item : layer) {
            m_boxes[item].center.y = y + height / 2;
            m_heights[item] = height;
        }
        y += height + kLayerGap;
    }
}

void LayerPlacer::place(const Group& part) {
    sortIntoLayers(part);
    for (const Group& layer : m_layers) placeInRow(layer);
    for (int round = 0; round < kSweeps && m_layers.size() > 1; ++round) {
        const std::size_t count = m_layers.size();
        for (std::size_t i = 1; i < count; ++i) {
            const bool isDown = round % 2 == 0;
            sweep(isDown ? m_before : m_behind, m_layers[isDown ? i : count - 1 - i]);
        }
    }
    rememberPlaces();
    straighten(part);
    setHeights();
}

}  // namespace

Polylines layOutInLayers(std::span<const Link> links, std::span<const double> lanes,
                         std::vector<Box>& boxes) {
    const Skeleton skeleton(boxes.size(), links);
    const std::size_t nodes = boxes.size();
    boxes.resize(skeleton.layers.size());
    const std::vector<Group> parts = connectedParts(boxes.size(), skeleton.steps);
    LayerPlacer placer(skeleton, boxes);
    for (const Group& part : parts) placer.place(part);
    packGroups(parts, boxes);
    Polylines lines = bentLines(links, lanes, skeleton, boxes, placer.heights());
    boxes.resize(nodes);
    return lines;
}

}  // namespace zelhost
