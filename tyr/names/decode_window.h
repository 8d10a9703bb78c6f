#pragma once

#include "tyr/base/date.h"

// The window of report times for a decoding run.

/// Keeps a date, applies the user's hour and reads the resource `decode_hour` for the hour and the
/// minutes before and after it (-15 and +10 by default).
void TIME_set_decode(const DateRec *date);
/// The decode date, after the user's hour and the resource have been applied.
void TIME_get_decode(DateRec *date);
/// 1 if a report time (hhmm) falls into the window.
int TIME_in_window(int hhmm);
