#include "tyr/x11/x11_window.h"

#include <algorithm>
#include <cstdio>

#include <X11/Xutil.h>
#include <X11/cursorfont.h>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/state_private.h"
#include "tyr/start/convert.h"
#include "tyr/x11/frame_reply_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_connect.h"
#include "tyr/x11/x11_default.h"
#include "tyr/x11/x11_gc_private.h"
#include "tyr/x11/x11_icon_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/zoom.h"

using namespace tyr;

namespace {

constexpr int kStartX = 100;
constexpr int kStartY = 100;
constexpr int kStartWidth = 640;
constexpr int kStartHeight = 512;
constexpr int kMaxSide = 16384; ///< pixels; a pixmap beyond it is no window's
constexpr unsigned kBorder = 5;
constexpr char kClass[] = "Tyr";
constexpr int kDefaultVolume = 50; ///< of the bell, percent

constexpr long kEventMask = KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask |
                            EnterWindowMask | LeaveWindowMask | ButtonMotionMask | ExposureMask |
                            StructureNotifyMask | FocusChangeMask;

constexpr std::array<unsigned, kNumCursors> kCursorShapes = {
    XC_X_cursor, XC_left_ptr, XC_fleur, XC_exchange, XC_dot,
    XC_pencil,   XC_tcross,   XC_xterm, XC_watch,
};

/// Place and size of the window, from the geometry text if there is one.
XSizeHints size_hints()
{
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    XSizeHints hints{};
    hints.flags = PPosition | PSize;
    hints.x = kStartX;
    hints.y = kStartY;
    hints.width = ws.width > 0 && ws.height > 0 ? ws.width : kStartWidth;
    hints.height = ws.width > 0 && ws.height > 0 ? ws.height : kStartHeight;
    const char *resource = RES_get("geometry");
    const std::string geometry = resource != nullptr ? resource : gx_default("geometry");
    if (geometry.empty()) {
        return hints;
    }
    int left = 0;
    int top = 0;
    unsigned width = 0;
    unsigned height = 0;
    const int given = XParseGeometry(geometry.c_str(), &left, &top, &width, &height);
    if ((given & WidthValue) != 0 && (given & HeightValue) != 0) {
        hints.flags |= USSize;
        hints.width = static_cast<int>(std::clamp(width, 1U, static_cast<unsigned>(kMaxSide)));
        hints.height = static_cast<int>(std::clamp(height, 1U, static_cast<unsigned>(kMaxSide)));
    }
    if ((given & XValue) != 0 && (given & YValue) != 0) {
        hints.flags |= USPosition;
        hints.x = (given & XNegative) != 0 ? DisplayWidth(x.display, x.screen) - hints.width + left
                                           : left;
        hints.y = (given & YNegative) != 0 ? DisplayHeight(x.display, x.screen) - hints.height + top
                                           : top;
    }
    return hints;
}

bool create_window(const XSizeHints &hints)
{
    X11State &x = x11();
    XSetWindowAttributes attributes{};
    attributes.background_pixel = x.background;
    attributes.border_pixel = x.foreground;
    attributes.backing_store = Always;
    attributes.event_mask = kEventMask;
    attributes.colormap = x.default_map;
    x.report_errors = false;
    x.error_seen = false;
    x.window = XCreateWindow(
        x.display, RootWindow(x.display, x.screen), hints.x, hints.y,
        static_cast<unsigned>(hints.width), static_cast<unsigned>(hints.height), kBorder,
        kernel().ws.depth, InputOutput, x.visual,
        CWBackPixel | CWBorderPixel | CWBackingStore | CWEventMask | CWColormap, &attributes);
    XSync(x.display, 0);
    x.report_errors = true;
    return x.window != 0 && !x.error_seen;
}

bool starts_iconified()
{
    int iconified = STR_casecmp(gx_default("iconic").c_str(), "on") == 0 ? 1 : 0;
    RES_get_value("icon", &iconified, kResFlag);
    return iconified != 0;
}

/// Tells the window manager name, icon, class and start of the window.
void set_properties(XSizeHints hints)
{
    X11State &x = x11();
    WorkstationState &ws = kernel().ws;
    std::replace(ws.title.begin(), ws.title.end(), '_', ' ');
    XSetStandardProperties(x.display, x.window, ws.title.c_str(), ws.title.c_str(), 0, nullptr, 0,
                           &hints);
    XWMHints wm{};
    wm.flags = InputHint | StateHint | IconPixmapHint;
    wm.input = 1;
    wm.initial_state = starts_iconified() ? IconicState : NormalState;
    x.icon = wm.icon_pixmap = XCreatePixmapFromBitmapData(
        x.display, x.window, const_cast<char *>(reinterpret_cast<const char *>(kIconBits)),
        kIconSize, kIconSize, BlackPixel(x.display, x.screen), WhitePixel(x.display, x.screen), 1);
    XSetWMHints(x.display, x.window, &wm);
    XClassHint names{};
    std::string class_name = kClass;
    names.res_name = ws.app_name.data();
    names.res_class = class_name.data();
    XSetClassHint(x.display, x.window, &names);
}

/// Shows the window and waits until the server has; what it said is left for the event loop.
void map_window()
{
    const X11State &x = x11();
    XMapWindow(x.display, x.window);
    XSync(x.display, 0);
    XEvent event;
    XWindowEvent(x.display, x.window, ExposureMask | StructureNotifyMask, &event);
    XPutBackEvent(x.display, &event);
}

Pixmap new_pixmap(int width, int height)
{
    const X11State &x = x11();
    return XCreatePixmap(x.display, x.window, static_cast<unsigned>(width),
                         static_cast<unsigned>(height), static_cast<unsigned>(kernel().ws.depth));
}

void set_size(int width, int height)
{
    WorkstationState &ws = kernel().ws;
    ws.width = ws.first_width = width;
    ws.height = ws.first_height = height;
}

/// A backing pixmap of a new size; the old one's picture goes into its corner.
void replace_pixmap(int width, int height, int copied_width, int copied_height)
{
    X11State &x = x11();
    const Pixmap fresh = new_pixmap(width, height);
    gx_fill_background(fresh, 0, 0, width, height);
    XCopyArea(x.display, x.pixmap, fresh, x.common, 0, 0, static_cast<unsigned>(copied_width),
              static_cast<unsigned>(copied_height), 0, 0);
    XFreePixmap(x.display, x.pixmap);
    x.pixmap = x.target = fresh;
}

} // namespace

