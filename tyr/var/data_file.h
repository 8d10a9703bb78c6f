#pragma once

#include <string>

#include "tyr/base/file.h"

/// Path of an installation's file: `name` in the folder of the resource `file_path`.
std::string VAR_data_path(const char *name);
/// Opens that file for reading; null on failure, silently.
FilePtr VAR_open_data(const char *name);

/// The next line of a text file without its line end, cut to a sane length; false at the end.
bool VAR_next_line(FILE *stream, std::string *line);
