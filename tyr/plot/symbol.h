#pragma once

/// Signs drawn from a symbol file. A symbol is a name, groups of up to twenty "x,y" pairs
/// (fractions of the symbol's size) each followed by a word, and a closing "$"; a word that begins
/// with "F" fills the group, any other draws it as a line.

inline constexpr int kMaxSymbols = 100;

/// Makes a symbol file current (null: "wx.smb"), found by `file_path`.
/// @return 0; -1 when it was already, or can't be opened (told once an attempt)
int WX_symb_file(const char *name);

/// Draws the first symbol whose name begins `code`, without case, placed by the text alignment.
/// @param size  plot units. @return 1 if it was drawn, else 0
int WX_symbol(float x, float y, float size, const char *code);
