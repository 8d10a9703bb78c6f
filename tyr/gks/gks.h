#pragma once

#include "tyr/base/device_kind.h"

/// The graphics kernel, in the manner of GKS: one workstation, six normalisation transformations,
/// polyline, polymarker, fill area and stroke text with attributes of their own, colours by index.
///
/// Points are flat arrays of x, y floats in world coordinates of the selected transformation.
/// Rectangles that callers pass are four floats: x minimum, x maximum, y minimum, y maximum.
/// Routines return 0 or, on a failure that they report through gerror, -1, unless told otherwise;
/// after a report the call has had no effect. The one workstation has the number 1; the routines
/// that take a workstation number accept any.

inline constexpr int kNumTransformations = 6;
inline constexpr int kAppNameRoom = 32; ///< bytes of the application name with its end
inline constexpr int kTitleRoom = 60;   ///< bytes of the window title with its end

// ---------------------------------------------------------------------------------------------
// Kernel and workstation

/// Opens the kernel: reports go to the file `error_file`, or to standard error when it is null.
/// The size is ignored. 1 when the file can't be opened, else 0.
int gopen_gks(const char *error_file, unsigned buffer_size);
/// Closes the error stream unless it is the standard one, and forgets it.
int gclose_gks();

/// Opens the workstation on a device. `params` is a comma-separated list: the target (file, pipe
/// `|command`, append `+file`, display name), then words of the device. Null counts as empty.
int gopen_ws(int ws, const char *params, int device);
/// Ends the output of the device. -1 when none is open, and when the output didn't all go out
/// (full disk, a spooler that died): that has then been told by a message.
int gclose_ws(int ws);
/// Puts attributes and transformations to their defaults, for opening, redraw and resize; the mode
/// is a TranMode. -1 does nothing and returns -1.
int ginit_ws(int mode);
/// Clears the picture of a display; nothing elsewhere. The flag isn't read.
int gclear_ws(int ws, int flag);
/// Shows on the window what was drawn. -1 where there is no window.
int gupdate_ws();
/// For the order of calls of GKS; they do nothing.
int gactivate_ws(int ws);
int gdeactivate_ws(int ws);

/// Puts a named mark into the output of a file device.
int gmessage(int ws, const char *text);
/// Reports a bad call: `routine: text`, the text cut at 79 characters, through MSG_out at 192.
/// Silent before gopen_gks.
void gerror(const char *routine, const char *format, ...) __attribute__((format(printf, 2, 3)));

/// Whether a workstation is open, and its device kind.
int ginq_open();
int ginq_device();
int gset_device(int kind);
int gis_display();
int gis_extern_window();
int gis_x11();
int gis_postscript();
int gis_hpgl();
int gis_metafile();
/// Depth in bits; 10 on the file devices.
int ginq_depth();

/// View surface, backing pixmap and offset of the view surface, in device units.
void ginq_ws_size(int *width, int *height);
void ginq_first_size(int *width, int *height);
void ginq_ws_offset(int *x, int *y);
/// Sets the size of the view surface and derives the device transformation from it; windows and
/// viewports stay.
void gset_ws_size(int width, int height);

/// Name for X11 resources, cut at 31 characters, and title of the plot, cut at 59.
int gset_app_name(const char *text);
const char *ginq_app_name();
int gset_title(const char *text);
const char *ginq_title();
/// Shows a text behind the title in the window's name, the bare title for an empty one. -1 without
/// a window.
int gset_title_suffix(const char *text);
/// Waits until the X11 server has done all; nothing elsewhere.
void gsync();
/// Rings the bell at so many percent (0: 50) on the X11 devices.
void gbell(int percent);

/// The window's cursors.
enum CursorNumber {
    kCursorEnded = 0,    ///< the hold has ended
    kCursorCallback = 1, ///< the program's callback runs
    kCursorLooping = 3,
    kCursorFrames = 4,  ///< loop stopped, frames on hand
    kCursorWaiting = 6, ///< on a single picture
    kCursorBusy = 8,
};
/// Sets the window's cursor; returns the one before. The second waits for the server and works on
/// the X11 devices only.
int gset_cursor(int n);
int gset_cursor_sync(int n);
int ginq_cursor();
/// What an external window is asked to do: 1 clear, 2 new frame, 9 kill.
void gset_wish(int value);

