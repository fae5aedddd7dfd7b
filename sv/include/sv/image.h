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
    Image() = default;          // empty
    explicit Image(Size size);  // black; empty when memory runs out or a side is below 1

    bool IsEmpty() const { return m_pixels.empty(); }  // has it no pixels?
    Size GetSize() const { return m_size; }            // 0 by 0 then
    // The pixels of a row, from the left; `y` counts from 0 and is not checked. Valid until the
    // picture gets another size, is assigned to or destroyed.
    std::uint32_t* GetRow(int y) {
        return m_pixels.data() + std::size_t(y) * std::size_t(m_size.width);
    }
    const std::uint32_t* GetRow(int y) const { return const_cast<Image*>(this)->GetRow(y); }

    // To another size, each pixel the average of what it covers; false (and no
    // change) for an empty picture, when a side is below 1 or memory runs out.
    bool Rescale(Size size);
    // Keeps the rectangle from (left, top) to (right, bottom), both inclusive and
    // cut at the picture's edges; false (and no change) when nothing is left.
    bool Crop(int left, int top, int right, int bottom);
    // Draws the whole picture with its left upper corner at (x, y) of a device context.
    void Draw(HDC__* device, int x, int y) const;

private:
    Size m_size;
    std::vector<std::uint32_t> m_pixels;
};

// A device-dependent picture that windows paint fast. Copies share the object.
class SV_API Bitmap {
public:
    Bitmap() = default;  // empty
    // A copy of these pixels; empty when the system has no room.
    explicit Bitmap(const Image& image);
    // Takes over `handle`, of a picture of that size; null: empty.
    Bitmap(HBITMAP__* handle, Size size);
    // The system's object is deleted with the last copy.
    Bitmap(const Bitmap&);
    Bitmap(Bitmap&&) noexcept;
    Bitmap& operator=(const Bitmap&);
    Bitmap& operator=(Bitmap&&) noexcept;
    ~Bitmap();

    bool IsEmpty() const { return !m_shared; }  // is there no picture?
    Size GetSize() const;                       // 0 by 0 for an empty one
    HBITMAP__* GetHandle() const;               // stays ours; null for an empty one

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

    HDC__* GetDC() const { return m_dc; }    // to draw on; stays ours
    Size GetSize() const { return m_size; }  // as asked for
    // One row of what is drawn now, from the left as 0x00RRGGBB; valid until something is drawn.
    // `y` counts from 0 and is not checked. Not of an empty device.
    const std::uint32_t* GetRow(int y) const;
    // Copies of it; empty ones of an empty device and when there is no room.
    Bitmap GetBitmap() const;
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
    // Its path, empty until it is set. Main thread only.
    static void SetPoolFile(const String& fileName);
    static const String& GetPoolFile();
};

}  // namespace SV
