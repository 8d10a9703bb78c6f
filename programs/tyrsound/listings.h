#pragma once

#include <string>
#include <vector>

#include "tyr/upper_air/held_report.h"

namespace tyr {

/// One line a report: station, number, place, elevation, date, counts of levels.
void list_stations(const std::vector<HeldReport> &held);

/// Whether a word names a listing: "levels", "windlevels", "indices", "winds", "storm".
bool is_listing(const std::string &word);

/// Prints listings of the sounding in force under its name and date; all for no words.
void print_listings(const std::vector<std::string> &words);

} // namespace tyr
