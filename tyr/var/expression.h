#pragma once

#include <cstddef>

#include "tyr/var/variable.h"

inline constexpr size_t kMaxVarToken = 512;    ///< bytes of a token or of a bracket's inside
inline constexpr int kMaxVarDefinitions = 200; ///< definitions that one expression may use

/// Parses a variable expression into the variable list, from a fresh start.
///
/// An expression is a list of items with commas between them. An item is a list of fields
/// `time:level:name:units:type:format`, of which time and level go together and may be absent, or
/// such a list as the head of `(...)` a function, `{...}` a group, `<...>` a vector; each may be
/// followed by `[units:type:format]`. A backslash takes the meaning from the bracket or comma
/// behind it. A name that the variable file defines stands for its definition, unless '+' is in
/// front of it. Fields that stand behind such a name go to the first record of the definition; an
/// empty unit there leaves the definition's. A group or vector may have a time and a level without
/// a name in front of it, "12:500:<uwnd,vwnd>".
///
/// @param file  variable file to open first; null or empty: the one that is open stays. A text
///              that begins with "fi:file:" names one too
/// @param text  the expression; null counts as empty
/// @return 1 if some record came out with a role of 0 or above, else 0. What goes beyond the list,
///         the token room or the depth is refused with a message, and the parse goes on behind it
int VAR_decode(const char *file, const char *text);

/// The recursive descent over an expression, adding to the list. Returns 0. The text isn't kept
/// and not changed.
int VAR_process(char *text);

/// One list of fields into the record at the count, which isn't counted yet.
/// @param lookup  1 to look the name up in the variable file. Returns 0
int VAR_process_var(char *text, int lookup);
