#pragma once

#include "tyr/raw/raw.h"

/// Writing of raw text data files (the form is told in raw.h): the header, then values.

/// Writes the header: the two texts, and the fields of the handle's file where it has some. Blanks
/// of names, labels and formats become `_`. @return 0; -1 for a file that isn't open for writing
int RAW_write_header(int handle, const RawHeader *header);

/// Writes one value. The words of the resource `plot_format` apply: one that begins with "%" makes
/// the value a number of that format, another one that names a plot type gives the kind; the last
/// wins. Formats that aren't one conversion of a number are passed over.
///
///     kind                        written             Missing or empty
///     1, 3, 4, 31, 36             the value text      -
///     2                           by "%f"             -
///     5                           by "%d"             -
///     21, 22, 33, 34              first,second by %f  -
///     0                           as 2
///     another                     -
///
/// @param mode  1 a line of id, place and value; 3 id and place; 5 the end of a line; another the
///              value alone
/// @param line  not read
/// @return 1 if a value was written, else 0
int RAW_write_value(int handle, const RawValue *value, int mode, int *line);

/// Replaces the format of a column of an open file.
void RAW_set_field_format(int handle, long column, const char *format);
