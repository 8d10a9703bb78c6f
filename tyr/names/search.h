#pragma once

#include "tyr/names/name_conv.h"

// Which file the user means. Buffers for names have kFileNameRoom.

/// Makes a full name of what the user typed (a date's digits, a name, a path, `@name`, `cu`, `la`,
/// `#date`) and sets the file date. `exit` ends the program. Returns 0.
int FILE_parse_name(const char *input, char *out);

/// Evaluates a current-file word: [#YYYYMMDDHHMM] [sign offset] [la[#count]] [sign offset]; null
/// stands for `la`. Returns the file's time in seconds, rounded down to the file step.
long FILE_current(const char *spec, char *out);

/// Settles the first file: from the resource `filename`, `current`, the newest in batch mode, or by
/// asking. Returns 1 if it exists, 0 if a name from the command line doesn't; otherwise ends the
/// program (code 10) if no file can be had.
int FILE_get_name(const char *prompt, char *out);
