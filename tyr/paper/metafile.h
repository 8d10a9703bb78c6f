#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// The metafile device: the kernel's calls as lines of text ("TYRMETA"), or lines and clip
/// rectangles as a CGM in the binary encoding (ISO/IEC 8632-3). Unit: a hundredth of an inch.

/// Opens the output: a file, `|command` or `+file` to append. Null when that fails.
std::FILE *gmeta_open(const char *target);
/// Writes the head of the file, in the form that is set.
void gmeta_header();
/// Writes the tail and closes. -1 if nothing is open or the output didn't all go out.
int gmeta_close();

/// Writes to a text metafile; nothing in the binary form or with nothing open.
void gmeta_printf(const char *format, ...) __attribute__((format(printf, 1, 2)));
/// Writes "word n " and n points, x,y, four to a line, to a text metafile. A line break stands
/// behind every fourth point, but behind the last only when `always` is set; another ends the
/// record where none stands there yet.
void gmeta_points(const char *word, int n, const float *points, bool always);

/// A polyline in world coordinates, in the form that is set.
void gmeta_polyline(int n, const float *points);
/// A word, a number, and a rectangle given as x minimum, x maximum, y minimum, y maximum.
void gmeta_rect(const char *word, int number, const float rect[4]);

/// Opens for a redraw of a window's picture: `METAOUT` or "tyr.meta". False when that fails.
bool gmeta_open_print();

/// The binary form (1) or the text form (0).
void gset_meta_binary(int on);
int ginq_meta_binary();

/// Head of a CGM element: class, element id, parameter length in bytes (31: the length follows),
/// and the 16-bit `value`, if it is above 0 or the length is 31.
void gcgm_element(int element_class, int id, int length, int value);
/// A point in device and in world coordinates, two 16-bit numbers.
void gcgm_point(float x, float y);
void gcgm_wc_point(float x, float y);
/// A polyline in world coordinates; one too long for an element goes out in pieces.
void gcgm_polyline(int n, const float *points);
/// The clip rectangle in device coordinates; nothing in the text form.
void gcgm_clip(float x0, float y0, float x1, float y1);

/// The device's part of opening the workstation: `words` are the target and the device words.
/// Sets size and offset of the view surface. 0, or -1 with a report.
int gmeta_open_ws(const std::vector<std::string> &words);
