#include "picture.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <vector>

#include "model/edge_lines.h"
#include "model/layout.h"
#include "sv/gdi.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr std::size_t kReadableNodes = 60;
constexpr std::size_t kMeasuredNodes = 2000;  // captions of larger graphs are not drawn anyway
constexpr double kLargestSide = 8000;         // of a readable picture, in pixels
constexpr double kScaledWidth = 1600;
constexpr double kScaledHeight = 1200;
constexpr int kFontHeight = 13;
constexpr double kLabelHeight = 11;  // of the font for edges
constexpr int kReadableFontHeight = 6;
constexpr std::size_t kMostBytes = 300;  // of a text: nobody reads more of it in a picture
constexpr double kPaddingX = 10, kPaddingY = 6;
constexpr double kArrowLength = 9, kArrowHalfWidth = 3.5;
// GDI draws without smoothing: everything is drawn at twice the size and halved. Not so when lines
// would cover the whole picture many times: the only difference to be seen is the time it takes.
constexpr int kOversampling = 2;
constexpr double kMostCovers = 10;

const SV::Color kPaper(255, 255, 255);
const SV::Color kEdgeColor(96, 108, 128);
const SV::Color kBorderColor(44, 82, 130);
const SV::Color kFillColor(232, 240, 250);
const SV::Color kTextColor(24, 32, 48);
const SV::Color kLabelColor(72, 82, 100);

