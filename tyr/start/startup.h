#pragma once

#include "tyr/start/option_rec.h"

/// Fills the resource store, a later source over an earlier one: resource files in list order,
/// environment, command line; then runs the conversions with side effects in the order of first
/// storage. Only OPT_init calls it. `options` is ended by a null name. Returns 0.
int RES_init(const char *program, const char *class_name, int count, char **arguments,
             OptionRec *options);
