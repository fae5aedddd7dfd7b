#include "model/packing.h"

#include <algorithm>
#include <cmath>

namespace zelhost {

namespace {

constexpr double kGap = 24;        // between groups
constexpr double kRowShape = 1.6;  // width to height that rows of groups aim at

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

}  // namespace zelhost
