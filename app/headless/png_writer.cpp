// PNG output through libpng.
#include "app/headless/png_writer.h"

#include <cstdio>
#include <png.h>
#include <vector>

namespace tessaly::app {

bool writePng(const screen::Plane& plane, const std::string& path, std::string& error)
{
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        error = "cannot write " + path;
        return false;
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (png == nullptr || info == nullptr) {
        png_destroy_write_struct(&png, &info);
        std::fclose(file);
        error = "cannot start a PNG image";
        return false;
    }
    // libpng reports its errors by a long jump back here.
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        std::fclose(file);
        error = "cannot write " + path;
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, static_cast<png_uint_32>(plane.width()), static_cast<png_uint_32>(plane.height()), 8,
        PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    std::vector<png_byte> row(static_cast<size_t>(plane.width()) * 3);
    for (int y = 0; y < plane.height(); ++y) {
        const screen::Pixel* pixels = plane.row(y);
        for (int x = 0; x < plane.width(); ++x) {
            row[static_cast<size_t>(x) * 3] = static_cast<png_byte>(pixels[x] >> 16);
            row[static_cast<size_t>(x) * 3 + 1] = static_cast<png_byte>(pixels[x] >> 8);
            row[static_cast<size_t>(x) * 3 + 2] = static_cast<png_byte>(pixels[x]);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    if (std::fclose(file) != 0) {
        error = "cannot write " + path;
        return false;
    }
    return true;
}

} // namespace tessaly::app
