#include "model/layered_layout.h"

#include <algorithm>
#include <cmath>

#include "model/ascending_fit.h"
#include "model/bent_lines.h"
#include "model/edge_lines.h"
#include "model/packing.h"
#include "model/skeleton.h"

namespace zelhost {

namespace {

constexpr double kGap = 24;      // between boxes of a layer
constexpr double kBendGap = 12;  // between lines that cross a layer
constexpr double kRowGap = 24;   // between the rows of a layer
constexpr int kSweeps = 8;       // down and up alternately
// A layer is too wide that is wider than both: pixels, and so many times the height of its part.
constexpr double kWideLayer = 4000;
constexpr double kWideShape = 4;
constexpr double kRowShape = 1.6;  // width to height that a part with wrapped layers aims at

// Places the items of connected parts, one part after the other.
class LayerPlacer {
public:
    LayerPlacer(const Skeleton& skeleton, std::vector<Box>& boxes)
        : m_skeleton(skeleton),
          m_boxes(boxes),
          m_before(boxes.size(), skeleton.steps, Neighbours::Side::from),
          m_behind(boxes.size(), skeleton.steps, Neighbours::Side::to),
          m_wishes(boxes.size()),
          m_rows(boxes.size()),
          m_places(boxes.size()),
          m_heights(boxes.size()) {}

    void place(const Group& part);
    const std::vector<double>& heights() const { return m_heights; }

private:
    struct Wish {
        double x = 0;
        double weight = 0;
    };
    // The x that an item can have between its neighbours in the row.
    struct Room {
        double low;
        double high;

        Room with(Room other) const {
            return {std::max(low, other.low), std::min(high, other.high)};
        }
    };

    double reach(std::uint32_t item) const;
    void sortIntoLayers(const Group& part);
    double widthOf(const Group& row) const;
    double heightOf(const Group& row) const;
    double rowWidth() const;
    void wrap(double width);
    void addRows(Group& layer, std::size_t count);
    void placeInRow(const Group& row);
    void sweepAll();
    void sweep(const Neighbours& fixed, Group& row);
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
    std::vector<Wish> m_wishes;   // what suits the neighbours best
    std::vector<Group> m_layers;  // of the part that is being placed: one row a layer, or more
    std::vector<std::uint32_t> m_rows;    // of each item in `m_layers`
    std::vector<std::uint32_t> m_places;  // of each item in its row
    std::vector<double> m_heights;        // of the row of each box, of the layer of each bend
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

double LayerPlacer::widthOf(const Group& row) const {
    double width = 0;
    for (const std::uint32_t item : row) width += 2 * reach(item);
    return width;
}

double LayerPlacer::heightOf(const Group& row) const {
    double height = 0;
    for (const std::uint32_t item : row) height = std::max(height, m_boxes[item].size.height);
    return height;
}

// How wide rows may be; without limit unless a layer is too wide.
double LayerPlacer::rowWidth() const {
    double widest = 0;
    double height = 0;
    double area = 0;
    for (const Group& layer : m_layers) {
        const double width = widthOf(layer);
        widest = std::max(widest, width);
        height += heightOf(layer) + kLayerGap;
        area += width * (heightOf(layer) + kRowGap);
    }
    if (widest < std::max(kWideLayer, kWideShape * height)) return INFINITY;
    return std::sqrt(area * kRowShape);
}

// Neighbours go one below the other, so that each row lies below all of the layer before. Lines
// that only cross the layer stay beside one another.
void LayerPlacer::addRows(Group& layer, std::size_t count) {
    const std::size_t first = m_layers.size();
    m_layers.resize(first + count);
    std::size_t next = 0;
    for (const std::uint32_t item : layer) {
        m_layers[m_skeleton.isBend(item) ? first : first + next++ % count].push_back(item);
    }
}

void LayerPlacer::wrap(double width) {
    std::vector<Group> layers;
    layers.swap(m_layers);
    for (Group& layer : layers) {
        double count = 0;
        double all = 0;  // width of the boxes
        for (const std::uint32_t item : layer) {
            if (m_skeleton.isBend(item)) continue;
            ++count;
            all += 2 * reach(item);
        }
        // No row stays empty, even if a box is wider than rows are to be.
        addRows(layer,
                static_cast<std::size_t>(std::max(1.0, std::min(count, std::ceil(all / width)))));
    }
}

void LayerPlacer::placeInRow(const Group& row) {
    double x = 0;
    for (const std::uint32_t item : row) {
        m_boxes[item].center.x = x + reach(item);
        x += 2 * reach(item);
    }
    for (const std::uint32_t item : row) m_boxes[item].center.x -= x / 2;
}

void LayerPlacer::sweepAll() {
    for (const Group& row : m_layers) placeInRow(row);
    for (int round = 0; round < kSweeps && m_layers.size() > 1; ++round) {
        const std::size_t count = m_layers.size();
        for (std::size_t i = 1; i < count; ++i) {
            const bool isDown = round % 2 == 0;
            sweep(isDown ? m_before : m_behind, m_layers[isDown ? i : count - 1 - i]);
        }
    }
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

void LayerPlacer::sweep(const Neighbours& fixed, Group& row) {
    for (const std::uint32_t item : row) m_wishes[item] = wishOf(item, fixed.of(item));
    std::ranges::stable_sort(row, {}, [&](std::uint32_t item) { return m_wishes[item].x; });
    setWithoutOverlap(row);
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
    for (std::uint32_t row = 0; row < m_layers.size(); ++row) {
        for (std::uint32_t i = 0; i < m_layers[row].size(); ++i) {
            m_rows[m_layers[row][i]] = row;
            m_places[m_layers[row][i]] = i;
        }
    }
}

LayerPlacer::Room LayerPlacer::roomOf(std::uint32_t item) const {
    const Group& layer = m_layers[m_rows[item]];
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
    for (std::size_t row = 0; row < m_layers.size();) {
        const Group& first = m_layers[row];
        const std::uint32_t layer = m_skeleton.layers[first[0]];
        const double top = y;
        for (; row < m_layers.size() && m_skeleton.layers[m_layers[row][0]] == layer; ++row) {
            const double height = heightOf(m_layers[row]);
            for (const std::uint32_t item : m_layers[row]) {
                m_boxes[item].center.y = y + height / 2;
                m_heights[item] = height;
            }
            y += height + kRowGap;
        }
        const double bottom = y - kRowGap;
        for (const std::uint32_t item : first) {
            if (!m_skeleton.isBend(item)) continue;
            m_boxes[item].center.y = (top + bottom) / 2;
            m_heights[item] = bottom - top;
        }
        y = bottom + kLayerGap;
    }
}

void LayerPlacer::place(const Group& part) {
    sortIntoLayers(part);
    const double width = rowWidth();
    sweepAll();
    if (width < INFINITY) {
        wrap(width);
        sweepAll();
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
