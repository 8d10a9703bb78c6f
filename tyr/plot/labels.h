#pragma once

#include "tyr/base/date.h"

/// The six text slots around the picture, each of six lines: upper left, centre and right, lower
/// left, centre and right.

enum LabelSlot {
    kLabelUpperLeft,
    kLabelUpperCentre,
    kLabelUpperRight,
    kLabelLowerLeft,
    kLabelLowerCentre,
    kLabelLowerRight,
    kLabelSlots
};
inline constexpr int kLabelLines = 6;
inline constexpr int kLabelWidth = 70; ///< bytes of a line, the end included

/// Label modes; above 0 complete.
enum PlotLabelMode {
    kLabelsMinimal = -2,
    kLabelsSimple = -1,
    kLabelsNormal = 0,
    kLabelsComplete = 1
};

/// Put a text into a slot at the current line. With a negative label mode lines above 0 are
/// appended to line 0, as far as 59 characters go. Longer texts are cut.
void PLT_label_ul(const char *text);
void PLT_label_uc(const char *text);
void PLT_label_ur(const char *text);
void PLT_label_ll(const char *text);
void PLT_label_lc(const char *text);
void PLT_label_lr(const char *text);

/// Writes a label as a word of the resource `label` tells it: a slot, perhaps a line, a colon and a
/// text with the codes of TIME_expand_label ("ul1:%D"). Other words are passed over.
void PLT_apply_label(const char *word);

/// Line that the slot routines write, 0 to 5; raises the count of lines to it.
void PLT_set_label_line(int n);
/// Shift of all drawn lines, for a plot over another.
void PLT_set_label_offset(int n);
int PLT_get_label_offset();
/// Raises the count of lines that the height of a line is reckoned from; -n sets it to n.
void PLT_set_label_count(int n);
int PLT_get_label_count();
void PLT_set_label_mode(int mode);
int PLT_get_label_mode();

/// Text of a slot's line; empty outside the slots.
const char *PLT_get_label(int slot, int line);

/// Date that the "%" codes of the resource `label` work on.
void PLT_set_label_date(const DateRec *date);

/// Empties all texts.
void PLT_clear_labels();

/// Applies the resource `label`, then draws border and labels. @return 0; -1 when the margin has no
/// room for labels
int PLT_draw_labels();
