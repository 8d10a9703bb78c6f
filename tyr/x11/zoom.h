#pragma once

/// Zoom of the display: the picture magnified by whole factors, pixel by pixel, without a redraw.
/// It works on each frame of a loop as it is shown.

inline constexpr int kMaxZoom = 1024;

/// Shows a frame magnified about a place.
/// @param frame    a frame number of gks/frames
/// @param x, y     window pixels; -1 keeps the centre in force
/// @param factor   -1 keeps the factor, 0 or above sets it, -n multiplies it by n
/// @param refresh  1 only puts the zoom in force on another frame
/// @return 1 if a picture was zoomed, else 0
int gzoom(int frame, int x, int y, int factor, int refresh);
/// Forgets the zoom without touching the screen.
void gzoom_reset();
/// Back to factor 1, with the picture that a plot without frames had. True if that was put back;
/// The factor in force.
int ginq_zoom();
/// A window pixel on the picture as it is without zoom.
float gzoom_x(float px);
float gzoom_y(float py);
