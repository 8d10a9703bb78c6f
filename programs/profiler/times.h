#pragma once

/// Which of several times of a file the user wants, by the word `time=` of `plot_param`.

namespace tyr {

/// Whether every time of a file is a column: `time=all`, and a section, for a map has one time.
bool wants_all_times();

/// The minute of the day that is asked for: `time=hh:mm`, `time=:mm` in the hour of the file's
/// name, or without a word the time of the name. kMissingInt where neither tells one.
int wanted_minute();

} // namespace tyr
