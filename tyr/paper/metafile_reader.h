#pragma once

/// Plays a text metafile on the open workstation, each record through the kernel routine that it
/// stands for. The file's window on the workstation isn't used; words that aren't known, and
/// messages, are passed over to the end of their line. A text is cut at 100 characters.
/// @return 0; -1 when a record was damaged (a number missing, a count that the file can't hold):
///         such records are left out, the rest is played, and one line tells of them. A file that
///         can't be opened is reported, and gives 0.
int gread_metafile(const char *path);

/// The same in a part of the page: what the file shows of normalised space is fitted, with its
/// shape and centred, into `panel` (x minimum, x maximum, y minimum, y maximum in normalised
/// coordinates). Attributes and transformations start as those of a fresh workstation, so that
/// files played one after another don't colour each other. Widths of lines and sizes of markers
/// stay as they are.
/// @return as above; -1 also for a file that can't be opened
int gread_metafile_panel(const char *path, const float panel[4], int swap);
