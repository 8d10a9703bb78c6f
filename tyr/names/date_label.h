#pragma once

#include <cstddef>

#include "tyr/base/date.h"

/// Room of the label that TIME_expand_label writes.
inline constexpr size_t kLabelRoom = 256;

/// Date and forecast code (kMissingInt for none) of the plot, that TIME_expand_label works on.
void TIME_set_plot(const DateRec *date, int forecast);

/// Expands the `%` codes of plot labels for the date and forecast of TIME_set_plot, and turns `_`
/// into a blank. D date, V valid time, W valid day, y m b d h n fields, f and F forecast, %.
void TIME_expand_label(const char *format, char *out);

/// Prints a date: "1999/3/6 12:30:00".
void TIME_print(unsigned mask, const DateRec *date);
