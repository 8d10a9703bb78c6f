#pragma once

#include "tyr/grid/grid.h"
#include "tyr/grid/grid_info.h"

// Grid files of every storage form behind one table of open files. The room stands above grid and
// grib alike: forms stand in grid and grib, and this one switch tells them apart.

inline constexpr int kMaxGridFiles = 15; ///< open at a time; handles are 0 to 14

/// Storage forms.
enum GridKind : int {
    kGridUnknown = 0, ///< GRD_open finds out
    kGridOldText = 1,
    kGridText = 2,
    kGridBinary = 3,      ///< text with binary values; written on request, read as 2
    kGridDescription = 4, ///< read only, as all below but netCDF
    kGridNetcdf = 11,     ///< the system's own layout, and models' to read
    kGridGrib = 21,
    kGridCoded = 22
};

/// An open file, as GRD_get_file shows it.
struct GridFile {
    int kind;
    int grid_type; ///< as GRD_read_header told it; GRIB: the edition, 10 for 0 of centre 98
    int index;     ///< place of the grid last read, -1 at the start
};

/// Kind of a file by its first 200 bytes; -1 for one that fits nothing or doesn't open.
int GRD_file_type(const char *path);

/// Opens a grid file, by the words nohdr, max_bad and grdfmt of `plot_param`. An empty path or "-"
/// is a standard stream, of kind 2 unless `*kind` is 2, 3 or 21.
/// @param mode           0 read, 1 create; nothing else
/// @param[in,out] kind   GridKind; 0 is found out, in reading only
/// @return the handle; -1, silently where no entry is free
int GRD_open(const char *path, int mode, int *kind);
/// A file that was written takes its name here, and only if all of it could be written: else what
/// stood there before is kept.
/// @return 0, also for a free entry; -1 outside 0 to 14, and where not all could be written
int GRD_close(int handle);
/// Back to the first grid; standard streams and pipes stay. @return 0; -1 outside 0 to 14
int GRD_rewind(int handle);
/// The entry; null for one that isn't open.
GridFile *GRD_get_file(int handle);

/// What the file's head, or its first grid, tells. The next read starts at the first grid.
/// @return 0 or -1
int GRD_read_header(int handle, GridFileInfo *info);
/// Writes the head: kinds 2 and 3 a line, kind 11 the layout (its x and y are those of the first
/// grid written); kinds 1, 21 and 22 have none. @return 0 or -1
int GRD_write_header(int handle, const GridFileInfo *info);

/// Reads a grid into a record made by GRD_init or read before, whose old values are freed. A read
/// that fails leaves the record alone. Files read by turns don't disturb each other.
///
/// @param mode            0 with values; 1 and 2 the description alone
/// @param[in,out] index   place wanted, from 0, in any order; on return the place read
/// @return 0; -1 at the end or on failure, told but for the end; 1 for a GRIB record without a grid
int GRD_read(int handle, GridRec *grid, int mode, int *index);
/// Writes a grid that has values: kinds 1, 2 and 3 behind the last, kind 11 at *index, of at most
/// the first grid's size. A record of version 1 keeps its longitude through a text file.
/// @return 0 or -1
int GRD_write(int handle, const GridRec *grid, int mode, int *index);

/// Format of a number in text files, for one float; "%14.8e\n" at the start. A format without
/// exactly one of the conversions e, f and g is told and not taken; white space is put behind one
/// that has none.
void GRD_set_number_format(const char *format);

namespace tyr {
/// Opens as GRD_open does in the first free entry from `lowest` on; `append` opens a text file to
/// write behind what it holds.
int grid_open_out(const char *path, int kind, int lowest, bool append);
/// What is written is dropped at the closing: no file, or one that was added to as it stood.
void grid_give_up(int handle);
} // namespace tyr
