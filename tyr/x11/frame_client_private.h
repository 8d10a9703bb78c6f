#pragma once

#include <X11/Xlib.h>

namespace tyr {

/// A program that draws a frame of another program's window, as both sides see it. The client names
/// itself by a small window of its own in a property of the owner's window; the server takes that
/// window away when the client dies, and the owner is told.

/// Of a client message: the frame is finished.
inline constexpr char kMessageFinished = 3;

/// The client's side: names itself on the window, and forgets that again.
void frame_client_begin(Display *display, Window owner);
void frame_client_end(Display *display);

/// The owner's side: notes who draws into the frame that was made last. Warns when it is gone.
void frame_client_watch(Display *display, Window owner, int frame);
/// A client has told that its frame is finished.
void frame_client_finished();
/// A window was destroyed; warns when a client had named itself by it. False for other windows.
bool frame_client_lost(Window window);

} // namespace tyr
