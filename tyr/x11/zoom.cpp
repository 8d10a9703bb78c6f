#include "tyr/x11/zoom.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include <X11/Xutil.h>

#include "tyr/base/msg.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/zoom_private.h"

using namespace tyr;

namespace {

struct State {
    int factor = 1;
    int centre_x = 0, centre_y = 0; ///< pixel of the source at the centre of the view
    int corner_x = 0, corner_y = 0; ///< pixel of the source at the view's upper left
    Pixmap saved = 0;               ///< picture of a plot without frames as it was
};

State state;

/// The picture as it is without zoom: a frame's, or the one put by when the zoom began.
Pixmap source_of(int frame)
{
    const Pixmap pixmap = ginq_frames() > 0 ? ginq_frame_pixmap(frame) : 0;
    const Pixmap plain = state.saved != 0 ? state.saved : x11().pixmap;
    return pixmap != 0 ? pixmap : plain;
}

void save_picture()
{
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    const auto width = static_cast<unsigned>(ws.first_width);
    const auto height = static_cast<unsigned>(ws.first_height);
    if (state.saved == 0) {
        state.saved =
            XCreatePixmap(x.display, x.window, width, height, static_cast<unsigned>(ws.depth));
    }
    XCopyArea(x.display, x.pixmap, state.saved, x.common, 0, 0, width, height, 0, 0);
}

/// Lowest source pixel of the view along one side, so that the view stays inside the picture.
int corner(int centre, int side, int factor)
{
    const int shown = side / factor;
    const int first = std::max(centre - shown / 2, 0);
    return shown + first > side ? std::max(side - (side + 1) / factor, 0) : first;
}

/// Magnifies an image in place: each pixel from (x0, y0) on becomes a square of `factor` pixels.
void magnify(XImage *image, int x0, int y0, int factor)
{
    const size_t line = static_cast<size_t>(image->bytes_per_line);
    const std::vector<char> source(image->data,
                                   image->data + line * static_cast<size_t>(image->height));
    const auto bytes = static_cast<size_t>(image->bits_per_pixel / 8);
    const bool is_whole = image->bits_per_pixel % 8 == 0;
    if (!is_whole) {
        return; // screens of less than 8 bits a pixel keep their picture
    }
    for (int y = 0; y < image->height; y++) {
        const int from_y = std::min(y0 + y / factor, image->height - 1);
        char *goal = image->data + line * static_cast<size_t>(y);
        const char *from = source.data() + line * static_cast<size_t>(from_y);
        for (int x = 0; x < image->width; x++) {
            const int from_x = std::min(x0 + x / factor, image->width - 1);
            std::memcpy(goal + bytes * static_cast<size_t>(x),
                        from + bytes * static_cast<size_t>(from_x), bytes);
        }
    }
}

} // namespace

int gzoom(int frame, int x, int y, int factor, int refresh)
{
    if (!gis_display() || !x11_can_draw() || (state.factor == 1 && refresh != 0)) {
        return 0;
    }
    if (state.factor >= kMaxZoom && refresh == 0) {
        MSG_out(kMsgWarn, "gzoom: Cannot zoom past 1024x\n");
        return 0;
    }
    if (state.factor == 1 && refresh == 0) {
        const int on_show = ginq_frames() > 0 ? ginq_cur_frame() : -1;
        if (on_show < 0) {
            save_picture();
        }
    }
    const X11State &w = x11();
    const int width = kernel().ws.width;
    const int height = kernel().ws.height;
    XImage *image = XGetImage(w.display, source_of(frame), 0, 0, static_cast<unsigned>(width),
                              static_cast<unsigned>(height), AllPlanes, ZPixmap);
    if (image == nullptr) {
        return 0;
    }
    const bool is_zoomed = state.factor > 1;
    if (x == -1) {
        x = is_zoomed ? state.centre_x : width / 2;
        y = is_zoomed ? state.centre_y : height / 2;
    } else if (is_zoomed) {
        x = state.centre_x + (x - width / 2) / state.factor;
        y = state.centre_y + (y - height / 2) / state.factor;
    }
    if (factor >= 0) {
        state.factor = std::clamp(factor, 1, kMaxZoom);
    } else if (factor < -1) {
        state.factor *= std::min(-factor, kMaxZoom / state.factor);
    }
    state.corner_x = corner(x, width, state.factor);
    state.corner_y = corner(y, height, state.factor);
    state.centre_x = width / state.factor / 2 + state.corner_x;
    state.centre_y = height / state.factor / 2 + state.corner_y;
    magnify(image, state.corner_x, state.corner_y, state.factor);
    XPutImage(w.display, w.pixmap, w.common, image, 0, 0, 0, 0, static_cast<unsigned>(width),
              static_cast<unsigned>(height));
    XSync(w.display, 0);
    XDestroyImage(image);
    gupdate_ws();
    return 1;
}

void gzoom_reset()
{
    if (state.saved != 0) {
        XFreePixmap(x11().display, state.saved);
    }
    state = State{};
}

bool tyr::zoom_undo()
{
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    const Pixmap saved = state.saved;
    if (saved != 0) {
        XCopyArea(x.display, saved, x.pixmap, x.common, 0, 0, static_cast<unsigned>(ws.first_width),
                  static_cast<unsigned>(ws.first_height), 0, 0);
    }
    gzoom_reset();
    return saved != 0;
}

int ginq_zoom()
{
    return state.factor;
}

float gzoom_x(float px)
{
    return static_cast<float>(state.corner_x) + px / static_cast<float>(state.factor);
}

float gzoom_y(float py)
{
    return static_cast<float>(state.corner_y) + py / static_cast<float>(state.factor);
}
