#include "tyr/x11/window_image_private.h"
#include "tyr/x11/x11_image.h"

using namespace tyr;

int tyr::write_window_image(const ImageFormat &format, const char *path)
{
    ImageRec image;
    if (gget_image(&image) == 0) {
        return 0;
    }
    const int result = format.write(path, &image);
    IMG_free(&image);
    return result;
}

int GIF_write_window(const char *path)
{
    return write_window_image(image_format(kDumpGif), path);
}

int IMG_write_png_window(const char *path)
{
    return write_window_image(image_format(kDumpPng), path);
}

int IMG_write_xwd_window(const char *path)
{
    return write_window_image(image_format(kDumpXwd), path);
}
