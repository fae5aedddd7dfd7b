#include "png_writer.h"

#include <png.h>

namespace zelhost {

namespace {

constexpr int kFastCompression = 3;  // pictures of lines and boxes compress well at any level

struct Output {
    const WriteChunk& write;
    bool isGood = true;
};

void onBytes(png_structp png, png_bytep bytes, std::size_t size) {
    auto* const output = static_cast<Output*>(png_get_io_ptr(png));
    if (output->isGood) {
        output->isGood = output->write({reinterpret_cast<const char*>(bytes), size});
    }
}

void onFlush(png_structp) {}

// libpng leaves by `longjmp` on failure: nothing that needs a destructor may live in here.
bool encode(png_structp png, png_infop info, const SV::Image& image) {
    if (setjmp(png_jmpbuf(png))) return false;
    const SV::Size size = image.GetSize();
    png_set_IHDR(png, info, static_cast<png_uint_32>(size.width),
                 static_cast<png_uint_32>(size.height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, kFastCompression);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);  // flat areas need none
    png_write_info(png, info);
    // Our pixels have four bytes, blue first.
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    png_set_bgr(png);
    for (int y = 0; y < size.height; ++y) {
        png_write_row(png, reinterpret_cast<png_const_bytep>(image.GetRow(y)));
    }
    png_write_end(png, info);
    return true;
}

}  // namespace

bool writePng(const SV::Image& image, const WriteChunk& write) {
    if (image.IsEmpty()) return false;
    Output output{write};
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool isDone = false;
    if (info) {
        png_set_write_fn(png, &output, onBytes, onFlush);
        isDone = encode(png, info, image);
    }
    png_destroy_write_struct(&png, &info);
    return isDone && output.isGood;
}

}  // namespace zelhost
