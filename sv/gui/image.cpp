#include "sv/image.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <memory>
#include <new>
#include <utility>

#include "sv/application.h"

#include <windows.h>

namespace SV {

namespace {

BITMAPINFO topDown32(Size size) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;  // negative: rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

HBITMAP newPixels(Size size, std::uint32_t*& pixels) {
    const BITMAPINFO info = topDown32(size);
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels = static_cast<std::uint32_t*>(bits);
    return bitmap;
}

std::size_t pixelCount(Size size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

// How the pixels of a scaled line are made from those of the old one: each
// covers `scale` old ones, from `position * scale` on.
struct Span {
    int first;
    int last;  // inclusive
    double firstWeight;
    double lastWeight;
};

Span spanOf(int position, double scale, int oldLength) {
    const double start = position * scale;
    const double end = start + scale;
    const int first = std::min(static_cast<int>(start), oldLength - 1);
    const int last = std::clamp(static_cast<int>(std::ceil(end)) - 1, first, oldLength - 1);
    if (first == last) return {first, last, 1.0, 1.0};
    return {first, last, first + 1 - start, end - last};
}

struct Sum {
    double red = 0, green = 0, blue = 0, weight = 0;

    void add(std::uint32_t pixel, double share) {
        red += share * (pixel >> 16 & 0xFF);
        green += share * (pixel >> 8 & 0xFF);
        blue += share * (pixel & 0xFF);
        weight += share;
    }
    std::uint32_t average() const {
        const auto channel = [this](double sum) {
            return static_cast<std::uint32_t>(sum / weight + 0.5);
        };
        return channel(red) << 16 | channel(green) << 8 | channel(blue);
    }
};

double weightAt(const Span& span, int position) {
    if (position == span.first) return span.firstWeight;
    return position == span.last ? span.lastWeight : 1.0;
}

std::uint32_t averageOf(const Image& image, const Span& columns, const Span& rows) {
    Sum sum;
    for (int y = rows.first; y <= rows.last; ++y) {
        const std::uint32_t* const row = image.GetRow(y);
        const double rowWeight = weightAt(rows, y);
        for (int x = columns.first; x <= columns.last; ++x) {
            sum.add(row[x], rowWeight * weightAt(columns, x));
        }
    }
    return sum.average();
}

String& poolFile() {
    static String name;
    return name;
}

}  // namespace

Image::Image(Size size) {
    if (size.width < 1 || size.height < 1) return;
    try {
        m_pixels.resize(pixelCount(size));
        m_size = size;
    } catch (const std::exception&) {
        m_size = {};  // too large for memory, or for any: documented as empty
    }
}

bool Image::Rescale(Size size) {
    Image scaled(size);
    if (IsEmpty() || scaled.IsEmpty()) return false;
    const double scaleX = static_cast<double>(m_size.width) / size.width;
    const double scaleY = static_cast<double>(m_size.height) / size.height;
    for (int y = 0; y < size.height; ++y) {
        const Span rows = spanOf(y, scaleY, m_size.height);
        for (int x = 0; x < size.width; ++x) {
            scaled.GetRow(y)[x] = averageOf(*this, spanOf(x, scaleX, m_size.width), rows);
        }
    }
    *this = std::move(scaled);
    return true;
}

bool Image::Crop(int left, int top, int right, int bottom) {
    left = std::max(left, 0);
    top = std::max(top, 0);
    right = std::min(right, m_size.width - 1);
    bottom = std::min(bottom, m_size.height - 1);
    if (right < left || bottom < top) return false;
    Image kept({right - left + 1, bottom - top + 1});
    if (kept.IsEmpty()) return false;
    for (int y = top; y <= bottom; ++y) {
        std::copy_n(GetRow(y) + left, kept.m_size.width, kept.GetRow(y - top));
    }
    *this = std::move(kept);
    return true;
}

void Image::Draw(HDC__* device, int x, int y) const {
    if (IsEmpty()) return;
    const BITMAPINFO info = topDown32(m_size);
    ::SetDIBitsToDevice(device, x, y, static_cast<DWORD>(m_size.width),
                        static_cast<DWORD>(m_size.height), 0, 0, 0,
                        static_cast<UINT>(m_size.height), m_pixels.data(), &info, DIB_RGB_COLORS);
}

struct Bitmap::Shared {
    std::atomic<int> owners;
    HBITMAP handle;
    Size size;
};

Bitmap::Bitmap(const Image& image) {
    if (image.IsEmpty()) return;
    // Before the system's bitmap, which would be lost when there is no memory for it.
    std::unique_ptr<Shared> shared(new (std::nothrow) Shared{1, nullptr, image.GetSize()});
    if (!shared) return;
    std::uint32_t* pixels = nullptr;
    shared->handle = newPixels(image.GetSize(), pixels);
    if (!shared->handle) return;
    std::copy_n(image.GetRow(0), pixelCount(image.GetSize()), pixels);
    m_shared = shared.release();
}

Bitmap::Bitmap(HBITMAP__* handle, Size size) {
    if (!handle) return;
    m_shared = new (std::nothrow) Shared{1, handle, size};
    if (m_shared) return;
    ::DeleteObject(handle);  // it is ours now
    throw std::bad_alloc();
}

Bitmap::Bitmap(const Bitmap& other) : m_shared(other.m_shared) {
    if (m_shared) ++m_shared->owners;
}

Bitmap::Bitmap(Bitmap&& other) noexcept : m_shared(std::exchange(other.m_shared, nullptr)) {}

Bitmap& Bitmap::operator=(const Bitmap& other) { return *this = Bitmap(other); }

Bitmap& Bitmap::operator=(Bitmap&& other) noexcept {
    std::swap(m_shared, other.m_shared);
    return *this;
}

Bitmap::~Bitmap() {
    if (!m_shared || --m_shared->owners != 0) return;
    ::DeleteObject(m_shared->handle);
    delete m_shared;
}

Size Bitmap::GetSize() const { return m_shared ? m_shared->size : Size(); }

HBITMAP__* Bitmap::GetHandle() const { return m_shared ? m_shared->handle : nullptr; }

VirtualDevice::VirtualDevice(Size size) : m_size(size) {
    m_bitmap = newPixels(size, m_pixels);
    if (m_bitmap) m_dc = ::CreateCompatibleDC(nullptr);
    if (m_dc) {
        m_previous = ::SelectObject(m_dc, m_bitmap);
        return;
    }
    const DWORD error = ::GetLastError();
    if (Application* const application = GetpApp()) {
        application->Exception(Application::kSystemObjectFailed, error);
    }
}

VirtualDevice::~VirtualDevice() {
    if (m_dc) {
        ::SelectObject(m_dc, m_previous);
        ::DeleteDC(m_dc);
    }
    if (m_bitmap) ::DeleteObject(m_bitmap);
}

const std::uint32_t* VirtualDevice::GetRow(int y) const {
    ::GdiFlush();  // drawing is batched; the pixels are read directly
    return m_pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width);
}

Bitmap VirtualDevice::GetBitmap() const { return Bitmap(GetImage()); }

Image VirtualDevice::GetImage() const {
    if (!m_dc) return {};
    Image image(m_size);
    if (!image.IsEmpty()) std::copy_n(GetRow(0), pixelCount(m_size), image.GetRow(0));
    return image;
}

void ImagePool::SetPoolFile(const String& fileName) { poolFile() = fileName; }

const String& ImagePool::GetPoolFile() { return poolFile(); }

}  // namespace SV