int gx_open_display(const std::vector<std::string> &words)
{
    X11State &x = x11();
    if (!gx_connect(words.empty() ? "" : words[0])) {
        return -1;
    }
    gset_device(kDeviceDisplay);
    gset_events(1);
    if (std::getenv("tyrinverse") != nullptr) {
        gset_invert(1);
    }
    gx_choose_pixels();
    const XSizeHints hints = size_hints();
    if (!create_window(hints)) {
        x.window = 0;
        MSG_out(kMsgWarn, "gopen_ws: unable to open window\n");
        return -1;
    }
    set_properties(hints);
    x.common = XCreateGC(x.display, x.window, 0, nullptr);
    x.pixmap = x.target = new_pixmap(hints.width, hints.height);
    write_frame_reply(x.display, x.window, true); // who asks for a frame knows that one answers
    map_window();
    gcolor_init();
    XWindowAttributes attributes;
    XGetWindowAttributes(x.display, x.window, &attributes);
    set_size(attributes.width, attributes.height);
    if (attributes.width != hints.width || attributes.height != hints.height) {
        XFreePixmap(x.display, x.pixmap);
        x.pixmap = x.target = new_pixmap(attributes.width, attributes.height);
    }
    kernel().ws.x_offset = kernel().ws.y_offset = 0;
    XClearWindow(x.display, x.window);
    gx_fill_background(x.pixmap, 0, 0, attributes.width, attributes.height);
    XSync(x.display, 0);
    return 0;
}

void gx_close()
{
    X11State &x = x11();
    if (gis_display()) {
        gfree_frames();
        gzoom_reset();
        XUnmapWindow(x.display, x.window);
        XDestroyWindow(x.display, x.window);
        XFreePixmap(x.display, x.pixmap);
        XFreePixmap(x.display, x.icon);
        x.icon = 0;
        x.window = 0;
        x.pixmap = x.target = 0;
    }
    gx_free_gcs();
    if (x.common != nullptr) {
        XFreeGC(x.display, x.common);
        x.common = nullptr;
    }
    for (Cursor &cursor : x.cursors) {
        if (cursor != 0) {
            XFreeCursor(x.display, cursor);
            cursor = 0;
        }
    }
    if (gis_display()) {
        gx_free_colormap();
    }
    XSync(x.display, 0);
    if (gis_extern_window()) {
        gx_release_extern();
    }
}

