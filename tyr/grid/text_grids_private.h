#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tyr/grid/byte_reader_private.h"
#include "tyr/grid/grid.h"
#include "tyr/grid/grid_info.h"

// The system's text grid file. A first line "TYRGRID", then grids: a date line; an info line
// "V-text"; for V 2 and up "source version model grid_id ltype level time var[:units]"; the
// projection word with clat clon dx dy nx ny; the values as text (V up to 2), as big-endian floats
// (3) or in another file (4). In a description file ("TYRGRID4", "TYRGRID4B") the projection is a
// domain text, and the version that of the file, 0 or 3. A record of version 1 has its clon stored
// with the opposite sign. Files may simply be joined.

namespace tyr {

/// How values are stored; what stands in front of the info.
enum TextForm { kTextForm = 2, kBinaryForm = 3, kIndirectForm = 4 };

/// One open file with the places of its grids; two files know nothing of each other.
class TextGrids {
  public:
    /// `kind` is the file's, 1 to 4; `name` is for messages.
    TextGrids(std::FILE *stream, int kind, std::string name);

    int read_header(GridFileInfo *info); ///< 0; -1 told
    /// Reads grid *index into a fresh record. @return 0; -1 at the end, or told
    int read(GridRec *grid, int mode, int *index);
    void rewind();

  private:
    bool pass_magic();
    bool date_line(std::string *date);
    bool go_to(int wanted);
    int read_here(GridRec *grid, bool wants_values);
    const char *read_head(GridRec *grid, int *form);
    const char *read_projection(GridRec *grid);
    const char *read_domain_text(GridRec *grid);
    const char *read_values(GridRec *grid, int form, bool wants_values);
    const char *read_text_values(GridRec *grid, bool wants_values);
    const char *read_binary_values(GridRec *grid, bool wants_values);
    int refuse(const char *reason);

    ByteReader in_;
    int kind_;
    std::string name_;
    bool magic_passed_ = false;
    bool is_binary_ = false;          ///< a description file with the B
    std::optional<std::string> date_; ///< a date line read ahead of its grid
    std::vector<int64_t> starts_;     ///< places of the grids passed, and of the next
    int next_ = 0;                    ///< number of the grid at the present place
};

/// Values of another file, named by the line behind the projection. Null, or why not; a file that
/// doesn't open has been told and gives the empty text.
const char *read_indirect(const std::string &line, const std::string &grid_file, GridRec *grid);

/// Room for nx * ny values, refused where `bytes` that are left (-1: not known) can't hold them at
/// `least` bytes each.
bool alloc_bounded(GridRec *grid, int64_t bytes, int least);

/// Writes a grid. `format` is that of one text value. Null, or why it can't be.
const char *write_text_grid(std::FILE *stream, const GridRec &grid, bool is_binary,
                            const char *format);

} // namespace tyr
