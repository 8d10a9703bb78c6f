#pragma once

#include <cstddef>
#include <string>

inline constexpr size_t kMaxVarDefinition = 512; ///< room that VAR_lookup's caller gives

/// One entry of the variable file, its continuation lines joined.
struct VarFileEntry {
    std::string abbreviation; ///< up to 8 characters
    std::string title;        ///< menu text, its '_' turned into blanks
    std::string condition;
    std::string definition; ///< without blanks; may be empty
};

/// Opens the variable file: `name`, or "<program>.var" for null or empty, found by `file_path`.
/// Closes any earlier one. Returns 1, or 0 after a message.
int VAR_open_file(const char *name);

/// Closes the variable file, if one is open.
void VAR_close_file();

/// Goes back to the first entry; false if no file is open.
bool VAR_file_rewind();

/// The next entry of the variable file; false at its end, or if none is open. Empty lines, lines
/// that begin with '#' and lines with fewer than three fields are passed over.
bool VAR_file_next(VarFileEntry *entry);

/// Sets the texts that conditions are matched against; null for none.
void VAR_set_condition_texts(const char *model, const char *level, const char *time);

/// 1 if a condition holds: "1", or alternatives with ',' between them, of tests `mo=`, `le=`,
/// `ft=` with '&' between them, matched against the current model, level and time text. All
/// three are empty in a program that sets none, and such tests then fail.
int VAR_condition(const char *condition);

/// Looks a name up in the open variable file, case counting.
/// @param[out] definition  kMaxVarDefinition bytes; left alone if not found
/// @return 1 if found; a definition that doesn't fit is refused with a message and gives 0
int VAR_lookup(const char *name, char *definition);

/// Prints the abbreviations and titles of the file. Returns -1.
int VAR_print_list();
