// Layouts: whatever a graph's nodes, edges and positions are, all of it lies in the picture, and in
// layers no line or box lies on a box. Bytes: whether there are positions, how many nodes, for each
// its caption and its position, the edges.

#include <cmath>
#include <vector>

#include "host/layout_geometry.h"
#include "input.h"
#include "model/gml_number.h"
#include "model/layout.h"

using zelhost::Box;
using zelhost::Graph;
using zelhost::Layout;
using zelhost::Point;
using zelhost::Size;

namespace {

const char* const kCoordinates[] = {"0",    "-0.0",  "1e-320", "1e9",   "-1e9",
                                    "1e10", "1e999", "0.5",    "-7.25", "1e300"};

Size measured(std::string_view caption) {
    const auto size = static_cast<double>(caption.size());
    return {1 + 7 * size, 1 + size};
}

void addPosition(Graph& graph, Bytes& input) {
    const std::size_t list = graph.attributes.beginList(zelhost::kGraphics);
    for (const zelhost::KeyId key : {zelhost::kX, zelhost::kY}) {
        const unsigned value = input.next();
        if (value < std::size(kCoordinates)) {
            graph.attributes.addReal(key, kCoordinates[value]);
        } else {
            graph.attributes.addInteger(key, value);
        }
    }
    graph.attributes.endList(list);
}

Graph graphOf(Bytes& input, bool hasPositions) {
    Graph graph;
    const unsigned nodes = input.next() % 64;
    for (unsigned node = 0; node < nodes; ++node) {
        const std::size_t first = graph.attributes.size();
        const unsigned size = input.next();
        graph.attributes.addText(zelhost::kLabel, std::string(size, 'x'));
        if (hasPositions && size % 4 != 0) addPosition(graph, input);
        graph.nodes.push_back({node, static_cast<std::uint32_t>(first),
                               static_cast<std::uint32_t>(graph.attributes.size() - first)});
    }
    while (nodes > 0 && !input.isEmpty()) {
        const unsigned source = input.next() % nodes;
        const unsigned target = input.next() % nodes;
        graph.edges.push_back({source, target, 0, 0});
    }
    return graph;
}

void checkLies(Point point, Size size) {
    check(point.x >= -kTiny && point.x <= size.width + kTiny);
    check(point.y >= -kTiny && point.y <= size.height + kTiny);
}

void checkPicture(Layout& layout, const Graph& graph) {
    check(std::isfinite(layout.size.width) && std::isfinite(layout.size.height));
    check(layout.boxes.size() == graph.nodes.size() && layout.lines.size() == graph.edges.size());
    for (const Box& box : layout.boxes) {
        checkLies({box.left(), box.top()}, layout.size);
        checkLies({box.right(), box.bottom()}, layout.size);
    }
    for (std::size_t i = 0; i < layout.lines.size(); ++i) check(layout.lines[i].size() >= 2);
    for (const Point& point : layout.lines.points()) checkLies(point, layout.size);
}

// Whether all boxes side by side are narrow enough for a layer of one row.
bool isNarrow(const Layout& layout) {
    constexpr double kMostOfARow = 4000;
    constexpr double kSpaces = 100;  // more than what is left free between two
    double width = 0;
    for (const Box& box : layout.boxes) width += box.size.width + kSpaces;
    return width < kMostOfARow;
}

// What holds where no position was given. Lines run behind the rows of wide layers.
void checkLayers(const Layout& layout, const Graph& graph) {
    for (const Box& box : layout.boxes) {
        for (const Box* other = layout.boxes.data(); other != &box; ++other) {
            check(!overlap(box, *other));
        }
    }
    const bool passesBoxes = isNarrow(layout);
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        check(isOnBorder(layout.boxes[graph.edges[i].source], layout.lines[i].front()));
        check(isOnBorder(layout.boxes[graph.edges[i].target], layout.lines[i].back()));
        if (!passesBoxes) continue;
        for (const Box& box : layout.boxes) check(!passesThrough(layout.lines[i], box));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const bool hasPositions = input.next() % 2 != 0;
    const Graph graph = graphOf(input, hasPositions);
    Layout layout = zelhost::layOut(graph, measured);
    checkPicture(layout, graph);
    if (!hasPositions) checkLayers(layout, graph);
    return 0;
}
