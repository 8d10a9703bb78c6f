#pragma once

inline constexpr int kMaxVarMenu = 50; ///< entries, entry 0 ("back") among them
inline constexpr int kVarAbbrSize = 9; ///< bytes of an abbreviation of the menu

/// Loads the menu from the open variable file, with the entries whose condition holds. Returns 1,
/// or 0 if no file is open, and the menu is then empty.
int VAR_read_menu();

/// Gets one answer from the menu; the variable list is emptied first.
///
/// @param[out] answer  80 bytes: the abbreviation of the entry chosen, or the text typed
/// @param flags        1 offer the exit, 2 offer the return, 4 offer help
/// @return in batch mode 1, with the first entry's abbreviation, or "def" without entries;
///         else as MENU_select: 1 or more for an entry, 0 return, -1 exit, -9999 another text
int VAR_menu(const char *title, const char *prompt, char *answer, int flags);
