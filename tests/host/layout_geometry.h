// What may not happen in a picture of boxes and lines.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "model/geometry.h"

constexpr double kTiny = 1e-6;

inline bool overlap(const zelhost::Box& a, const zelhost::Box& b) {
    return a.left() < b.right() - kTiny && b.left() < a.right() - kTiny &&
           a.top() < b.bottom() - kTiny && b.top() < a.bottom() - kTiny;
}

inline bool isOnBorder(const zelhost::Box& box, zelhost::Point point) {
    const double x = std::abs(point.x - box.center.x) / (box.size.width / 2);
    const double y = std::abs(point.y - box.center.y) / (box.size.height / 2);
    return std::abs(std::max(x, y) - 1) < kTiny;
}

// Cuts off what of the shares `from` to `to` of a way from `start` by `length` is not between.
inline void cut(double start, double length, double low, double high, double& from, double& to) {
    if (length == 0 && (start <= low || start >= high)) to = -INFINITY;
    if (length == 0) return;
    const auto [enter, leave] = std::minmax({(low - start) / length, (high - start) / length});
    from = std::max(from, enter);
    to = std::min(to, leave);
}

// Through more than the border.
inline bool passesThrough(std::span<const zelhost::Point> line, const zelhost::Box& box) {
    for (std::size_t i = 1; i < line.size(); ++i) {
        const zelhost::Point& start = line[i - 1];
        double from = 0;
        double to = 1;
        cut(start.x, line[i].x - start.x, box.left(), box.right(), from, to);
        cut(start.y, line[i].y - start.y, box.top(), box.bottom(), from, to);
        if (from < to - kTiny) return true;
    }
    return false;
}
