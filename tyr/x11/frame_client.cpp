#include <X11/Xatom.h>

#include "tyr/base/msg.h"
#include "tyr/x11/frame_client_private.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr char kProperty[] = "TYR_FRAME_CLIENT";
constexpr int kItemBits = 32;

struct State {
    Window own = 0;     ///< of this process as a client
    Window watched = 0; ///< of the client that draws into a frame of ours
    int frame = 0;
};

State state;

Window read_client(Display *display, Window owner)
{
    Window client = 0;
    Atom type = 0;
    int bits = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char *data = nullptr;
    const int status = XGetWindowProperty(display, owner, XInternAtom(display, kProperty, 0), 0, 1,
                                          1, XA_WINDOW, &type, &bits, &count, &left, &data);
    if (status == Success && data != nullptr && bits == kItemBits && count == 1) {
        client = *reinterpret_cast<const Window *>(data); // 32 bits are longs in memory
    }
    if (data != nullptr) {
        XFree(data);
    }
    return client;
}

/// Asks to be told of a window's end; false where it has ended already.
bool select_end_of(Display *display, Window window)
{
    X11State &x = x11();
    const bool reported = x.report_errors;
    const bool seen = x.error_seen;
    XSync(display, 0);
    x.report_errors = false;
    x.error_seen = false;
    XSelectInput(display, window, StructureNotifyMask);
    XSync(display, 0);
    const bool is_there = !x.error_seen;
    x.report_errors = reported;
    x.error_seen = seen;
    return is_there;
}

void warn_lost()
{
    MSG_out(kMsgWarn, "The program that drew frame %d has ended without finishing it\n",
            state.frame);
    state.watched = 0;
}

} // namespace

void tyr::frame_client_begin(Display *display, Window owner)
{
    XSetWindowAttributes attributes{};
    state.own = XCreateWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, InputOnly,
                              nullptr, 0, &attributes);
    XChangeProperty(display, owner, XInternAtom(display, kProperty, 0), XA_WINDOW, kItemBits,
                    PropModeReplace, reinterpret_cast<const unsigned char *>(&state.own), 1);
}

void tyr::frame_client_end(Display *display)
{
    if (state.own != 0) {
        XDestroyWindow(display, state.own);
        state.own = 0;
    }
}

void tyr::frame_client_watch(Display *display, Window owner, int frame)
{
    state.watched = read_client(display, owner); // and takes the property away
    state.frame = frame;
    if (state.watched != 0 && !select_end_of(display, state.watched)) {
        warn_lost();
    }
}

void tyr::frame_client_finished()
{
    state.watched = 0;
}

bool tyr::frame_client_lost(Window window)
{
    if (window == 0 || window != state.watched) {
        return false;
    }
    warn_lost();
    return true;
}
