#pragma once

/// Writes the picture on the screen as TYRIMG, with the domain of the plot and the first lines of
/// its labels. Returns 1, or 0 where there is no window or the file can't be written.
int IMG_write_window(const char *path);
