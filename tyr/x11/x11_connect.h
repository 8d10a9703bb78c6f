#pragma once

#include <string>

/// What both X11 workstations do at opening and closing.

/// Installs the error handlers and opens the display of that name, the default one when
/// empty; notes screen, depth, visual and colour map. False with a message when that fails.
bool gx_connect(const std::string &name);
/// Foreground and background pixel: white on black, the other way round with the inverse flag.
void gx_choose_pixels();

/// Ends the use of an external window: sends the wish `kill` and forgets window and pixmap.
void gx_release_extern();
