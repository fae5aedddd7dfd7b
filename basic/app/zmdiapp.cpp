#include <algorithm>
#include <cstdlib>
#include <utility>

#include "sv/gdi.h"
#include "zbasic/zapp.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace {

constexpr double kFrameWeight = 0.2;

SV::Size targetSize(bool useVirtualScreen) {
    SV::Size size = {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    if (useVirtualScreen) {
        // Relied on by callers: the width is the virtual screen's less the screen's.
        size.width = ::GetSystemMetrics(SM_CXVIRTUALSCREEN) - size.width;
        size.height = std::max(size.height, ::GetSystemMetrics(SM_CYVIRTUALSCREEN));
    }
    return size;
}

// So that the target is covered, the longer side going beyond it.
void scaleToCover(SV::Image& image, SV::Size target) {
    const SV::Size size = image.GetSize();
    const double ratio = std::max(static_cast<double>(target.height) / size.height,
                                  static_cast<double>(target.width) / size.width);
    image.Rescale(
        {static_cast<int>(size.width * ratio + 0.5), static_cast<int>(size.height * ratio + 0.5)});
}

struct Range {
    int first;
    int last;  // inclusive
};

// Relied on by callers: the end is the start plus the whole side before cropping less
// one; the crop itself cuts it at the picture's edge.
Range cropRange(int side, int target) {
    const int first = side > target ? (side - target) / 2 : 0;
    return {first, first + side - 1};
}

// Sides beyond the target count as the target's from then on.
SV::Size cropTo(SV::Image& image, SV::Size target) {
    const SV::Size size = image.GetSize();
    if (size.width <= target.width && size.height <= target.height) return size;
    const Range columns = cropRange(size.width, target.width);
    const Range rows = cropRange(size.height, target.height);
    image.Crop(columns.first, rows.first, columns.last, rows.last);
    return {std::min(size.width, target.width), std::min(size.height, target.height)};
}

// The client area of the frame without its one-pixel border, and the picture for it.
class ClientPainter {
public:
    ClientPainter(HDC device, const RECT& client, const SV::Bitmap& bitmap)
        : m_device(device),
          m_client(client),
          m_width(static_cast<int>(client.right) - 2),
          m_height(static_cast<int>(client.bottom) - 2),
          m_size(bitmap.GetSize()),
          m_source(::CreateCompatibleDC(device)),
          m_previous(::SelectObject(m_source, bitmap.GetHandle())) {}
    ClientPainter(const ClientPainter&) = delete;
    ClientPainter& operator=(const ClientPainter&) = delete;
    ~ClientPainter() {
        ::SelectObject(m_source, m_previous);
        ::DeleteDC(m_source);
    }

    void paint(std::int32_t mode) const {
        switch (mode) {
            case ZelMDIApplication::kStretched:
                return stretch();
            case ZelMDIApplication::kFitted:
                return copy(1, 1, m_width, m_height, (m_size.width - m_width) / 2,
                            (m_size.height - m_height) / 2);
            case ZelMDIApplication::kCentred:
                fill();
                return copy((m_width - m_size.width) / 2, (m_height - m_size.height) / 2,
                            m_size.width, m_size.height, 0, 0);
            case ZelMDIApplication::kTiled:
                return tile();
            default:
                return fill();
        }
    }

    void frame() const {
        const ZelThemeManager& theme = ZelThemeManager::Instance();
        const SV::Color color =
            ZelColor::srcOver(theme.GetColor(ZelThemeManager::kText),
                              theme.GetColor(ZelThemeManager::kWorkspace), kFrameWeight);
        const SV::SelectedObject pen(m_device, ::CreatePen(PS_SOLID, 1, color.GetRef()));
        const HGDIOBJ previous = ::SelectObject(m_device, ::GetStockObject(NULL_BRUSH));
        ::Rectangle(m_device, 0, 0, m_width + 2, m_height + 2);
        ::SelectObject(m_device, previous);
    }

private:
    void fill() const {
        const RECT inner = {1, 1, m_client.right - 1, m_client.bottom - 1};
        // An RGB value: `SV::Color` holds no palette entry that would have to be resolved.
        const SV::Color color = ZelThemeManager::Instance().GetColor(ZelThemeManager::kWorkspace);
        const HBRUSH brush = ::CreateSolidBrush(color.GetRef());
        ::FillRect(m_device, &inner, brush);
        ::DeleteObject(brush);
    }
    void stretch() const {
        ::StretchBlt(m_device, 1, 1, m_width, m_height, m_source, 0, 0, m_size.width, m_size.height,
                     SRCCOPY);
    }
    void copy(int x, int y, int width, int height, int sourceX, int sourceY) const {
        ::BitBlt(m_device, x, y, width, height, m_source, sourceX, sourceY, SRCCOPY);
    }
    void tile() const {
        for (int y = 0; y < m_height; y += m_size.height) {
            for (int x = 0; x < m_width; x += m_size.width) {
                copy(1 + x, 1 + y, m_size.width, m_size.height, 0, 0);
            }
        }
    }

    HDC m_device;
    RECT m_client;
    int m_width;
    int m_height;
    SV::Size m_size;
    HDC m_source;
    HGDIOBJ m_previous;
};

}  // namespace

ZelMDIApplication::ZelMDIApplication(const char* name, bool withGUI, SV::String dialogLogOption)
    : ZelApplicationInterface(name, withGUI), m_dialogLogOption(std::move(dialogLogOption)) {}

ZelMDIApplication::~ZelMDIApplication() = default;

void ZelMDIApplication::SysChange(SV::SysChangeType type) { _onSystemSettingsChange(type); }

void ZelMDIApplication::Main(int argc, char** argv) {
    _beforeMain(argc, argv, m_dialogLogOption);
    int status = initApplication();
    if (status == 0) {
        _beforeMain2();
        status = runApplication();
    }
    _afterMain(status);
    if (status != 0) std::exit(status);
}

bool ZelMDIApplication::Exception(long code, unsigned long detail) {
    return _handleException(code, detail) || SV::MDIApplication::Exception(code, detail);
}

bool ZelMDIApplication::IsUserDefPaintMDIClient() { return true; }

void ZelMDIApplication::PaintMDIClient(HWND client) {
    const HDC device = ::GetDC(client);
    RECT area = {};
    ::GetClientRect(client, &area);
    {
        const ClientPainter painter(device, area, m_clientImage);
        painter.paint(m_clientImage.IsEmpty() ? kNoImage : m_clientImageMode);
        painter.frame();
    }
    ::ReleaseDC(client, device);
}

bool ZelMDIApplication::MakeMDIClientImg(bool useVirtualScreen) {
    SV::Image image;
    int mode = kNoImage;
    if (!getMDIClientImage(image, mode) || image.IsEmpty()) return false;
    m_clientImageMode = mode;
    const SV::Size target = targetSize(useVirtualScreen);
    if (m_clientImage.GetSize() == target) return false;
    const bool isMatch = mode == kFitted && image.GetSize() == target;
    if (mode == kFitted && !isMatch) scaleToCover(image, target);
    const SV::Size size = isMatch ? target : cropTo(image, target);
    if (size.width < 1 || size.height < 1) return false;  // no second screen
    const SV::VirtualDevice device(size);
    image.Draw(device.GetDC(), 0, 0);
    SV::Bitmap made = device.GetBitmap();
    if (made.IsEmpty()) return false;
    m_clientImage = std::move(made);
    return true;
}
