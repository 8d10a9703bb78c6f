#include "tyr/x11/x11_events.h"

#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/sys.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/frame_client_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/loop_private.h"
#include "tyr/x11/x11_band_private.h"
#include "tyr/x11/x11_keys_private.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/x11_window.h"
#include "tyr/x11/zoom.h"

using namespace tyr;

namespace {

constexpr int kAboutKeys = 2; ///< kinds of a callback
constexpr int kAboutButtons = 3;
constexpr int kBellVolume = 50;
constexpr char kMessageNewFrame = 2; ///< of a client message
constexpr char kMessageEnd = 9;

constexpr float kShortSleep = 0.1F; ///< s, while a refresh is wanted
constexpr float kLongSleep = 0.5F;
constexpr int kShortSleeps = 50; ///< after the last activity

enum class Wait { none, holding, keyed, ends };

struct State {
    EventCallback callback = nullptr;
    Wait wait = Wait::none;
    bool is_active = false; ///< the last event was a key press or a button's release
    bool is_mapped = false;
    bool is_exposed = false; ///< an expose has been served since the last event of another kind
    bool is_resized = false; ///< and the program hasn't been told yet
    bool in_callback = false;
    int refresh_seconds = 0;
    void (*refresh)() = nullptr;
};

State state;

bool is_live()
{
    return gis_display() && ginq_events() != 0 && x11().display != nullptr && x11().window != 0;
}

/// Calls the program under its own cursor; what happens while it draws isn't told.
void tell(int kind, const std::string &text, float x, float y)
{
    if (state.callback == nullptr || state.in_callback) {
        return;
    }
    const int cursor = gset_cursor_sync(kCursorCallback);
    state.in_callback = true;
    state.callback(kind, text.c_str(), x, y);
    state.in_callback = false;
    gset_cursor_sync(cursor);
}

/// The same with a place on the window, which becomes world coordinates.
void tell_place(int kind, const std::string &text, int px, int py)
{
    tell(kind, text, gdc_to_wc_x(gzoom_x(static_cast<float>(px))),
         gdc_to_wc_y(gzoom_y(static_cast<float>(py))));
}

/// Takes over a size that the window got, once no drawing is under way: a plot that is half done
/// goes on in the old one.
void settle_resize()
{
    if (!state.is_resized || state.in_callback || state.wait == Wait::none) {
        return;
    }
    state.is_resized = false;
    if (gresize_ws(-1, -1) == 0) {
        return;
    }
    ginit_ws(kTranX11Redraw);
    int width = 0;
    int height = 0;
    ginq_ws_size(&width, &height);
    tell(kAboutKeys, "size", static_cast<float>(width), static_cast<float>(height));
}

void on_message(const XClientMessageEvent &event)
{
    switch (event.data.b[0]) {
    case kMessageNewFrame:
        loop_take_frame();
        break;
    case kMessageFinished:
        frame_client_finished();
        break;
    case kMessageEnd:
        state.wait = Wait::ends;
        break;
    default:
        break;
    }
}

/// Another program has taken the window away: nothing can be shown any more, nor ended by a key.
void on_destroyed(const XDestroyWindowEvent &event)
{
    if (!frame_client_lost(event.window) && event.window == x11().window) {
        MSG_out(kMsgWarn, "gprocess_x11_event: another program has destroyed the window\n");
        MSG_out(kMsgError, "Fatal X11 Error\n");
        SYS_exit(kExitNoGraphics);
    }
}

void on_key(XKeyEvent *event)
{
    state.is_active = true;
    if (state.wait != Wait::holding && state.wait != Wait::keyed) {
        return;
    }
    state.wait = Wait::keyed;
    const std::string key = key_text(event);
    const KeyResult result = do_key(key, *event);
    if (result == KeyResult::end) {
        state.wait = Wait::ends;
    }
    if (result != KeyResult::taken) {
        tell_place(kAboutKeys, key + modifier_text(event->state), event->x, event->y);
    }
}

void on_press(const XButtonEvent &event)
{
    do_button(event);
    band_press(event.x, event.y);
    tell_place(kAboutButtons, button_text(event), event.x, event.y);
}

void on_release(const XButtonEvent &event)
{
    state.is_active = true;
    band_release(event.x, event.y);
    tell_place(kAboutButtons, button_text(event), event.x, event.y);
}

/// The pointer's last place; those before it don't count.
void on_motion(XEvent *event)
{
    while (XCheckTypedEvent(x11().display, MotionNotify, event) != 0) {
    }
    band_move(event->xmotion.x, event->xmotion.y);
}

/// Waits for something to happen, or for the time of a refresh.
void wait_for_event()
{
    if (state.refresh == nullptr || state.refresh_seconds <= 0) {
        gblock_events();
        return;
    }
    SYS_timer_reset();
    for (int rounds = 0; state.wait != Wait::ends; rounds++) {
        if (gpump_events() > 0) {
            return;
        }
        if (SYS_timer_read() >= static_cast<float>(state.refresh_seconds)) {
            state.refresh();
            return;
        }
        SYS_sleep(rounds < kShortSleeps ? kShortSleep : kLongSleep);
    }
}

void step_loop()
{
    gframe_dwell();
    if (state.is_mapped) {
        gshow_frame(gnext_frame(0));
    }
    SYS_timer_reset();
    gpump_events();
}

} // namespace

