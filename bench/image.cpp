// How fast pictures of 2,000 by 1,600 pixels are written as GIF and PNG: a plot of thin lines,
// shaded bands, and noise. Where giflib is there, it writes the same pictures from places in a
// palette that are ready, which ours has yet to find. Prints ms, the best of some runs.
// usage: bench_image [FOLDER that keeps the files]

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <png.h>

#include "tyr/base/msg.h"
#include "tyr/image/gif.h"
#include "tyr/image/palette_private.h"
#include "tyr/image/png.h"

#ifdef TYR_HAVE_GIFLIB
#include <gif_lib.h>
#endif

namespace {

constexpr int kWidth = 2000;
constexpr int kHeight = 1600;
constexpr int kRuns = 7;

using Painter = std::function<unsigned(int, int)>;

/// A picture with 32-bit pixels; IMG_free frees it.
ImageRec paint(const Painter &colour)
{
    ImageRec image;
    IMG_init(&image);
    image.width = kWidth;
    image.height = kHeight;
    image.depth = 24;
    image.bits_per_pixel = 32;
    image.bytes_per_line = 4 * kWidth;
    image.byte_order = kLowByteFirst;
    image.red_mask = 0xFF0000;
    image.green_mask = 0xFF00;
    image.blue_mask = 0xFF;
    if (!tyr::image_allocate(&image)) {
        return image;
    }
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const unsigned pixel = colour(x, y);
            std::memcpy(image.data + 4 * (static_cast<size_t>(y) * kWidth + x), &pixel, 4);
        }
    }
    return image;
}

/// Barbs, a grid and curves on a dark ground.
unsigned plot(int x, int y)
{
    if (x % 140 == 0 || y % 160 == 0) {
        return 0x808080;
    }
    const int in_x = x % 28;
    const int in_y = y % 32;
    const bool has_barb = (x / 28 * 7 + y / 32 * 3) % 4 != 0;
    if (has_barb && (in_x == in_y / 2 + 4 || (in_y == 4 && in_x > 6 && in_x < 14))) {
        return 0x00FF00;
    }
    const double curve = 800.0 + 300.0 * std::sin(x / 130.0);
    return std::fabs(y - curve) < 1.5 ? 0xFFFF00 : 0;
}

unsigned bands(int x, int y)
{
    const double field = std::sin(x / 170.0) * std::cos(y / 140.0) + 0.3 * std::sin((x + y) / 60.0);
    const int level = static_cast<int>((field + 1.4) * 7.0);
    return 0x203040U + static_cast<unsigned>(level) * 0x0B0705U;
}

unsigned noise(int x, int y)
{
    unsigned seed = static_cast<unsigned>(x) * 2654435761U ^ static_cast<unsigned>(y) * 40503U;
    seed ^= seed >> 13U;
    seed *= 2246822519U;
    return (seed >> 24U) * 0x010101U;
}

double best_of(const std::function<void()> &run)
{
    double best = 1e9;
    for (int i = 0; i < kRuns; ++i) {
        const auto start = std::chrono::steady_clock::now();
        run();
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        best = std::min(best, taken.count());
    }
    return best;
}

/// libpng alone, from places that are ready.
void write_by_libpng(const std::string &path, tyr::IndexedImage &indexed)
{
    std::FILE *file = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, kWidth, kHeight, 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette(tyr::kPaletteSize);
    png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    png_write_info(png, info);
    for (int y = 0; y < kHeight; ++y) {
        png_write_row(png, &indexed.places[static_cast<size_t>(y) * kWidth]);
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

#ifdef TYR_HAVE_GIFLIB
void write_by_giflib(const std::string &path, tyr::IndexedImage &indexed)
{
    GifFileType *file = EGifOpenFileName(path.c_str(), false, nullptr);
    int colours = 2;
    while (colours < static_cast<int>(indexed.values.size())) {
        colours *= 2;
    }
    ColorMapObject *map = GifMakeMapObject(colours, nullptr);
    EGifPutScreenDesc(file, kWidth, kHeight, 8, 0, map);
    EGifPutImageDesc(file, 0, 0, kWidth, kHeight, false, nullptr);
    for (int y = 0; y < kHeight; ++y) {
        EGifPutLine(file, &indexed.places[static_cast<size_t>(y) * kWidth], kWidth);
    }
    GifFreeMapObject(map);
    EGifCloseFile(file, nullptr);
}
#endif

} // namespace

int main(int argc, char **argv)
{
    MSG_set_mask(0, kMsgError);
    const std::string folder =
        argc > 1 ? argv[1] : std::filesystem::temp_directory_path().string() + "/bench_image";
    std::filesystem::create_directories(folder);
    const struct {
        const char *name;
        Painter painter;
    } pictures[] = {
        {"plot",  plot },
        {"bands", bands},
        {"noise", noise}
    };
    std::printf("%-8s %10s %10s %10s %10s %10s\n", "", "GIF", "giflib", "palette", "PNG", "libpng");
    for (const auto &p : pictures) {
        ImageRec image = paint(p.painter);
        tyr::IndexedImage indexed = tyr::image_index(image);
        const std::string path = folder + "/" + p.name;
        const std::vector<unsigned char> pixels(image.data, image.data + 4 * kWidth * kHeight);
        double gif = 1e9;
        for (int i = 0; i < kRuns; ++i) { // the writer leaves places in the pixels
            std::copy(pixels.begin(), pixels.end(), image.data);
            const auto start = std::chrono::steady_clock::now();
            GIF_write((path + ".gif").c_str(), &image);
            const std::chrono::duration<double, std::milli> taken =
                std::chrono::steady_clock::now() - start;
            gif = std::min(gif, taken.count());
        }
        std::copy(pixels.begin(), pixels.end(), image.data);
        double giflib = 0.0;
#ifdef TYR_HAVE_GIFLIB
        giflib = best_of([&] { write_by_giflib(path + "_giflib.gif", indexed); });
#endif
        const double palette = best_of([&] { tyr::image_index(image); });
        const double png = best_of([&] { IMG_write_png((path + ".png").c_str(), &image); });
        const double libpng = best_of([&] { write_by_libpng(path + "_lib.png", indexed); });
        std::printf("%-8s %10.1f %10.1f %10.1f %10.1f %10.1f\n", p.name, gif, giflib, palette, png,
                    libpng);
        IMG_free(&image);
    }
    if (argc < 2) {
        std::filesystem::remove_all(folder);
    }
    return 0;
}
