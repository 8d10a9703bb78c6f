#pragma once

/// The colour table: gives each colour index a name and its red, green and blue. It is read anew
/// from text files each time a plot is opened.
///
/// A file is read line by line: `#` begins a comment; `END` marks, in the first file, the end of
/// the fill colours; any other line is an entry `[index] name red green blue`, the colour as three
/// fractions or as #RRGGBB. A leading index sets the entry's position in the file; other lines
/// take the next one.

inline constexpr int kMaxTableColours = 256;

/// Colour words that are no table entries.
enum ColourWord { kColourNone = -1, kColourEnd = -2 };

/// Loads the table from a comma-separated list of files, found through `file_path`; null or empty
/// means the resource `color_table`, and without one "tyr.clr". A file that can't be opened is
/// passed over; one of the resource's is told at warn. Each further file's entries follow those of
/// the file before.
void CLR_read_table(const char *files);
/// Index of a colour word: -1 for none (null, empty, "none", "off", "back") and for a word that
/// isn't known, -2 for "end", 500 to 508 for the print colours ("pblk", ...), else a name of the
/// table, "#RRGGBB" in hexadecimal or "#RRRGGGBBB" in decimal (both added to the table), or a
/// number. A word that isn't known is told at warn, once, with the nearest known ones.
int CLR_lookup(const char *word);
/// The same in silence, for words that may be known elsewhere.
int CLR_find(const char *word);
/// Appends an entry, passes it to the kernel and returns its index; -1 when the table is full.
int CLR_add(const char *name, float red, float green, float blue);
/// Colour of an index, fractions; an index at or past the count gives the last entry.
void CLR_get_rgb(int index, float *red, float *green, float *blue);
/// Entries in use.
int CLR_count();
/// How many entries of the first file lie ahead of its END line; 0 until the resource
/// `color_table` has been read.
int CLR_fill_count();
