#include "png_writer.h"

#include <vector>

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

std::vector<png_byte> rgbOf(const SV::Image& image, int y) {
    const std::uint32_t* const row = image.GetRow(y);
    std::vector<png_byte> bytes;
    bytes.reserve(3 * static_cast<std::size_t>(image.GetSize().width));
    for (int x = 0; x < image.GetSize().width; ++x) {
        for (const int shift : {16, 8, 0}) bytes.push_back(static_cast<png_byte>(row[x] >> shift));
    }
    return bytes;
}

// The rows are handed in as they are made; libpng leaves by `longjmp` on failure, so nothing
// that needs a destructor may live in the function that called `setjmp`.
using Rows = std::vector<std::vector<png_byte>>;

bool encode(png_structp png, png_infop info, SV::Size size, Rows& rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(size.width),
                 static_cast<png_uint_32>(size.height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, kFastCompression);
    png_write_info(png, info);
    for (std::vector<png_byte>& row : rows) png_write_row(png, row.data());
    png_write_end(png, info);
    return true;
}

}  // namespace

bool writePng(const SV::Image& image, const WriteChunk& write) {
    if (image.IsEmpty()) return false;
    Rows rows;
    for (int y = 0; y < image.GetSize().height; ++y) rows.push_back(rgbOf(image, y));
    Output output{write};
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    bool isDone = false;
    if (info) {
        png_set_write_fn(png, &output, onBytes, onFlush);
        isDone = encode(png, info, image.GetSize(), rows);
    }
    png_destroy_write_struct(&png, &info);
    return isDone && output.isGood;
}

}  // namespace zelhost
