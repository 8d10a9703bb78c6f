#pragma once

/// Small pattern match. A pattern is alternatives with '|' between them: `?` and `.` match one
/// character, `*` passes over the text up to the pattern's next character, `[a-z]` one of a set, a
/// `~` in front of an alternative turns its sense round.
///
/// @return 1 for a match; 0 for none, and for an empty or null pattern or text
int VAR_match(const char *pattern, const char *text);
