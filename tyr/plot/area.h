#pragma once

/// The plot area: the part of the view surface that holds the picture, with the labels around it.

/// Margins, as fractions of the usable view surface; set before PLT_begin.
void PLT_set_margins(float left, float right, float bottom, float top);
/// No margin at the sides, `margin` below and above.
void PLT_set_full(float margin);
/// That margin; 0 where it wasn't set.
float PLT_get_full();
void PLT_get_margins(float out[4]); ///< left, right, bottom, top

/// Viewport of the plot in normalised coordinates: x minimum, x maximum, y minimum, y maximum.
/// Valid after PLT_begin.
void PLT_get_viewport(float out[4]);
void PLT_set_viewport(const float in[4]);

/// Room below the plot that its own tick labels take, a fraction of the view surface; 0 at start.
/// The lower corner labels and the colour bar begin below it, but for labels inside the picture.
void PLT_set_foot(float height);
float PLT_get_foot();

/// Whether corner labels go inside the picture.
void PLT_set_labels_inside(int flag);
int PLT_labels_inside();

/// Nonzero with inverse colours: light background, dark text.
int PLT_is_light();

/// A named mark in the output, ahead of a group of drawing.
void PLT_message(const char *format, ...) __attribute__((format(printf, 1, 2)));