/// Whether drawing is kept for later redraws, and whether events are handled while drawing. File
/// devices turn both off. The setters return the value before.
int gset_recording(int on);
int ginq_recording();
int gset_events(int on);
int ginq_events();

// ---------------------------------------------------------------------------------------------
// Transformations

/// Window (world coordinates) and viewport (normalised coordinates) of transformation n, 0 to 5;
/// another number is reported and changes nothing. A viewport of the selected transformation
/// moves the clip rectangle.
int gset_window(int n, const float rect[4]);
int gset_viewport(int n, const float rect[4]);
/// Selects transformation n, 0 to 5.
int gsel_norm_tran(int n);
/// The part of normalised space that the device shows, and the device rectangle it goes to.
int gset_ws_window(int ws, const float rect[4]);
int gset_ws_viewport(int ws, const float rect[4]);

/// Why the transformations go to their defaults; kTranResize takes over a new device size only.
enum TranMode {
    kTranX11 = 0,
    kTranX11Redraw = 1,
    kTranPostScript = 2,
    kTranHpgl = 3,
    kTranMetafile = 4,
    kTranResize = 10,
};
void gset_tran_defaults(int mode);

/// Window, then viewport of transformation n, each x minimum, x maximum, y minimum, y maximum.
/// `err` becomes 0. -1 when n isn't 0 to 5; `out` then is left alone.
int ginq_norm_tran(int n, int *err, float out[8]);

/// What ginq_max_ds fills: the size of the view surface.
struct MaxDisplaySize {
    int units;    ///< always 1
    float dx, dy; ///< last addressable device unit: width - 1, height - 1
    int width, height;
};
int ginq_max_ds(int ws, int *err, void *rec);

/// World to device for X11 (y down, clamped to +-30000) and back, for pointer positions.
float gwc_to_dc_x(float x);
float gwc_to_dc_y(float y);
float gdc_to_wc_x(float x);
float gdc_to_wc_y(float y);
/// World to device for the file devices (y up, clamped to +-100000).
float gwc_to_pc_x(float x);
float gwc_to_pc_y(float y);
/// Normalised to device, X11 (dc) and files (pc), clamped likewise.
float gndc_to_dc_x(float x);
float gndc_to_dc_y(float y);
float gndc_to_pc_x(float x);
float gndc_to_pc_y(float y);
/// World coordinate of transformation `from` to world coordinate of transformation `to`, both 0
/// to 5; another number gives the coordinate back.
float gtran_x(int from, int to, float x);
float gtran_y(int from, int to, float y);

/// X11 clip rectangle of the selected viewport: x, y, width, height in device pixels.
void gclip_rect(short out[4]);
/// 1 if the bounding box of the n points overlaps the selected window, else 0.
int gextent_visible(int n, const float *points);

// ---------------------------------------------------------------------------------------------
// Output primitives and their attributes

/// Polyline through n points, at least 2. 1 on a metafile, else 0. A line whose bounding box lies
/// outside the window is dropped.
int gpolyline(int n, const float *points);
/// A marker at each of n points.
int gpolymarker(int n, const float *points);
/// Area bounded by n points, closed by itself. 1 on a metafile, else 0.
int gfill_area(int n, const float *points);

/// Line attributes: colour index; type 1 solid, 2 long dashes, 3 and 4 mixed, 5 short dashes;
/// width factor, 0 or more.
int gset_line_colr_ind(int index);
int gset_linetype(int type);
int gset_linewidth(float width);
int ginq_line_colr();

/// Marker attributes: colour index; type 1 point, 2 plus, 3 star, 4 circle, 5 x, 6 square,
/// 7 triangle, 8 dot, 9 inverted triangle; size factor and stroke width, 0 or more. The size of a
/// marker is 10 times the factor in pixels, or in hundredths of an inch on paper.
int gset_marker_colr_ind(int index);
int gset_marker_type(int type);
int gset_marker_size(float size);
int gset_marker_width(float width);
int ginq_marker_colr();

/// Fills a rectangle in world coordinates (x minimum, x maximum, y minimum, y maximum) with the
/// background.
int gclear_region(const float rect[4]);

