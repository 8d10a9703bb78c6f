#include "tyr/x11/frames.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tyr/base/msg.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/frames_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr float kDelay = 0.5F;     ///< s
constexpr float kLastDwell = 1.0F; ///< s; the loop rests at its end
constexpr unsigned kReport = 0x0F000000;

enum Direction { kBackward, kForward, kRockBackward, kRockForward };

struct Frame {
    Pixmap pixmap = 0;
    float dwell = kDelay;
};

struct State {
    std::array<Frame, kMaxFrames> table;
    int count = 0;
    int current = -1;
    bool looping = false;
    Direction direction = kForward;
    float delay = kDelay;
    float last_dwell = kLastDwell;
    bool in_title = true;
};

State state;

/// A number in the place of -1 and -2.
int resolve(int n)
{
    return n == kLastFrame ? state.count - 1 : n == kCurrentFrame ? state.current : n;
}

bool is_frame(int n)
{
    return n >= 0 && n < kMaxFrames;
}

/// Where a frame's pixmap number stands; null for a number that is no frame.
Pixmap *place_of(int n)
{
    if (n == kBackingPixmap) {
        return &x11().pixmap;
    }
    const int frame = resolve(n);
    return is_frame(frame) ? &state.table[static_cast<size_t>(frame)].pixmap : nullptr;
}

Frame &frame_at(int n)
{
    return state.table[static_cast<size_t>(n)];
}

void free_pixmap(Pixmap &pixmap)
{
    if (pixmap != 0) {
        XFreePixmap(x11().display, pixmap);
        pixmap = 0;
    }
}

} // namespace

void ginit_frames()
{
    state.table.fill(Frame{});
    state.count = 0;
    state.current = -1;
}

int ginq_frames()
{
    return state.count;
}

int ginq_cur_frame()
{
    return state.current;
}

int gnew_frame(int n)
{
    if (!x11_can_draw()) {
        return 0;
    }
    n = n <= -1 ? state.count : n;
    if (n >= kMaxFrames) {
        gerror("gnew_frame", "no room for more than %d frames\n", kMaxFrames);
        return -1;
    }
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    Frame &frame = frame_at(n);
    if (frame.pixmap == 0) {
        frame.pixmap =
            XCreatePixmap(x.display, x.window, static_cast<unsigned>(ws.first_width),
                          static_cast<unsigned>(ws.first_height), static_cast<unsigned>(ws.depth));
    }
    gclear_frame(n);
    if (n > 0) {
        frame_at(n - 1).dwell = state.delay;
    }
    if (state.count < kMaxFrames) {
        frame_at(state.count).dwell = state.last_dwell;
    }
    gsync();
    MSG_out(kReport, "Created frame: %d-%ld\n", n, static_cast<long>(frame.pixmap));
    if (n == state.count) {
        state.count++;
    }
    return n;
}

int gclear_frame(int n)
{
    const Pixmap *pixmap = place_of(n);
    if (!x11_can_draw() || pixmap == nullptr || *pixmap == 0) {
        return 0;
    }
    const WorkstationState &ws = kernel().ws;
    gx_fill_background(*pixmap, 0, 0, ws.first_width, ws.first_height);
    return 0;
}

int gselect_frame(int n)
{
    if (!x11_can_draw()) {
        return 0;
    }
    gset_recording(0);
    const Pixmap *pixmap = place_of(n);
    if (pixmap != nullptr && *pixmap != 0) {
        x11().target = *pixmap;
    }
    MSG_out(kReport, "Selected frame: %d\n", resolve(n));
    return 0;
}

int gswap_frames(int a, int b)
{
    Pixmap *one = place_of(a);
    Pixmap *other = place_of(b);
    if (!x11_can_draw() || one == nullptr || other == nullptr) {
        return 0;
    }
    X11State &x = x11();
    if (x.target == *one || x.target == *other) {
        x.target = x.target == *one ? *other : *one;
    }
    std::swap(*one, *other);
    return 0;
}

