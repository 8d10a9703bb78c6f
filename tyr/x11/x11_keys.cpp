#include <algorithm>
#include <array>
#include <cstdio>

#include <X11/Xutil.h>
#include <X11/keysym.h>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/gks/replay.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/loop.h"
#include "tyr/x11/window_image_private.h"
#include "tyr/x11/x11_keys_private.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/zoom.h"

using namespace tyr;

namespace {

constexpr int kKeyRoom = 80;
constexpr int kStemLength = 5; ///< of the title, in a file's name

constexpr float kSmallDelay = 0.09F; ///< s; below it the steps are small
constexpr float kSmallStep = 0.05F;
constexpr float kStep = 0.1F;
constexpr float kShortestByStep = 0.11F;

void longer_delay()
{
    gloop_delay(ginq_loop_delay() < kSmallDelay ? kSmallStep : kStep);
}

void shorter_delay()
{
    // 0.11 itself, reached by steps, mustn't fall to the other side by rounding
    const bool is_small = ginq_loop_delay() <= kShortestByStep + 1e-4F;
    gloop_delay(is_small ? -kSmallStep : -kStep);
}

void step_frame(int step)
{
    const int next = gnext_frame(step);
    if (next >= 0) {
        gshow_frame(next);
    }
}

constexpr char kNamelessStem[] = "plot"; ///< where the window has no title

/// Path of a picture: the beginning of the title, and the number of a frame if there are any. A
/// slash would make a folder of what stands before it.
std::string image_path(const ImageFormat &format, int frame)
{
    std::string name = std::string(ginq_title()).substr(0, kStemLength);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == '/'; }, '_');
    if (name.empty() || name[0] == '.') {
        name = kNamelessStem; // no hidden file either
    }
    if (frame >= 0) {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "-%2.2d", frame);
        name += number.data();
    }
    std::array<char, kFileNameRoom> path{};
    FILE_join(RES_get("image_path"), (name + "." + format.word).c_str(), path.data());
    return path.data();
}

/// Writes a picture and tells its path, behind `told`.
void write_image(const ImageFormat &format, int frame, const std::string &told)
{
    const std::string path = image_path(format, frame);
    if (write_window_image(format, path.c_str()) == 1) {
        MSG_out(kMsgMess, "%s%s\n", told.c_str(), path.c_str());
    } else {
        MSG_out(kMsgWarn, "gprocess_x11_event: Unable to write %s file: %s\n", format.name,
                path.c_str());
    }
}

void write_images(const ImageFormat &format)
{
    const int cursor = gset_cursor_sync(kCursorBusy);
    const std::string created = std::string("Created ") + format.name + " file: ";
    const int frames = ginq_frames();
    if (frames < 2) {
        write_image(format, -1, created);
    } else if (ginq_loop() == 0) {
        write_image(format, ginq_cur_frame(), created);
    } else {
        MSG_out(kMsgMess, "Creating %s files:\n", format.name);
        const int recording = ginq_recording();
        for (int i = 0; i < frames; i++) {
            gselect_frame(i);
            write_image(format, i, "");
        }
        gselect_frame(kBackingPixmap);
        gset_recording(recording);
    }
    gset_cursor_sync(cursor);
}

void write_metafile()
{
    const int cursor = gset_cursor_sync(kCursorBusy);
    gprint_meta();
    gset_cursor_sync(cursor);
}

} // namespace

std::string tyr::modifier_text(unsigned state)
{
    std::string text;
    text += (state & Mod1Mask) != 0 ? "-Alt" : "";
    text += (state & ShiftMask) != 0 ? "-Shft" : "";
    text += (state & ControlMask) != 0 ? "-Cntrl" : "";
    return text;
}

std::string tyr::key_text(XKeyEvent *event)
{
    std::array<char, kKeyRoom> text{};
    // with Alt a key is a command, which Caps Lock doesn't change
    if ((event->state & Mod1Mask) != 0) {
        event->state &= ~static_cast<unsigned>(LockMask);
    }
    KeySym symbol = NoSymbol;
    const int length = XLookupString(event, text.data(), kKeyRoom - 1, &symbol, nullptr);
    if (symbol == XK_Return || symbol == XK_KP_Enter) {
        return "Ret";
    }
    return {text.data(), static_cast<size_t>(std::max(length, 0))};
}

std::string tyr::button_text(const XButtonEvent &event)
{
    const char way = event.type == ButtonPress ? 'P' : 'R';
    return "B" + std::to_string(event.button) + "-" + way + modifier_text(event.state);
}

KeyResult tyr::do_key(const std::string &key, const XKeyEvent &event)
{
    if (key == "Ret") {
        return KeyResult::end;
    }
    if ((event.state & Mod1Mask) == 0 || key.size() != 1) {
        return KeyResult::pass;
    }
    switch (key[0]) {
    case 'q':
        return KeyResult::end;
    case 'd':
        gdelete_frame(kCurrentFrame);
        break;
    case 'z':
        gzoom(kCurrentFrame, event.x, event.y, -2, 0);
        break;
    case 'u': {
        const bool is_zoomed = ginq_zoom() > 1;
        gunzoom();
        return is_zoomed ? KeyResult::taken : KeyResult::pass;
    }
    case 'm':
        write_metafile();
        break;
    case 'g':
        write_images(image_format(kDumpGif));
        break;
    case 'x':
        write_images(image_format(kDumpXwd));
        break;
    case 'l':
        gloop_toggle(-1);
        break;
    case ']':
        ginq_loop() ? shorter_delay() : step_frame(1);
        break;
    case '[':
        ginq_loop() ? longer_delay() : step_frame(-1);
        break;
    default:
        break;
    }
    return KeyResult::pass;
}

void tyr::do_button(const XButtonEvent &event)
{
    if ((event.state & Mod1Mask) != 0) {
        return;
    }
    switch (event.button) {
    case Button1:
        ginq_loop() ? longer_delay() : step_frame(-1);
        break;
    case Button2:
        gloop_toggle(ginq_loop() ? 0 : 1);
        break;
    case Button3:
        ginq_loop() ? shorter_delay() : step_frame(1);
        break;
    default:
        break;
    }
}