/// Marks the objects of the redraw store from create to close as a segment, and takes a segment
/// out of the store. 0; -1 on a metafile, which gets the call as a line.
int gcreate_seg(int id);
int gclose_seg(int id);
int gdelete_seg(int id);

/// Fill attributes: colour index; interior style 1 solid, 2 pattern; pattern 0 to 19.
int gset_fill_colr_ind(int index);
int gset_fill_int_style(int style);
int gset_fill_style_ind(int index);
int ginq_fill_colr();
/// With the flag set, fills come out black on devices without colour.
void gset_fill_black(int flag);
int ginq_fill_black();

/// Fill pattern: 8 rows of 8 bits, top row first, lowest bit leftmost. Null outside 0 to 19.
const unsigned char *gfill_pattern(int index);

// ---------------------------------------------------------------------------------------------
// Stroke text

/// Draws a text at a position in world coordinates, by the text attributes.
int gtext(const float pos[2], const char *text);
/// Length of a text along its line by the text attributes, world units; 0 while closed.
float gtext_length(const char *text);

/// Builds the font list from the resource `font_list` and loads the current font.
int gsetup_fonts();
/// Loads a font file found through `file_path`.
int read_font(const char *name);
/// Selects font rec[0] of the list, counted from 1; the precision rec[1] isn't used.
int gset_fontprec(const int rec[2]);
/// Place of a font in the list, counted from 1: a number as it stands, or an id; 1 if not found.
int gfont_number(const char *word);

int gset_text_colr_ind(int index);
/// Factor on all widths, 0 or more.
int gset_expan(float factor);
int gset_text_width(float width);
/// Height of capitals above the base line, world units, 0 or more.
int gset_char_ht(float height);
/// Gap between characters, in hundreds of font units (0.25 at first).
int gset_text_spacing(float spacing);
/// Fixed pitch in hundreds of font units; 0 for proportional text.
int gset_char_space(float pitch);

enum TextHorizontal { kAlignNormal, kAlignLeft, kAlignCentre, kAlignRight };
enum TextVertical { kAlignVNormal, kAlignTop, kAlignCap, kAlignHalf, kAlignBase, kAlignBottom };
/// Alignment: horizontal (0 normal, 1 left, 2 centre, 3 right), vertical (0 normal, 1 top, 2 cap,
/// 3 half, 4 base, 5 bottom).
int gset_text_align(const int rec[2]);
int ginq_text_align(int *err, int rec[2]);
/// Direction of a character's upright; any length but 0.
int gset_char_up(const float up[2]);
int ginq_text_colr();

// ---------------------------------------------------------------------------------------------
// Colour representation

inline constexpr int kMaxColour = 256;       ///< greatest index of the tables
inline constexpr int kBackgroundEntry = 256; ///< table entry that index -1 reaches
/// Black, white and grey, each in plain, double and fourfold width.
enum PrintColour : int { kPrintBlack = 500, kPrintWhite = 503, kPrintGrey = 506 };
inline constexpr int kFirstPrintColour = kPrintBlack;
inline constexpr int kLastPrintColour = 508;

/// Red, green, blue (0 to 1) of a colour index, 0 to 256 or -1; print colours are ignored.
int gset_colr_rep(int ws, int index, const float rgb[3]);
/// The storing step alone; a negative index looks for an equal entry or makes a new one. Returns
/// the X11 pixel, 1 on other devices; -1 when the table is full.
int gset_color(int index, float red, float green, float blue);
/// Whether an index is -1, 0 to 256 or a print colour.
int gcolor_valid(int index);
/// 1 if the three differences from the entry sum to less than 0.01. With by_pixel `index` is a
/// pixel value. Index -1 gives 0.
int gcolor_same(int index, int by_pixel, float red, float green, float blue);
/// Colour of an index, -1 for the background, as fractions and as 0 to 255. An index without an
/// entry gives black.
void ginq_color(int index, float *red, float *green, float *blue);
void ginq_color255(int index, int *red, int *green, int *blue);
/// Gives the background its colour: on X11 the resource or X11 default `background`, a colour word
/// or a name of the server ("none", "def", "over" for none), white on PostScript.
void gcolor_background();
/// Inverse colours: black on white.
void gset_invert(int flag);
int ginq_invert();
/// Wishes for the X11 colour map: read-write cells, a private map.
void gset_rw_colors(int flag);
void gset_local_cmap(int flag);
