#include "tyr/x11/loop.h"

#include <algorithm>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/sys.h"
#include "tyr/gks/recorder.h"
#include "tyr/x11/frame_client_private.h"
#include "tyr/x11/frame_reply_private.h"
#include "tyr/x11/frames_private.h"
#include "tyr/x11/loop_private.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/zoom_private.h"

using namespace tyr;

namespace {

constexpr float kLongestWait = 0.2F; ///< s without a look at the events

} // namespace

void gshow_frame(int n)
{
    if (!x11_can_draw()) {
        return;
    }
    const int current = std::max(ginq_cur_frame(), 0);
    n = n < 0 ? current : n;
    if (ginq_zoom() == 1) {
        gcopy_frame(kBackingPixmap, n);
    } else {
        gzoom(n, -1, -1, -1, 1);
    }
    gupdate_ws();
    if (ginq_frame_title() != 0 && ginq_frames() > 0) {
        gset_title_suffix(("[" + std::to_string(n) + "]").c_str());
    }
    MSG_out(kMsgDebugC, "Display frame: %d\n", n);
    frames_set_current(n);
}

int gdelete_frame(int n)
{
    n = n == kLastFrame ? ginq_frames() - 1 : n == kCurrentFrame ? ginq_cur_frame() : n;
    if (n < 0 || n >= kMaxFrames || !x11_can_draw()) {
        return 0;
    }
    if (n >= ginq_frames()) {
        return 1;
    }
    const bool was_shown = n == ginq_cur_frame();
    frames_remove(n);
    if (ginq_frames() == 0) {
        XClearWindow(x11().display, x11().window);
        gsync();
    } else if (was_shown) {
        gshow_frame(kCurrentFrame);
    }
    return 1;
}

int gframe_dwell()
{
    const int current = ginq_cur_frame();
    if (current < 0 || current > ginq_frames()) {
        return -1;
    }
    for (;;) {
        // a key may shorten the time while it passes
        const float left = ginq_frame_dwell(current) - SYS_timer_read();
        if (!(left > 0.0F)) {
            return 0;
        }
        gobj_pump(); // another program may be waiting for its frame
        wait_on_connection(x11().display, std::min(left, kLongestWait));
    }
}

void gunzoom()
{
    if (!gis_display() || ginq_zoom() == 1) {
        return;
    }
    if (zoom_undo()) {
        gupdate_ws();
    } else {
        gshow_frame(kCurrentFrame);
    }
}

void tyr::loop_take_frame()
{
    gset_title_suffix("+"); // the other program waits for it to go
    gunzoom();
    const int count = ginq_frames();
    bool is_made = true;
    if (count == 0) {
        gnew_frame(0);
        gset_loop(1);
        gswap_frames(0, kBackingPixmap);
    } else if (gnew_frame(-1) == count) {
        gcopy_frame(count, count - 1);
        gswap_frames(count, count - 1);
        gclear_frame(count);
        gsync();
    } else {
        is_made = false;
    }
    if (is_made) {
        frame_client_watch(x11().display, x11().window, ginq_frames() - 1);
    }
    write_frame_reply(x11().display, x11().window, is_made);
    gset_title_suffix("");
}
