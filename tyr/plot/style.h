#pragma once

#include "tyr/base/missing.h"
#include "tyr/plot/attributes.h"

/// The style of a series of values, and the formats that set it.

inline constexpr int kStyleFileRoom = 40;
inline constexpr int kStyleTextRoom = 10;
inline constexpr int kStyleFormatRoom = 62;
inline constexpr int kSkyMark = 1001; ///< mark: the circle of the sky cover

struct PlotStyle {
    AttrRec attr;
    float interval = kMissing; ///< level interval; set: values are coloured by level
    float scale = 1.0F;        ///< of text height, offsets and sizes
    float base = 0.0F;         ///< level base
    float min = kMissing;      ///< values outside aren't plotted
    float max = kMissing;
    int type = 1; ///< from `plot_format`, for values of a file
    char symbol_file[kStyleFileRoom] = "";
    char fixed_text[kStyleTextRoom] = "";   ///< drawn in place of every value
    char format[kStyleFormatRoom] = "";     ///< printf format of numbers
    int ybar = kMissingInt;                 ///< each value draws a bar to this y
    int mark = 0;                           ///< each value draws this marker
    int h_align = 2;                        ///< 1 left, 2 centre, 3 right
    int v_align = 3;                        ///< 1 top, 2 cap, 3 half, 4 base, 5 bottom
    float x_offset = 0.0F, y_offset = 0.0F; ///< from the point, fractions of the window height
    int line = 0;                           ///< each value draws a line from the point before
    int skip = 1;                           ///< values of a file: every n-th alone
};

/// Reads format tokens, separated by ":": a printf format ("%1.0f", or "%z..." without the leading
/// zero), a plot type's word, a place ("ul" to "lr"), and the keys xy= rs= co= fm= hi= sc= wi= fo=
/// te= tx= ta= mk= sf= wf= mn= mx= sk=. Others are ignored.
/// @return the code of the last plot type named (2 for a number format), or 0
int PLT_parse_format(PlotStyle *style, const char *tokens);

/// Reads one word of `plot_param` into a style: skip= text= mark= line ybar= xy= and the places
/// "ul" to "lr", without case. Others are ignored.
void PLT_apply_option(PlotStyle *style, const char *word);

/// Hands a style to the kernel: text, line, marker and fill attributes, symbol file.
void PLT_apply_style(PlotStyle *style);

/// A number as a value's format draws it: "%1.0f" for an empty format; "%z..." drops one leading
/// zero. What is rounded to zero has no sign. A format that isn't one conversion of a real counts
/// as empty. Cut to `room`.
void PLT_format_number(char *out, int room, const char *format, float value);

/// The same for an integer, "%d" for an empty format.
void PLT_format_integer(char *out, int room, const char *format, int value);
