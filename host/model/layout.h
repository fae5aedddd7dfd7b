// Where the nodes and edges of a graph go in a picture.

#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "model/graph.h"

namespace zelhost {

struct Point {
    double x;
    double y;  // grows downwards
};

struct Size {
    double width;
    double height;
};

struct Box {
    Point center;
    Size size;

    double left() const { return center.x - size.width / 2; }
    double right() const { return center.x + size.width / 2; }
    double top() const { return center.y - size.height / 2; }
    double bottom() const { return center.y + size.height / 2; }
};

// From the border of one box to the border of another.
struct Line {
    Point from;
    Point to;
};

// Everything lies between (0, 0) and `size`, a margin included.
struct Layout {
    Size size{};
    std::vector<Box> boxes;   // one a node
    std::vector<Line> lines;  // one an edge; of a loop across its box's right upper corner
};

// The size of a box around a caption.
using MeasureCaption = std::function<Size(std::string_view caption)>;

// Takes the positions `graphics [ x y ]` when at least half of the nodes have one (the others
// go in rows below them), drawn apart as far as the boxes need. All other graphs are laid out
// in layers, edges pointing down where there are no circles, parts without connection side by
// side. Boxes have the size that their caption needs. Takes about a second for 100,000 nodes.
Layout layOut(const Graph& graph, const MeasureCaption& measure);

}  // namespace zelhost
