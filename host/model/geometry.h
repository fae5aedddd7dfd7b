// Points, boxes and lines of a picture.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

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

// Lines of any number of points, these in one array.
class Polylines {
public:
    void add(std::span<const Point> line) {
        m_points.insert(m_points.end(), line.begin(), line.end());
        m_ends.push_back(static_cast<std::uint32_t>(m_points.size()));
    }

    std::size_t size() const { return m_ends.size(); }
    std::span<const Point> operator[](std::size_t line) const {
        const std::size_t first = line == 0 ? 0 : m_ends[line - 1];
        return std::span(m_points).subspan(first, m_ends[line] - first);
    }
    std::span<Point> points() { return m_points; }  // of all lines

private:
    std::vector<Point> m_points;
    std::vector<std::uint32_t> m_ends;  // behind the last point of each line
};

}  // namespace zelhost