void gx_clear()
{
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    if (!x11_can_draw()) {
        return;
    }
    if (gis_display()) {
        gx_fill_background(x.pixmap, 0, 0, ws.first_width, ws.first_height);
    } else {
        gx_fill_background(x.target, ws.x_offset, ws.y_offset, ws.width, ws.height);
    }
}

int gupdate_ws()
{
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    if (!gis_x11() || x.display == nullptr || x.window == 0 || x.pixmap == 0) {
        return -1;
    }
    XCopyArea(x.display, x.pixmap, x.window, x.common, 0, 0, static_cast<unsigned>(ws.first_width),
              static_cast<unsigned>(ws.first_height), 0, 0);
    gsync();
    return 0;
}

int gresize_ws(int w, int h)
{
    X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    if (!gis_display() || x.window == 0) {
        return 0;
    }
    if (w > 0) {
        XClearWindow(x.display, x.window);
        const int width = std::min(w, kMaxSide);
        const int height = std::clamp(h, 1, kMaxSide);
        XResizeWindow(x.display, x.window, static_cast<unsigned>(width),
                      static_cast<unsigned>(height));
        replace_pixmap(width, height, width, height);
        set_size(width, height);
    } else {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(x.display, x.window, &attributes) == 0 ||
            (attributes.width == ws.width && attributes.height == ws.height)) {
            return 0;
        }
        XClearWindow(x.display, x.window);
        const bool keeps = w == -1;
        replace_pixmap(attributes.width, attributes.height, keeps ? ws.first_width : 0,
                       keeps ? ws.first_height : 0);
        set_size(attributes.width, attributes.height);
    }
    gzoom_reset();
    gfree_frames();
    return 1;
}

int ginq_window_name(char *out)
{
    const X11State &x = x11();
    char *name = nullptr;
    out[0] = '\0';
    if (x.display == nullptr || x.window == 0 || XFetchName(x.display, x.window, &name) == 0 ||
        name == nullptr) {
        return -1;
    }
    const std::string text = name;
    XFree(name);
    const std::string &title = kernel().ws.title;
    size_t behind = STR_has_prefix(text, title.c_str()) ? title.size() : 0;
    while (behind < text.size() && text[behind] == ' ') {
        behind++;
    }
    STR_copy(out, kTitleRoom, text.substr(behind).c_str());
    return 0;
}

int gset_title(const char *text)
{
    const X11State &x = x11();
    kernel().ws.title = std::string(text).substr(0, kTitleRoom - 1);
    if (!gis_x11() || !ginq_open() || x.window == 0) {
        return -1;
    }
    XStoreName(x.display, x.window, ginq_title());
    XSetIconName(x.display, x.window, ginq_title());
    XSync(x.display, 0);
    return 0;
}

int gset_title_suffix(const char *text)
{
    const X11State &x = x11();
    if (!gis_x11() || x.display == nullptr || x.window == 0) {
        return -1;
    }
    const std::string suffix = text != nullptr ? text : "";
    const std::string name = suffix.empty() ? ginq_title() : ginq_title() + (" " + suffix);
    XStoreName(x.display, x.window, name.c_str());
    XSync(x.display, 0);
    return 0;
}

void gsync()
{
    if (gis_x11() && x11().display != nullptr) {
        XSync(x11().display, 0);
    }
}

void gbell(int percent)
{
    if (gis_x11() && x11().display != nullptr) {
        XBell(x11().display, percent != 0 ? std::clamp(percent, -100, 100) : kDefaultVolume);
        gsync();
    }
}

int gset_cursor(int n)
{
    X11State &x = x11();
    const int before = x.cursor;
    if (n < 0 || n >= kNumCursors) {
        return before;
    }
    if (gis_display() && x.window != 0) {
        Cursor &cursor = x.cursors[static_cast<size_t>(n)];
        if (cursor == 0) { // when it is first shown: the first one loads further libraries
            cursor = XCreateFontCursor(x.display, kCursorShapes[n]);
        }
        XDefineCursor(x.display, x.window, cursor);
    }
    x.cursor = n;
    return before;
}

int gset_cursor_sync(int n)
{
    if (!gis_x11()) {
        return x11().cursor;
    }
    const int before = gset_cursor(n);
    gsync();
    return before;
}

int ginq_cursor()
{
    return x11().cursor;
}
