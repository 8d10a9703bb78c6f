#pragma once

#include "tyr/place/table.h"

/// A small command language over raw text data files (raw.h): it adds, subtracts and combines the
/// station values of files, applies a constant, extracts a column, strings files together.
///
///     sum file file ... = out [second [date]]       likewise max, min, copy, merge
///     a op b = out [second [date]]                  op: add, sub, mul, div, mod, ge, le;
///                                                   a or b may be a constant: #number
///     ext in = out
///     series file file ... = out [second [date]]    a line a file for each station
///
/// A file word is a name or a word of the name conventions (name_conv.h), of the time that the
/// resource `current` asks for where it is set, with "-column" and ":format" behind it as
/// RAW_file_open has them. `second` and `date` replace the second text and the date of the output's
/// header; "-" as second keeps both. Stations meet by their id; of two lines of one station in a
/// file the first counts. Other lines than those of the list `identifier`, where it isn't empty,
/// don't count.
///
/// The resource `parameter` takes, parted by commas:
///
///     miss=NUMBER   the value of a station that has none. Without it, one that a later file alone
///                   holds isn't entered, and in "a op b" one that b lacks isn't written
///     outmiss       results equal to that value are written too
///     noattr        ext drops the column's format
///
/// In "a op b" of two files mod, ge and le give b's value; with a constant k and a value v they are
/// fmod(v, k) or fmod(k, v) by their order, v unless it is above k, and v unless it is below k.
/// `merge` is another word for `copy`: the last file's value counts.
///
/// The output appears under its name when it is complete, so that it may be one of the inputs. A
/// file that can't be opened is told and ends the command without an output.

/// One station of the table, found by its whole id.
struct RawTableRec {
    char id[12]; ///< cut where it is longer
    float lat, lon;
    float value; ///< so far
    int pass;    ///< number of the last file that updated it, plus 1; 0 for the first file's
};

/// Runs one command. What isn't one is told. @return 1; 0 on failure
int RAW_math_command(int count, char **words);

// The steps of a command, each with the settings of the last one. They return 1, or 0 if a file
// can't be opened or written.

/// Enters the stations of a file into an empty table; the header is kept for RAW_table_save.
int RAW_make_table(TableRec *table, const char *file);

/// Combines a file with the table: sum or add, sub (table less file), mul or scale, div (table by
/// file), max, min; any other word takes the file's value.
int RAW_table_apply(TableRec *table, const char *op, const char *file);

/// Writes the table's stations. Without a value for the missing, those that fewer than `least`
/// files have updated are left out.
int RAW_table_save(TableRec *table, const char *file, int least);

/// v op k for each value v of a file: sum or add, sub, psub (k - v), mul or scale, div, pdiv
/// (k / v), mod, pmod, ge, le; another word keeps v.
int RAW_scalar_math(const char *op, const char *file, float number, const char *out);

/// Writes one column of a file; the second text of the header gets its label behind a dash.
int RAW_extract(const char *in, const char *out);

/// Writes the values of files, one behind the other; the id is the format of the file's word, at
/// most 10 characters, or the number of the file from 1.
/// @param words  behind the command's own: files, "=", the output (standard output without one),
///               header words
int RAW_series(char **words, int count);
