#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

#include "timefile/date.h"
#include "tyr/grid/grid.h"

// A stream of GRIB products as the table of open grid files holds one.

namespace tyr {

/// What the first product of a stream tells of it.
struct GribHeader {
    DateRec date;
    std::string date_text; ///< by TIME_format
    int edition = -1;      ///< 0, 1 or 2
    int source = 0;        ///< originating centre
    /// Type of the file's entry: the edition, or 10 for an edition 0 product of centre 98.
    int file_type() const { return edition == 0 && source == 98 ? 10 : edition; }
};

/// One GRIB stream with its place, its index and the product in hand.
///
/// An entry of the table of open files owns one in a std::unique_ptr; two streams know nothing of
/// each other and are read by turns at will. Places are counted in fields, from 0: a message of
/// edition 2 may hold several, and one that is refused or holds none has a place too. Memory is
/// one product and its grid, however long the file is.
///
/// A damaged or unknown product is told in one line at warn: file, number of the message (from 1,
/// in the order of the walk), and what isn't known.
class GribStream {
  public:
    /// Over an open file, which stays the caller's: it must outlive the stream, and nobody else may
    /// move it. A pipe or a terminal is read forward only. `name` is for messages.
    GribStream(std::FILE *stream, std::string name);
    /// Over bytes in memory, which must outlive the stream.
    GribStream(std::span<const std::uint8_t> bytes, std::string name);
    ~GribStream();
    GribStream(const GribStream &) = delete;
    GribStream &operator=(const GribStream &) = delete;

    /// Goes to the next product from the present place, whatever stands before it, and takes its
    /// heading. @return true; false at the end of the stream
    bool next_product();

    /// Offset behind the product that next_product found; with `seek` the place goes there.
    /// @return the offset; 0 for a length that can't be; -1 where the product's end isn't known
    long product_end(bool seek);

    /// Back to the first product, of the index too. A stream that can't seek stays where it is.
    void rewind();

    /// Opens an index file beside the stream. @return 0; -1 for an empty path, a file that doesn't
    /// open, or where the use of indices is off (GRIB_set_index)
    int attach_index(const char *path);

    /// What the first product tells, kept from then on. The place goes back to the start, on a
    /// stream that can't seek too (the bytes read are kept).
    /// @return 0; -1 without a product
    int read_header(GribHeader *header);

    /// Reads the grid at place *index: forward by walking, backward by beginning anew.
    ///
    /// An old array of `grid->values` isn't freed. The result's values come from malloc: the caller
    /// frees them by GRD_free; they are null unless the result is 0 and the mode 0.
    ///
    /// @param mode            0 with values; 1 and 2 the description alone, from the index alone
    ///                        where one is attached (mode 1 then leaves `info` and `date` empty)
    /// @param[in,out] index   place wanted; below 0 counts as 0; on return the place read
    /// @return 0; 1 for a place that holds no grid that is known (told; the next place may be
    ///         read); -1 at the end of the stream or for a message cut off there
    int read_grid(GridRec *grid, int mode, int *index);

    /// Text of the heading of the product in hand; the fixed text of a bare product.
    const std::string &heading() const;

    struct Impl;
    Impl *impl() { return impl_.get(); } ///< for this room alone

  private:
    std::unique_ptr<Impl> impl_;
};

/// Ties a stream to the handle of its entry in the table of open files, so that the routines of
/// tyr/grib/grib.h that take a handle (GRD_next_product, GRD_product_end, GRD_attach_index, GRIB_*)
/// find it: call it on opening, and with null on closing.
void grib_bind(int handle, GribStream *stream);

} // namespace tyr
