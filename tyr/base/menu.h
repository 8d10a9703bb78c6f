#pragma once

// Menus of numbered entries in one column, or two from 13 entries on.

/// One row; a null text ends the table. Row 0 is the return entry.
struct MenuRow {
    const char *text; ///< what is shown; a text that begins with `-` is a separator line
    const char *word; ///< the keyword a user may type
    int value;        ///< what selecting the row returns
    const int *show;  ///< per menu number 1 if the row belongs to it; null: to every menu
};

/// Flags: which extra entries are offered.
enum MenuFlag { kMenuExit = 1, kMenuReturn = 2, kMenuHelp = 4 };

/// Room of the answer of MENU_select: a typed word or a row's word, cut to fit.
inline constexpr int kMenuAnswerRoom = 80;

void MENU_show(const char *title, const MenuRow *rows, int menu, int flags);
/// Shows the menu and asks with the prompt; an answer is a number, a keyword or an entry's text, or
/// `?` for the list of keywords. Returns the value of the row chosen with its word in the answer, 0
/// for the return entry, -1 for exit when both are offered, kMissingInt for no match.
int MENU_select(const char *title, const MenuRow *rows, int menu, const char *prompt, char *answer,
                int flags);
