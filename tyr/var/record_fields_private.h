#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tyr/var/variable.h"

/// The colon-separated fields of one variable, "time:level:name:units:type:format", as they go into
/// its record.

namespace tyr {

/// The fields of a text, escapes resolved.
std::vector<std::string> split_fields(std::string_view text);

/// Field i without the blanks around it, empty beyond the last.
std::string field_text(const std::vector<std::string> &fields, size_t i);

/// Units into a record; an empty text leaves them, one that doesn't fit is told at `warn`.
void set_units(VarRec *record, const std::string &units);

/// The format, from field f to the last joined again; one that doesn't fit is told at `warn`.
void set_format(VarRec *record, const std::vector<std::string> &fields, size_t f);

/// The type of the words map, plot, frame and panel, which stand for a record of their own; -1 for
/// others.
int word_type(const std::string &word);

/// Reads time and level from the first two fields, or takes the defaults. @return the index of the
/// name's field
size_t settle_time_and_level(const std::vector<std::string> &fields, VarRec *record);

/// Place of the bracket that closes the one at `open`, by the nesting of its kind; npos for none.
size_t find_closing(std::string_view text, size_t open, char closing);

/// Splits "fi:file:expression": the file, and what stays in the text; empty without that form.
std::string take_file(std::string *text);

} // namespace tyr
