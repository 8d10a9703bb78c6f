#pragma once

#include <string>
#include <vector>

/// The X11 workstations. The display (kind 1) is a window of our own with a backing pixmap of the
/// same size: everything is drawn on the pixmap and copied to the window by an update. The
/// external window (kind 6) is a window and a pixmap of another program, known by number.

/// The device's part of opening the workstation. 0, or -1 with a message.
int gx_open_display(const std::vector<std::string> &words);
int gx_open_window(const std::vector<std::string> &words);
/// Gives back what was opened; the connection stays.
void gx_close();
/// Fills the backing pixmap, and the draw target of an external window, with the background.
void gx_clear();

/// Adopts a size. With w above 0 it is set; with w 0 the window's size is taken and what the
/// pixmap holds is let go, with -1 it is taken and the picture kept. Forgets zoom and frames.
/// @return 1 if the size changed, else 0
int gresize_ws(int w, int h);

/// Reads the window's name; `out` (kTitleRoom) gets the part behind the title. -1 without a window
/// or a name.
int ginq_window_name(char *out);
