#pragma once

/// Plays a text metafile on the open workstation, each record through the kernel routine that it
/// stands for. The file's window on the workstation isn't used; words that aren't known, and
/// messages, are passed over to the end of their line. A text is cut at 100 characters.
/// @return 0; -1 when a record was damaged (a number missing, a count that the file can't hold):
///         such records are left out, the rest is played, and one line tells of them. A file that
///         can't be opened is reported, and gives 0.
int gread_metafile(const char *path);
