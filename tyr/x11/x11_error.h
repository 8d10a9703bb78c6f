#pragma once

#include <X11/Xlib.h>

/// X11 error handlers. Protocol errors are told and counted; the 25th ends the process with code
/// 4, as the loss of the connection does at once. Frames are given back to the server first.
int gx_error(Display *d, XErrorEvent *e);
int gx_io_error(Display *d);
