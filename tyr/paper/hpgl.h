#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// The HPGL/2 device, by default within the PCL commands that switch a printer to it. Unit: the
/// plotter unit, taken as 1015 to the inch. One pen; fills by shading.

/// Opens the output: a file, `|command` or `+file` to append. Null when that fails.
std::FILE *ghp_open(const char *target);
/// PCL mode 1 and all current values to their start.
void ghp_init();
/// Writes the head of the page; when appending only pen width, shade and line type.
void ghp_prolog();
/// Writes the tail and closes. -1 if nothing is open or the output didn't all go out.
int ghp_close();

/// Attribute commands; each is left out when it is in force already.
void ghp_line_color(int index);
void ghp_fill_color(int index);
void ghp_width(int index, float width);
void ghp_dash(int type);

/// Clips at a rectangle in device coordinates.
void ghp_clip(float x0, float y0, float x1, float y1);

/// Pen commands in world coordinates, and in device coordinates (dc).
void ghp_move(float x, float y);
void ghp_draw(float x, float y);
void ghp_move_dc(float x, float y);
void ghp_draw_dc(float x, float y);

/// Writes to the output if there is one.
void ghp_printf(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// The device's part of opening the workstation: `words` are the target and the device words.
/// Sets size and offset of the view surface. 0, or -1 with a report.
int ghp_open_ws(const std::vector<std::string> &words);
