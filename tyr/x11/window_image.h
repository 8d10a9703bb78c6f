#pragma once

/// The picture on the screen as a file. Each grabs the draw target and returns 1, or 0 where there
/// is no window or the file can't be written.

int GIF_write_window(const char *path);
int IMG_write_png_window(const char *path);
int IMG_write_xwd_window(const char *path);
