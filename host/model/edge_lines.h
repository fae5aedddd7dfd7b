// How edges run from box to box where no other box is in the way.

#pragma once

#include <array>
#include <span>
#include <vector>

#include "model/geometry.h"
#include "model/layers.h"

namespace zelhost {

constexpr double kLayerGap = 48;  // between the layers of a layout

// How far each link goes sideways, so that links between the same two nodes, whatever their
// direction, lie beside one another. 0 for all others; seen from the node with the lower number.
std::vector<double> lanesOf(std::span<const Link> links);

// `lane`, but not more than a box of this width or height has room for.
double laneWithin(double lane, double extent);

using StraightLine = std::array<Point, 2>;

// From border to border along the line between the centres, or `lane` to the right of it; of boxes
// that overlap from centre to centre.
StraightLine lineBetween(const Box& from, const Box& to, double lane);

// Around the right upper corner.
using LoopLine = std::array<Point, 5>;
LoopLine loopAt(const Box& box);

// The middle of an edge's label: in the middle of a straight line; in the first gap that a line
// between layers crosses, where no box is near; above the box of a loop.
Point labelPlace(std::span<const Point> line);

}  // namespace zelhost
