#pragma once

#include <cstddef>

// The reader of resource files, and the patterns and variables that name resources.

/// Rooms of the texts of DEF_get and DEF_env.
inline constexpr size_t kDefNameRoom = 50;
inline constexpr size_t kDefValueRoom = 208;
inline constexpr size_t kDefEnvRoom = 4096;

/// Opens a resource file, or in a directory the first of "tyr.cfg", ".tyrdef", "Tyr.res"; a null or
/// empty name is ".tyrdef". Returns 0, -1 if it can't be opened.
int DEF_open(const char *name);
void DEF_close();
/// The next resource line (name[kDefNameRoom], value[kDefValueRoom]) that the IF lines let
/// through. Returns 1, -1 at the end.
int DEF_get(char *name, char *value);
/// Adds a word for IF. Returns 0, -1 with a warning when ten stand already.
int DEF_define(const char *word);
/// Forgets all words and open IFs.
void DEF_clear();
/// Sets the name that stands for the program's in the patterns; with a `+` in front it stands
/// behind the program's. Null or empty for none.
void DEF_set_name(const char *name);
/// 1 if a file's resource pattern (`*level`, `profiler.level`) fits an option's resource name.
int DEF_match(const char *option_name, const char *pattern);
/// 1 if a pattern that no option fits is meant for this program.
int DEF_match_other(const char *pattern);
/// What stands behind the last `.` or `*` of a pattern.
const char *DEF_last_component(const char *pattern);
/// Looks for `tyr<program>.<name>`, the option's own variable (may be null) and `tyr<name>` in the
/// environment. Returns 1 with the value in out[kDefEnvRoom], else 0.
int DEF_env(const char *name, const char *environment, char *out);
