// Pictures in memory.

#pragma once

#include <cstdint>
#include <vector>

#include "sv/export.h"
#include "sv/font.h"
#include "sv/string.h"

struct HBITMAP__;
struct HDC__;

namespace SV {

class Bitmap;

// Pixels as 0x00RRGGBB, rows from the top.
class SV_API Image {
public:
    Image() = default;
    explicit Image(Size size);  // black; empty when memory runs out or a side is below 1

    bool IsEmpty() const { return m_pixels.empty(); }
    Size GetSize() const { return m_size; }
    std::uint32_t* GetRow(int y) {
        return m_pixels.data() + std::size_t(y) * std::size_t(m_size.width);
    }
    const std::uint32_t* GetRow(int y) const { return const_cast<Image*>(this)->GetRow(y); }

    // To another size, each pixel the average of what it covers; false (and no
    // change) when a side is below 1 or memory runs out.
    bool Rescale(Size size);
    // Keeps the rectangle from (left, top) to (right, bottom), both inclusive and
    // cut at the picture's edges; false (and no change) when nothing is left.
    bool Crop(int left, int top, int right, int bottom);
    // Draws the whole picture at (x, y) of a device context.
    void Draw(HDC__* device, int x, int y) const;

private:
    Size m_size;
    std::vector<std::uint32_t> m_pixels;
};

// A device-dependent picture that windows paint fast. Copies share the object.
class SV_API Bitmap {
public:
    Bitmap() = default;
    explicit Bitmap(const Image& image);
    // Takes over `handle`.
    Bitmap(HBITMAP__* handle, Size size);
    Bitmap(const Bitmap&);
    Bitmap(Bitmap&&) noexcept;
    Bitmap& operator=(const Bitmap&);
    Bitmap& operator=(Bitmap&&) noexcept;
    ~Bitmap();

    bool IsEmpty() const { return !m_shared; }
    Size GetSize() const;
    HBITMAP__* GetHandle() const;  // stays ours; null for an empty one

private:
    struct Shared;
    Shared* m_shared = nullptr;
};

// A drawing surface in memory, 32 bits a pixel, without a window or a display.
class SV_API VirtualDevice {
public:
    // An empty device (`GetDC` null) when the system has no room; such a failure
    // raises `Application::Exception(512, system error)`.
    explicit VirtualDevice(Size size);
    VirtualDevice(const VirtualDevice&) = delete;
    VirtualDevice& operator=(const VirtualDevice&) = delete;
    ~VirtualDevice();

    HDC__* GetDC() const { return m_dc; }
    Size GetSize() const { return m_size; }
    // One row of what is drawn now; valid until something is drawn.
    const std::uint32_t* GetRow(int y) const;
    Bitmap GetBitmap() const;  // copies of it
    Image GetImage() const;

private:
    Size m_size;
    HDC__* m_dc = nullptr;
    HBITMAP__* m_bitmap = nullptr;
    void* m_previous = nullptr;
    std::uint32_t* m_pixels = nullptr;
};

// The archive that programs' pictures come from. The library only says where it lies.
class SV_API ImagePool {
public:
    static void SetPoolFile(const String& fileName);
    static const String& GetPoolFile();
};

}  // namespace SV
