#pragma once

#include "tyr/base/date.h"
#include "tyr/base/file.h"

// File name conventions: a word names a template, and the template makes a name from a date.
// The names typed by a user are read in timefile/search.h. Buffers for names have kFileNameRoom.

/// Finds the convention of a word in the convention file; `@template` gives the template itself,
/// `none` takes names as they stand, `:k=value` behind the word sets keys (and is cut off `type`).
/// Returns 1 if a convention was found, else 0: the word is then the template.
int FILE_set_name(char *type);

/// Makes a name from a date, or from the file date when it is null. Returns 0; 1 when there is no
/// template and the name that stood is given.
int FILE_compose(const DateRec *date, char *out);
/// The same by the output template. Returns 1 if out isn't empty; out is left alone without a date.
int FILE_out_name(const DateRec *date, char *out);
/// Lists the files that fit the template on standard output.
void FILE_list();

/// Longest value of a key.
inline constexpr size_t kFileKeyRoom = 30;
/// Value of a letter of the templates: cut to fit, blanks become `_`.
void FILE_set_key(int letter, const char *text);
void FILE_get_key(int letter, char *out);

/// Date of the last name composed or taken apart.
void FILE_get_date(DateRec *date);
void FILE_set_date(const DateRec *date);
/// Seconds between files, the finest date step of the template; 100000 if there is none.
int FILE_get_step();
void FILE_set_step(int seconds);
int FILE_get_raw_step(); ///< the step as it is, kMissingInt if not worked out
void FILE_set_last(const char *name);
void FILE_get_last(char *out);
/// A file of this size or less counts as not there: the override if above 0, else the convention's.
void FILE_set_min_size(int size);
int FILE_get_min_size();
int FILE_get_conv_min_size(); ///< the convention's own

/// One level of saved state, for a routine that needs another convention for a moment.
void FILE_save();
void FILE_restore();

/// For the routines of timefile/search.h: whether the last name came from the user.
void FILE_set_literal(int flag);
/// True if there is a template that names of files are made by.
bool FILE_has_template();
/// Takes a user's text apart by the template, without the words `cu`, `la` and dates.
void FILE_take_name(const char *input, char *out);
