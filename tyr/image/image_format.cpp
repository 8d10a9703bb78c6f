#include <algorithm>
#include <iterator>

#include "tyr/image/gif.h"
#include "tyr/image/image_format_private.h"
#include "tyr/image/png.h"
#include "tyr/image/tyrimg.h"
#include "tyr/image/xwd.h"

namespace tyr {

namespace {

int write_plain_tyr(const char *path, ImageRec *image)
{
    return IMG_write_tyr(path, image, 0);
}

constexpr ImageFormat kFormats[] = {
    {kDumpGif,   "GIF", "GIF",   "gif", "tyr.gif", "GIF", 0, GIF_read,     GIF_write      },
    {kDumpPng,   "PNG", "PNG",   "png", "tyr.png", "PNG", 1, IMG_read_png, IMG_write_png  },
    {kDumpImage, "IMG", "IMG",   "img", "tyr.xwd", "TYR", 0, IMG_read_tyr, write_plain_tyr},
    {kDumpXwd,   "XWD", "xdump", "xwd", "tyr.xwd", "",    0, IMG_read_xwd, IMG_write_xwd  },
};

} // namespace

std::span<const ImageFormat> image_formats()
{
    return kFormats;
}

const ImageFormat &image_format(int kind)
{
    const auto *row = std::find_if(std::begin(kFormats), std::end(kFormats),
                                   [kind](const ImageFormat &f) { return f.kind == kind; });
    return row != std::end(kFormats) ? *row : image_format(kDumpXwd);
}

const ImageFormat &image_format_of(std::string_view first_bytes)
{
    return *std::find_if(std::begin(kFormats), std::end(kFormats), [&](const ImageFormat &f) {
        return first_bytes.substr(f.magic_at, f.magic.size()) == f.magic;
    });
}

} // namespace tyr