void gset_event_callback(EventCallback function)
{
    state.callback = function;
}

int gprocess_x11_event(XEvent *event)
{
    if (!is_live()) {
        return 0;
    }
    state.is_active = false;
    if (event->type != Expose && event->type != ConfigureNotify) {
        state.is_exposed = false;
    }
    switch (event->type) {
    case Expose:
        if (!state.is_exposed) {
            state.is_exposed = true;
            gupdate_ws();
        }
        break;
    case MapNotify:
        state.is_mapped = true;
        break;
    case UnmapNotify:
        state.is_mapped = false;
        break;
    case DestroyNotify:
        on_destroyed(event->xdestroywindow);
        break;
    case ConfigureNotify:
        state.is_resized = state.is_resized || event->xconfigure.window == x11().window;
        break;
    case ClientMessage:
        on_message(event->xclient);
        break;
    case KeyPress:
        on_key(&event->xkey);
        break;
    case ButtonPress:
        on_press(event->xbutton);
        break;
    case ButtonRelease:
        on_release(event->xbutton);
        break;
    case MotionNotify:
        on_motion(event);
        break;
    default:
        break;
    }
    settle_resize();
    return 0;
}

int gpump_events()
{
    int active = 0;
    while (is_live() && XPending(x11().display) > 0) {
        XEvent event;
        XNextEvent(x11().display, &event);
        gprocess_x11_event(&event);
        active += state.is_active ? 1 : 0;
    }
    return active;
}

int gblock_events()
{
    if (!is_live()) {
        return 0;
    }
    XEvent event;
    XNextEvent(x11().display, &event);
    gprocess_x11_event(&event);
    return (state.is_active ? 1 : 0) + gpump_events();
}

void gwait()
{
    if (!gis_display() || x11().window == 0) {
        return;
    }
    gset_events(1);
    gpump_events();
    gsync();
    if (ginq_loop() != 0) {
        SYS_timer_reset();
    }
    state.wait = Wait::holding;
    settle_resize();
    while (state.wait != Wait::ends) {
        if (ginq_frames() < 2) {
            gset_cursor_sync(kCursorWaiting);
            wait_for_event();
        } else if (ginq_loop() != 0) {
            gset_cursor_sync(kCursorLooping);
            step_loop();
        } else {
            gset_cursor_sync(kCursorFrames);
            wait_for_event();
        }
    }
    state.wait = Wait::none;
    gbell(kBellVolume);
    gset_cursor_sync(kCursorEnded);
}

void gset_refresh(int seconds, void (*function)())
{
    state.refresh_seconds = seconds;
    state.refresh = function;
}

void gevents_reset(int mode)
{
    band_reset();
    if (mode == 0) {
        state.wait = Wait::none;
    }
}

void gset_wait(int on)
{
    state.wait = on == 1 ? Wait::holding : Wait::none;
}

int gis_waiting()
{
    return state.wait != Wait::ends ? 1 : 0;
}

int gis_mapped()
{
    return state.is_mapped ? 1 : 0;
}
