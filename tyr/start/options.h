#pragma once

#include "tyr/start/option_rec.h"

// The vocabulary of command-line options and the start-up call of every program.

/// First call of every main: settings, option records, resources from all sources (base/startup.h),
/// display time zone. `keyed` and `positional` are option codes, each list ended by 0. Returns 1.
int OPT_init(int count, char **arguments, const int *keyed, const int *positional);
/// Fills a record from the table. A code that isn't there gives an empty name and prints the code.
void OPT_lookup(OptionRec *record, int code);
/// Prints the syntax of a program.
void OPT_usage(const char *program, const int *keyed, const int *positional);
/// Prints the help of one option code.
void OPT_help_line(int code);