std::wstring wide(std::string_view utf8) {
    std::wstring text(utf8.size(), L'\0');  // never more units than bytes
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                             text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

// What is drawn of a text.
std::wstring shown(std::string_view utf8) {
    if (utf8.size() <= kMostBytes) return wide(utf8);
    std::size_t end = kMostBytes;
    while (end > 0 && (utf8[end] & 0xC0) == 0x80) --end;  // not within a character
    return wide(utf8.substr(0, end)) + L'\x2026';
}

HFONT newFont(int height) { return SV::Font("Segoe UI", {0, height}).Create(); }

class CaptionMeasure {
public:
    explicit CaptionMeasure(std::size_t nodeCount)
        : m_isExact(nodeCount <= kMeasuredNodes),
          m_device({1, 1}),
          m_font(m_device.GetDC(), newFont(kFontHeight)) {}

    Size operator()(std::string_view caption) const {
        const Size text = m_isExact ? exact(caption) : estimate(caption);
        return {text.width + 2 * kPaddingX, text.height + 2 * kPaddingY};
    }

private:
    Size exact(std::string_view caption) const {
        RECT area = {};
        const std::wstring text = shown(caption);
        ::DrawTextW(m_device.GetDC(), text.c_str(), static_cast<int>(text.size()), &area,
                    DT_CALCRECT | DT_NOPREFIX);
        return {static_cast<double>(area.right), std::max<double>(area.bottom, kFontHeight)};
    }
    static Size estimate(std::string_view caption) {
        constexpr double kAverageWidth = 0.55 * kFontHeight;
        return {kAverageWidth * static_cast<double>(std::min(caption.size(), kMostBytes)),
                kFontHeight};
    }

    const bool m_isExact;
    SV::VirtualDevice m_device;
    SV::SelectedObject m_font;
};

double scaleOf(Size size, bool canBeRead, double zoom) {
    const double width = canBeRead ? kLargestSide : kScaledWidth;
    const double height = canBeRead ? kLargestSide : kScaledHeight;
    return std::min({canBeRead ? zoom : 1.0, width / size.width, height / size.height});
}

// How often the lines would cover the picture if they lay side by side, each a pixel wide.
double coversBy(const Layout& layout, double scale) {
    double length = 0;
    for (std::size_t i = 0; i < layout.lines.size(); ++i) {
        const std::span<const Point> line = layout.lines[i];
        for (std::size_t j = 1; j < line.size(); ++j) {
            length += std::hypot(line[j].x - line[j - 1].x, line[j].y - line[j - 1].y);
        }
    }
    return length / (layout.size.width * layout.size.height * scale);
}

// Each pixel the average of four.
SV::Image halved(const SV::VirtualDevice& image) {
    SV::Image half({image.GetSize().width / 2, image.GetSize().height / 2});
    const auto average = [](std::uint32_t a, std::uint32_t b) {
        return (a & b) + (((a ^ b) & 0xFEFEFE) >> 1);  // of all channels at once
    };
    for (int y = 0; y < half.GetSize().height; ++y) {
        const std::uint32_t* const upper = image.GetRow(2 * y);
        const std::uint32_t* const lower = image.GetRow(2 * y + 1);
        std::uint32_t* const row = half.GetRow(y);
        for (int x = 0; x < half.GetSize().width; ++x) {
            row[x] = average(average(upper[2 * x], upper[2 * x + 1]),
                             average(lower[2 * x], lower[2 * x + 1]));
        }
    }
    return half;
}

class Drawing {
public:
    Drawing(const Graph& graph, const Layout& layout, double scale, const std::stop_token& stop)
        : m_graph(graph),
          m_layout(layout),
          m_oversampling(coversBy(layout, scale) > kMostCovers ? 1 : kOversampling),
          m_scale(scale * m_oversampling),
          m_stop(stop),
          m_device({scaled(layout.size.width), scaled(layout.size.height)}) {}

    SV::Image draw() {
        if (!m_device.GetDC()) return {};
        clear();
        drawEdges();
        const int fontHeight = static_cast<int>(kFontHeight * m_scale);
        const bool isReadable = fontHeight >= kReadableFontHeight * m_oversampling;
        if (isReadable) drawLabels();
        drawBoxes();
        if (isReadable) drawCaptions(fontHeight);
        return m_oversampling == 1 ? m_device.GetImage() : halved(m_device);
    }

private:
    bool goesOn() const { return !m_stop.stop_requested(); }
    // Even, so that halving leaves nothing over.
    int scaled(double length) const {
        return m_oversampling *
               std::max(1, static_cast<int>(std::ceil(length * m_scale / m_oversampling)));
    }
    int at(double position) const { return static_cast<int>(std::lround(position * m_scale)); }
    POINT at(Point point) const { return {at(point.x), at(point.y)}; }
    int penWidth() const { return std::max(1, static_cast<int>(1.2 * m_scale)); }

    void clear() const {
        const RECT all = {0, 0, m_device.GetSize().width, m_device.GetSize().height};
        const HBRUSH brush = ::CreateSolidBrush(kPaper.GetRef());
        ::FillRect(m_device.GetDC(), &all, brush);
        ::DeleteObject(brush);
    }

    void drawEdges() const {
        const HDC dc = m_device.GetDC();
        const SV::SelectedObject pen(dc, ::CreatePen(PS_SOLID, penWidth(), kEdgeColor.GetRef()));
        const SV::SelectedObject brush(dc, ::CreateSolidBrush(kEdgeColor.GetRef()));
        const bool withHeads = m_graph.isDirected();
        std::vector<POINT> points;
        for (std::size_t i = 0; i < m_layout.lines.size() && goesOn(); ++i) {
            const std::span<const Point> line = m_layout.lines[i];
            points.clear();
            for (const Point& point : line) points.push_back(at(point));
            ::Polyline(dc, points.data(), static_cast<int>(points.size()));
            if (withHeads) drawHead(line[line.size() - 2], line.back());
        }
    }

    // On the way from `before`, which may be nearer than the head is long.
    void drawHead(Point before, Point tip) const {
        const double dx = tip.x - before.x;
        const double dy = tip.y - before.y;
        const double length = std::hypot(dx, dy);
        if (length == 0) return;
        const Point along = {dx / length, dy / length};
        const Point base = {tip.x - kArrowLength * along.x, tip.y - kArrowLength * along.y};
        const POINT corners[] = {
            at(tip), at({base.x - kArrowHalfWidth * along.y, base.y + kArrowHalfWidth * along.x}),
            at({base.x + kArrowHalfWidth * along.y, base.y - kArrowHalfWidth * along.x})};
        ::Polygon(m_device.GetDC(), corners, 3);
    }

    void drawBoxes() const {
        const HDC dc = m_device.GetDC();
        const SV::SelectedObject pen(dc, ::CreatePen(PS_SOLID, penWidth(), kBorderColor.GetRef()));
        const SV::SelectedObject brush(dc, ::CreateSolidBrush(kFillColor.GetRef()));
        const int round = at(8);
        for (const Box& box : m_layout.boxes) {
            if (!goesOn()) break;
            ::RoundRect(dc, at(box.left()), at(box.top()), at(box.right()), at(box.bottom()), round,
                        round);
        }
    }

    void drawLabels() const {
        const HDC dc = m_device.GetDC();
        const SV::SelectedObject font(dc, newFont(static_cast<int>(kLabelHeight * m_scale)));
        ::SetBkMode(dc, OPAQUE);
        ::SetBkColor(dc, kPaper.GetRef());
        ::SetTextColor(dc, kLabelColor.GetRef());
        ::SetTextAlign(dc, TA_CENTER | TA_TOP);
        for (std::size_t i = 0; i < m_layout.lines.size() && goesOn(); ++i) {
            const std::wstring label = shown(m_graph.label(m_graph.edges[i]));
            const Point middle = labelPlace(m_layout.lines[i]);
            ::TextOutW(dc, at(middle.x), at(middle.y - kLabelHeight / 2), label.c_str(),
                       static_cast<int>(label.size()));
        }
        ::SetTextAlign(dc, TA_LEFT | TA_TOP);
    }

    void drawCaptions(int fontHeight) const {
        const HDC dc = m_device.GetDC();
        const SV::SelectedObject font(dc, newFont(fontHeight));
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, kTextColor.GetRef());
        for (std::size_t i = 0; i < m_layout.boxes.size() && goesOn(); ++i) {
            drawCaption(m_layout.boxes[i], shown(m_graph.caption(m_graph.nodes[i])));
        }
    }

    void drawCaption(const Box& box, const std::wstring& caption) const {
        const bool isOneLine = caption.find(L'\n') == std::wstring::npos;
        RECT area = {at(box.left()), at(box.top() + (isOneLine ? 0 : kPaddingY)), at(box.right()),
                     at(box.bottom())};
        const auto format = static_cast<UINT>(DT_CENTER | DT_NOPREFIX | DT_NOCLIP |
                                              (isOneLine ? DT_SINGLELINE | DT_VCENTER : 0));
        ::DrawTextW(m_device.GetDC(), caption.c_str(), static_cast<int>(caption.size()), &area,
                    format);
    }

    const Graph& m_graph;
    const Layout& m_layout;
    const int m_oversampling;
    const double m_scale;  // pixels of the device for a unit of the layout
    const std::stop_token& m_stop;
    SV::VirtualDevice m_device;
};

}  // namespace

bool isReadable(const Graph& graph) { return graph.nodes.size() <= kReadableNodes; }

SV::Image drawPicture(const Graph& graph, double zoom, const std::stop_token& stop) {
    const CaptionMeasure measure(graph.nodes.size());
    const Layout layout = layOut(graph, std::cref(measure));
    const double scale = scaleOf(layout.size, isReadable(graph), zoom);
    return Drawing(graph, layout, scale, stop).draw();
}

}  // namespace zelhost
