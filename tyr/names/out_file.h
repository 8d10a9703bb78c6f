#pragma once

// Output files that exist already, and the system's own file kinds.

/// What FILE_check_out decides.
enum OutFile { kOutNone = 0, kOutFresh = 1, kOutAppend = 2, kOutUse = 3 };

/// Decides on an output file: 1 write afresh, 2 append, 3 use what exists, 0 no answer. A file that
/// exists follows setting 15, batch mode, or the user's answer; kind 2 also offers to append.
int FILE_check_out(const char *name, int kind);

/// File kinds by the magic word at the start.
enum FileKind {
    kFileRaw = 5,
    kFileGrid = 6,
    kFileMeta = 8,
    kFileImage = 9,
    kFileSurface = 11,
    kFileUpperAir = 12
};

/// The kind of a file, -1 if it can't be read or has no known magic. A name that doesn't open is
/// tried again cut at its first `-`. Standard input is not looked at.
int FILE_type(const char *name);
