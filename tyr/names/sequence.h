#pragma once

#include "tyr/base/date.h"
#include "tyr/base/file.h"

// A run of files. Buffers for names have kFileNameRoom.

/// Range in hours used when the resource `num_hour` isn't given; 0 at start.
void FILE_set_default_hours(int hours);
/// The range in seconds, signed: negative for the time before the base date.
int FILE_num_hours();
/// Seconds between files that the user asked for, else the file step.
int FILE_num_step();

/// Starts a run at a base date.
void FILE_seq_init(const DateRec *date);
/// The next name, oldest first. Returns 1, 0 at the end. Doesn't test existence.
int FILE_next(char *out);
int FILE_seq_offset(); ///< seconds from the base date
void FILE_seq_set_offset(int offset);
/// The name `offset` seconds from a base date. Returns how many file steps that is.
int FILE_name_at(const DateRec *base, int offset, char *out);
