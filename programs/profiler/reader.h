#pragma once

#include "programs/profiler/records.h"

/// The reader of profiler files: one record from whatever layout a file has. One file at a time: a
/// second open closes the first, and its handle is then worth nothing. A file is read once, into
/// memory; one packed by gzip is unpacked there.

/// Finds out the layout from the first characters and, for netCDF, the dimensions.
/// @return 11, 12, 21, 31, or -1 for a file that can't be read or is none of these; a file that was
/// open
///         is closed
int PROF_file_type(const char *name);

/// Opens a file. Why one can't be read is told at `warn`, with its name.
/// @param mode  0 read, 1 create
/// @param code  the layout; 0 (mode 0 only) finds it out and stores it
/// @return a handle, or -1
int PROF_open(const char *name, int mode, int *code);

/// Fills `info` from a netCDF file and looks up its variables. A BUFR file leaves `info` alone.
/// A file whose levels aren't the expected ones, that is cut, or that holds a variable of
/// characters where numbers belong is told at `warn` with its name; what can't be read is Missing.
/// @return 0
int PROF_read_header(int handle, PrfFileInfo *info);

/// Reads the record of an index (BUFR: the next report).
/// Values that the file marks as missing (its `_FillValue`, or 1e30 and more) are Missing.
/// @param flags  0
/// @param index  record number from 0; -1 the same again
/// @return 1, or -1 at the end, on a failure, or for a handle that isn't open
int PROF_read(int handle, ProfilerRecord *record, int flags, const int *index);

/// Where to begin to look for a station's record: at its index where the layout knows it without
/// reading records, else at 0. @return -1 where it is known that the file hasn't got it
int PROF_find(int handle, const char *id);

/// Date of the last record, where records tell one rather than the header (BUFR). False where not.
bool PROF_record_date(DateRec *date);

/// Back to the first record. @return 0, or -1 for a handle that isn't open
int PROF_rewind(int handle);

/// Closes the file. @return 0, or -1 for a handle that isn't open
int PROF_close(int handle);
