#pragma once

#include "tyr/plot/attributes.h"

/// Plots values: one number, wind, text or sign at one place, in the style that formats ask for.

inline constexpr int kValueFormatRoom = 80; ///< format tokens of a value, the end included
inline constexpr int kValueTextRoom = 40;

struct PlotStyle;

/// One value to plot. The caller owns and reuses it.
struct PlotValue {
    float x, y; ///< place in the coordinates of transformation 2
    int type;   ///< how to draw it, a VarType of var/type_words.h
    AttrRec attr;
    char format[kValueFormatRoom]; ///< format tokens, see PLT_parse_format
    char text[kValueTextRoom];     ///< a word, a symbol's code, a mark's name
    float value1, value2;          ///< of a wind direction (degrees) and speed (knots)
};

/// Place, values and attributes Missing, texts empty; the type stays.
void PLT_init_value(PlotValue *value);

/// Values Missing, text empty; nothing else changes.
void PLT_clear_value(PlotValue *value);

/// Starts a series: the base style from the attributes, the scale, and the resources `plot_param`,
/// `plot_format`, `con_base`, `con_interval`. @return 0; -1 if nothing is to be drawn
int PLT_setup_values(const AttrRec *attr, float scale);

/// Reads the words of `plot_param` that set the base style: skip, text, mark, line, ybar, xy,
/// places.
void RAW_set_plot_options();

/// The base style of the series.
PlotStyle &PLT_base_style();

/// Forgets the points that lines between values go through.
void PLT_clear_points();

/// Draws a value in the base style, overlaid by the value's own attributes and format.
/// @return 0; -1 if it isn't drawn
int PLT_plot_value(PlotValue *value);
