#pragma once

#include <X11/Xlib.h>

namespace tyr {

/// What the owner of a window with frames answers to a client that asks for one: a property of the
/// window, which changes with every answer. The window's name tells the same, but goes on changing
/// while the frames loop, so that a client can miss it.
struct FrameReply {
    long serial = 0; ///< of the answer; 0 where the owner knows no such property
    bool is_made = true;
};

/// The last answer on a window; serial 0 without any.
FrameReply read_frame_reply(Display *display, Window window);
/// Answers: the frame was made, or there was no room.
void write_frame_reply(Display *display, Window window, bool is_made);
/// Waits until the connection has something to read, at most that many seconds.
void wait_on_connection(Display *display, float seconds);

} // namespace tyr
