#pragma once

/// Plots every record of a raw text file (map/raw.h) as values, over the map or section that is
/// drawn.
///
/// @param path  "file[-column][:format]", found through `raw_path`. On the file's plot space the
///              place of a record is latitude and longitude; on a time-height section (projection
///              24) its place in the file and its value, with an hour label below; on projection 22
///              its value and the pressure
/// @param labelled  0; 1 is taken as 0
/// @return 0; -1 if the file can't be opened (told) or values aren't drawn
int PLT_plot_file(const char *path, int labelled);
