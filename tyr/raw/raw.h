#pragma once

#include <cstddef>

#include "tyr/raw/raw_column.h"
#include "tyr/raw/raw_rec.h"

/// Raw text data files: a table of stations with a small header.
///
///     TYRRAW                    headerless without the T
///     2024-05-01 12:00          date
///     !%1.0f:ul                 plot format; without the "!" there is no field list
///     id lat lon tmpf:Temp_F:%3.0f wind $
///     DEN 39.8 -104.7 55 270,12
///
/// A field is name:label:format. Lines hold blank-separated words: id, place, values; the table
/// ends at an empty line. A second field "lat" or "x" (of four or more) says that two words of
/// place follow the id, "p" or "pres" (of three or more) that one does. A value is
/// "[name=]value[,second][:format]", "-" is Missing.

/// Takes "file[-column][:format]" apart, in place, and opens the file, found through `raw_path`.
/// A dash or colon counts from the third character on, and behind the last "/". The column is a
/// number (given out as that plus 10; values count from 0, words ahead of them below it) or a
/// field's name; 1 (all words) without one.
/// @param[out] format  the format's place in `name`, or null
/// @return a handle, or -1 (told)
int RAW_file_open(char *name, int *column, char **format, int mode);

/// Opens by path: "", "-" and "std" are standard streams, "stdn" standard input without a header.
/// @param[out] type  RawType; may be null. @return a handle; -1 if it can't, or for a sixth file
int RAW_open(const char *path, int mode, int *type);

/// RawType by a file's first byte; -1 if it can't be opened.
int RAW_file_type(const char *path);

/// Reads the header up to the first data line; nothing for a headerless file. @return 0, or -1 for
/// a handle that isn't open
int RAW_read_header(int handle, RawHeader *header);

/// One value of a line.
/// @param column  see RawColumn
/// @param[in,out] line  data line wanted, from 0; the next one when the line is done. Null reads on
/// @return 1 with a value; 0 at the end of a line's words (column kRawAllWords; the next call takes
/// the next line) or for a line without that value (id and place are set); -1 at the end of the
/// table
int RAW_read_value(int handle, RawValue *value, long column, int *line);

/// Back to the first data line. @return 0; -1 for a standard stream
int RAW_rewind(int handle);
void RAW_close(int handle);

/// Label of a column; null for none.
const char *RAW_field_label(int handle, long column);
