#pragma once

/// Frames on the screen: showing one, a loop's time, deleting, the way back from a zoom.

/// Shows a frame, below 0 the current one, with the zoom in force, and its number in the title.
void gshow_frame(int n);
/// Removes a frame and shows the one that then is current. Returns 1; 0 for a number beyond any.
int gdelete_frame(int n);
/// Waits until the current frame's time is over, handling events five times a second. -1 if there
/// is no frame on show.
int gframe_dwell();
/// Back to zoom factor 1.
void gunzoom();
