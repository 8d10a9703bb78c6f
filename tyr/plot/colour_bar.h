#pragma once

/// The colour bar: the bands of the level store with their levels, under the plot.

/// Bar mode: 2 on, -2 off, 0 not asked for.
void PLT_set_bar_mode(int mode);
int PLT_get_bar_mode();

/// Fixed ends of the bar.
void PLT_set_bar_range(float low, float high);

/// 1, once in a plot, if the bar is on; else 0.
int PLT_bar_due();
/// Begins a plot: the bar may be due again.
void PLT_clear_bar();

/// Draws the bar. @param side  1: the left half below the plot. @param title  text at its right
/// end, empty for none. @return 0; -1 if there is none to draw
int PLT_color_bar(int side, const char *title);
