#pragma once

/// The session layer over the kernel: opens kernel and workstation for a plot, derives the aspect
/// of the view surface, sets the standard transformations and loads the colour table. After
/// GPH_open: transformation 0 is the identity, 1 the whole view surface in normalised coordinates,
/// 2 and 3 the plot area.

/// Room for the drawing helpers' formatted text, with its end; a longer one is cut.
inline constexpr int kTextLineRoom = 256;

/// Device kind of a device word by its first letter: m metafile, p PostScript, h or q HPGL,
/// w external window, any other the display. Null counts as empty.
int GPH_device_code(const char *word);

/// Opens everything: device from the resource `device`, names, colour table, workstation,
/// transformations. Ends the process with code 4 when the device can't be opened.
/// @param[out]    ws       workstation number, always 1
/// @param[out]    device   device kind
/// @param[in,out] margins  in: left, right, bottom, top margin as fractions of the usable view
///                         surface; out: viewport of the plot, x min, x max, y min, y max
/// @param         aspect   width over height of the plot; 0 for the shape of the view surface
void GPH_open(int *ws, int *device, float *margins, float aspect);
/// Opens kernel and workstation; asks the user for the device when *device is 0.
void GPH_begin(int *ws, const char *params, int *device);
/// Sets transformations, colours and font on the open workstation, for each plot.
void GPH_setup(int *ws, int *device, float *margins, float aspect);
/// Fits the plot area into the margins (see GPH_open) and sets transformations 2 and 3.
void GPH_set_plot_area(int *ws, int *device, float *margins, float aspect);
/// Extent of the view surface in normalised coordinates: the longer side 1, the other less.
void GPH_get_aspect(int device, float *ax, float *ay);
/// Shrinks the rectangle x min, x max, y min, y max to the shape aw by ah, centred.
void GPH_fit_aspect(float rect[4], float aw, float ah);

/// The fraction of the view surface that plots use: width, height, left, bottom (1, 1, 0, 0).
void GPH_set_view_frac(float w, float h, float x, float y);
/// That part in normalised coordinates: x min, x max, y min, y max.
void GPH_get_view_frac(float out[4]);
float GPH_get_aspect_y();
/// Depth of the shadow of text and markers in pixels, on X11 devices; 0 for none.
void GPH_set_shadow(int depth);
int GPH_get_shadow();

/// Shows the picture and, on the display, waits for the user.
void GPH_hold();
/// Closes all. -1 when nothing was open or when the output didn't all go out (told by a message).
int GPH_end(int ws);

/// Thin names over the transformations.
int GPH_sel_tran(int n);
int GPH_set_viewport(int n, const float rect[4]);
int GPH_set_window(int n, const float rect[4]);
int GPH_get_viewport(int n, float out[4]);
int GPH_get_window(int n, float out[4]);

/// One marker; a rectangle x min, x max, y min, y max; a rectangle by two corners.
int GPH_mark(float x, float y);
int GPH_rect(const float r[4]);
int GPH_box(float x1, float y1, float x2, float y2);

/// Selects a font by number or id; null the default font, which the second routine sets.
int GPH_set_font(const char *name);
void GPH_set_default_font(const char *name);
int GPH_set_text_align(int h, int v);
int GPH_get_text_align(int *h, int *v);
/// Text at a position in world coordinates; the last two format it first.
int GPH_text(const float pos[2], const char *text);
int GPH_textf(const float pos[2], const char *format, ...) __attribute__((format(printf, 2, 3)));
int GPH_text_at(const char *format, double x, double y, ...) __attribute__((format(printf, 1, 4)));

/// gset_colr_rep on workstation 1.
int GPH_set_colour(int index, float r, float g, float b);
