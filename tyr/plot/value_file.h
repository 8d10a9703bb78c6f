#pragma once

/// Plots every record of a raw text file (map/raw.h) as values, over the map or section that is
/// drawn.
///
/// @param path  "file[-column][:format]", found through `raw_path`. The place of a record is its
///              latitude and longitude; on a time-height section (projection 24) its number in the
///              file and its value, with its id as a label below; on projection 22 its value and
///              its pressure. The style: plot format of the file's header, under `plot_format`,
///              under the path's format
/// @param labelled  0; 1 is taken as 0
/// @return 0; -1 if the file can't be opened (told) or values aren't drawn
int PLT_plot_file(const char *path, int labelled);

/// Smallest and largest value of the last file; Missing for none.
void PLT_file_range(float *low, float *high);
