#pragma once

#include "tyr/plot/attributes.h"

/// Levels and the look of the bands between them: which attributes belong to a value.

inline constexpr int kMaxBands = 256;
inline constexpr int kLevelLabelRoom = 10;

/// Forgets interval, base, limits, levels and rows.
void CONT_reset();

/// Level from which bands are counted, width of a band, limits outside of which values have no
/// colour. A Missing argument leaves its setting alone.
void CONT_set_base(float base);
void CONT_set_interval(float interval);
void CONT_set_limits(float max, float min);

/// Range of the values that the levels are to span, which the colour bar shows where there are no
/// explicit levels. A Missing argument leaves its end alone.
void CONT_set_range(float low, float high);

/// Copies the explicit levels (room for kMaxBands floats) if `out` isn't null. @return their count,
/// 0 if there are none
int CONT_get_levels(float *out);

/// Builds the rows of the bands from a list of words, or a file named by a single word: an
/// attribute text; a number, colour and level in one; "level:attributes"; ":la=text" for a label;
/// "16-31" for a row a colour index. The resource `color_fill` replaces `text` without `force`. An
/// empty text takes the fill colours of the colour table, else a default list of fifteen.
/// @return 0; -1 if the rows already stand or came from the colour table
int CONT_set_fill_colors(const char *text, int force);

/// Attributes of the band that a value lies in; colour -1 for Missing, outside the limits, below
/// the first explicit level, and where there are no rows or no interval. Without explicit levels
/// bands are counted from the base; an unset base counts as 0, as in the colour bar.
void CONT_value_attr(float value, AttrRec *out);

/// An interval of few digits that divides a range into about `count` bands.
float CONT_nice_interval(int count, float high, float low);

/// What the colour bar reads of the store.
struct LevelView {
    float interval, base, low, high;
    int levels; ///< explicit levels; 0 for none
    int rows;   ///< rows of bands
    bool has_levels;
};
LevelView CONT_view();
/// Row i (taken round the count), explicit level i, and label of row i (empty for none).
AttrRec CONT_row(int i);
float CONT_level(int i);
const char *CONT_label(int i);
