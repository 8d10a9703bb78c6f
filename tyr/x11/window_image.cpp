#include "tyr/x11/window_image.h"

#include "tyr/image/gif.h"
#include "tyr/image/png.h"
#include "tyr/image/xwd.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_image.h"

namespace {

int write_window(const char *path, int (*write)(const char *, ImageRec *))
{
    ImageRec image;
    if (gget_image(&image) == 0) {
        return 0;
    }
    const int result = write(path, &image);
    IMG_free(&image);
    return result;
}

} // namespace

int GIF_write_window(const char *path)
{
    return write_window(path, [](const char *to, ImageRec *image) {
        image->transparent = ginq_bg_pixel(); // where transparency is asked for
        return GIF_write(to, image);
    });
}

int IMG_write_png_window(const char *path)
{
    return write_window(path, IMG_write_png);
}

int IMG_write_xwd_window(const char *path)
{
    return write_window(path, IMG_write_xwd);
}
