#include <algorithm>
#include <cmath>

#include <poll.h>

#include <X11/Xatom.h>

#include "tyr/x11/frame_reply_private.h"

using namespace tyr;

namespace {

constexpr char kProperty[] = "TYR_FRAME_REPLY";
constexpr int kItemBits = 32;
constexpr long kNumItems = 2; ///< serial, 1 if the frame was made

} // namespace

FrameReply tyr::read_frame_reply(Display *display, Window window)
{
    FrameReply reply;
    Atom type = 0;
    int bits = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char *data = nullptr;
    const int status =
        XGetWindowProperty(display, window, XInternAtom(display, kProperty, 0), 0, kNumItems, 0,
                           XA_INTEGER, &type, &bits, &count, &left, &data);
    if (status == Success && data != nullptr && bits == kItemBits && count == kNumItems) {
        const long *items = reinterpret_cast<const long *>(data); // 32 bits are longs in memory
        reply = {items[0], items[1] != 0};
    }
    if (data != nullptr) {
        XFree(data);
    }
    return reply;
}

void tyr::write_frame_reply(Display *display, Window window, bool is_made)
{
    const long items[kNumItems] = {read_frame_reply(display, window).serial + 1, is_made ? 1 : 0};
    XChangeProperty(display, window, XInternAtom(display, kProperty, 0), XA_INTEGER, kItemBits,
                    PropModeReplace, reinterpret_cast<const unsigned char *>(items), kNumItems);
    XSync(display, 0);
}

void tyr::wait_on_connection(Display *display, float seconds)
{
    if (!(seconds > 0.0F) || XPending(display) > 0) {
        return;
    }
    pollfd waiting{ConnectionNumber(display), POLLIN, 0};
    poll(&waiting, 1, static_cast<int>(std::ceil(std::min(seconds, 3600.0F) * 1000.0F)));
}
