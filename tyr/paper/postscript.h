#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// The PostScript device. Unit: the point, 72 to the inch.

/// Opens the output: a file, `|command` or `+file` to append. Null when that fails.
std::FILE *gps_open(const char *target);
/// Puts colour, grey and width to their start.
void gps_init();
/// Paper in inches.
void gps_set_page(float width, float height);
/// Writes the head of the page; when appending only the plot's own lines.
void gps_prolog();
/// Writes the tail and closes. -1 if nothing is open or the output didn't all go out.
int gps_close();

/// Settings: encapsulated, portrait, colour (1) or grey (0), overall scale, line width base (a
/// whole number).
void gps_set_eps(int flag);
void gps_set_portrait(int flag);
void gps_set_color(int flag);
void gps_set_scale(float scale);
void gps_set_lwidth(int base);

/// Attribute commands; each is left out when it is in force already.
void gps_line_color(int index);
void gps_fill_color(int index);
void gps_width(int index, float width);
void gps_dash(int type);

/// Clips at a rectangle in device coordinates, a tenth of a point wider at each side.
void gps_clip(float x0, float y0, float x1, float y1);

/// Path commands in world coordinates, and in device coordinates (dc).
void gps_move(float x, float y);
void gps_draw(float x, float y);
void gps_move_dc(float x, float y);
void gps_draw_dc(float x, float y);

/// Writes to the output if there is one.
void gps_printf(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// The device's part of opening the workstation: `words` are the target and the device words.
/// Sets size and offset of the view surface. 0, or -1 with a report.
int gps_open_ws(const std::vector<std::string> &words);