int gcopy_frame(int to, int from)
{
    const Pixmap *source = place_of(from);
    const Pixmap *goal = place_of(to);
    if (!x11_can_draw() || source == nullptr || goal == nullptr || *source == 0 || *goal == 0) {
        return 0;
    }
    const X11State &x = x11();
    const WorkstationState &ws = kernel().ws;
    XCopyArea(x.display, *source, *goal, x.common, ws.x_offset, ws.y_offset,
              static_cast<unsigned>(ws.width), static_cast<unsigned>(ws.height), ws.x_offset,
              ws.y_offset);
    MSG_out(kMsgDebugC, "Copy frame: %d->%d\n", from, to);
    return 0;
}

void gfree_frames()
{
    if (x11().display == nullptr) {
        return;
    }
    for (Frame &frame : state.table) {
        if (frame.pixmap != 0 && x11().target == frame.pixmap) {
            x11().target = x11().pixmap;
        }
        free_pixmap(frame.pixmap);
    }
    ginit_frames();
}

unsigned long ginq_frame_pixmap(int n)
{
    const Pixmap *pixmap = place_of(n);
    return pixmap != nullptr ? *pixmap : 0;
}

float ginq_frame_dwell(int n)
{
    return is_frame(resolve(n)) ? frame_at(resolve(n)).dwell : 0.0F;
}

float ginq_loop_delay()
{
    return state.delay;
}

void gloop_delay(float change)
{
    state.delay = std::max(state.delay + change, 0.0F);
    for (int i = 0; i + 1 < state.count; i++) {
        frame_at(i).dwell = state.delay;
    }
    MSG_out(kReport,
            change > 0.0F ? "Loop delay incremented to: %2.2f\n"
                          : "Loop delay decremented to: %2.2f\n",
            double{state.delay});
}

void gset_loop(int on)
{
    state.looping = on != 0;
    gset_cursor(on != 0 ? kCursorLooping : kCursorFrames);
    MSG_out(kReport, on != 0 ? "Looping initiated\n" : "Looping stopped\n");
}

int ginq_loop()
{
    return state.looping ? 1 : 0;
}

void gloop_toggle(int how)
{
    gset_loop(how == 0 || how == 1 ? how : !state.looping);
    gsync();
}

void gset_loop_direction(int direction)
{
    if (direction >= kBackward && direction <= kRockForward) {
        state.direction = static_cast<Direction>(direction);
    }
}

int ginq_loop_direction()
{
    return state.direction;
}

int gnext_frame(int step)
{
    if (state.count == 0) {
        return -1;
    }
    const bool rocks = state.direction >= kRockBackward;
    const int way = state.direction % 2 != 0 ? 1 : -1;
    int next = state.current < 0 ? 0 : state.current + (step != 0 ? step : way);
    MSG_out(kMsgDebugC, "INC: %d-%d %d-%d\n", step, static_cast<int>(state.direction),
            state.current, next);
    if (next >= state.count) {
        next = rocks ? std::max(state.count - 2, 0) : 0;
        state.direction = rocks ? kRockBackward : state.direction;
    } else if (next < 0) {
        next = rocks ? std::min(1, state.count - 1) : state.count - 1;
        state.direction = rocks ? kRockForward : state.direction;
    }
    return next;
}

void gset_frame_title(int on)
{
    state.in_title = on != 0;
}

int ginq_frame_title()
{
    return state.in_title ? 1 : 0;
}

void tyr::frames_set_current(int n)
{
    state.current = n;
}

void tyr::frames_remove(int n)
{
    // the single frame keeps its pixmap: it may be the one that other programs draw into
    if (!(n == 0 && state.count == 1)) {
        if (x11().target == frame_at(n).pixmap) {
            x11().target = x11().pixmap;
        }
        free_pixmap(frame_at(n).pixmap);
        std::rotate(state.table.begin() + n, state.table.begin() + n + 1,
                    state.table.begin() + state.count);
    }
    const bool was_last = n == state.count - 1;
    state.count--;
    if (was_last && state.count > 0) {
        frame_at(state.count - 1).dwell = state.last_dwell;
        frame_at(state.count).dwell = state.delay;
    }
    if (state.current == state.count) {
        state.current--;
    }
}
