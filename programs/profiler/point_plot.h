#pragma once

#include "programs/profiler/records.h"
#include "programs/profiler/setup.h"
#include "tyr/plot/attributes.h"
#include "tyr/var/variable.h"

/// What section and level map share: symbols of one report at one place, and the corner's date.

namespace tyr {

struct Styles {
    AttrRec data;
    AttrRec wind;
};

/// Settles how values are drawn, by the resources as they stand.
Styles setup_values();

/// Makes ready for the symbols of one picture.
void begin_points();

/// Draws every variable that is drawn at points, with the answer to `asked`, where (x, y) of the
/// projection stands. A map tells its values at the level out4.
void plot_point(const ProfilerRecord &record, VarRec *asked, const Styles &styles, float x, float y,
                PlotMode mode);

/// Labels the picture with the date of the file last read, or else with one given.
void label_date(const DateRec &date);

} // namespace tyr
