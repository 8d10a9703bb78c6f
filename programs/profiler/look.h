#pragma once

#include "programs/profiler/records.h"

/// What the installation's resources say of the look of a plot, beside what every option sets:
///
/// - `section_margins`: left, right, bottom, top of a section, fractions of the view surface
/// - `section_foot`: room of the hours below a section; bar and lower labels stand below it
/// - `section_label`: a list as `label` has it, where `%N` is the station's name, `%I` its
///   identifier and `%E` its elevation in m
/// - `speed_colors`, `speed_step`: colours of wind speeds, one a step of so many knots from 0 up,
///   the last for all above; speeds in m/s take half a step
///
/// Nothing happens for a resource that isn't set, and the user's own options come first.

namespace tyr {

/// Margins and foot of a section.
void look_at_margins();

/// Colours speeds, with their bar, unless the user colours by levels of his own.
void look_at_speed();

/// Labels of a section: where the user's `label` has the same slot, that stands in the end.
void look_at_station(const ProfilerRecord &record);

} // namespace tyr
