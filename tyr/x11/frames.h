#pragma once

/// Frames: pictures of the window's size, kept by the X11 server, that are shown one after the
/// other. Numbers count from 0; kLastFrame, kCurrentFrame and kBackingPixmap stand for others.
/// Everything does nothing, and returns 0, without a display.

inline constexpr int kMaxFrames = 128;

enum FrameNumber : int {
    kLastFrame = -1,
    kCurrentFrame = -2,
    kBackingPixmap = -3,
    kAllFrames = -4,
};

/// Forgets all frames without freeing them.
void ginit_frames();
/// How many there are; the one on show, -1 for none.
int ginq_frames();
int ginq_cur_frame();
/// Makes frame n, -1 for one more, and clears it. Returns its number; -1 when there are 128.
int gnew_frame(int n);
/// Fills a frame with the background.
int gclear_frame(int n);
/// Makes a frame the draw target; recording ends, since the picture is another program's.
int gselect_frame(int n);
/// Exchanges two frames' pixmaps; the draw target stays on its picture.
int gswap_frames(int a, int b);
/// Copies a picture.
int gcopy_frame(int to, int from);
/// Frees all.
void gfree_frames();
/// X11 number of a frame's pixmap, 0 without one.
unsigned long ginq_frame_pixmap(int n);

/// Seconds that a frame stays on show in a loop; of the last frame, of all others.
float ginq_frame_dwell(int n);
float ginq_loop_delay();
/// Changes the delay of all frames but the last, down to 0.
void gloop_delay(float change);

/// Whether the frames are shown as a loop.
void gset_loop(int on);
int ginq_loop();
/// 1 on, 0 off, anything else changes it.
void gloop_toggle(int how);
/// The direction of the loop: 0 backward, 1 forward (at first), 2 and 3 to and fro, now backward or
/// forward. Another number changes nothing.
void gset_loop_direction(int direction);
int ginq_loop_direction();
/// Number of the next frame: `step` on from the current one, with 0 one on in the direction of the
/// loop. Goes round at the ends. -1 without frames.
int gnext_frame(int step);

/// Whether the frame's number stands in the window's title.
void gset_frame_title(int on);
int ginq_frame_title();
