#include "tyr/x11/x11_connect.h"

#include "tyr/base/msg.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_error.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

bool gx_connect(const std::string &name)
{
    X11State &x = x11();
    XSetErrorHandler(gx_error);
    XSetIOErrorHandler(gx_io_error);
    // the connection outlives a workstation
    if (x.display == nullptr || (!name.empty() && name != DisplayString(x.display))) {
        x.display = XOpenDisplay(name.empty() ? nullptr : name.c_str());
    }
    if (x.display == nullptr) {
        MSG_out(kMsgWarn, "gopen_ws: unable to connect to display\n");
        return false;
    }
    x.screen = DefaultScreen(x.display);
    x.visual = DefaultVisual(x.display, x.screen);
    x.default_map = DefaultColormap(x.display, x.screen);
    x.red_mask = static_cast<unsigned>(x.visual->red_mask);
    x.green_mask = static_cast<unsigned>(x.visual->green_mask);
    x.blue_mask = static_cast<unsigned>(x.visual->blue_mask);
    kernel().ws.depth = DefaultDepth(x.display, x.screen);
    return true;
}

void gx_choose_pixels()
{
    X11State &x = x11();
    const unsigned long black = BlackPixel(x.display, x.screen);
    const unsigned long white = WhitePixel(x.display, x.screen);
    x.foreground = ginq_invert() ? black : white;
    x.background = ginq_invert() ? white : black;
}
