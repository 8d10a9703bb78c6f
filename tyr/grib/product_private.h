#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/grib/octets_private.h"
#include "tyr/grid/grid.h"

// The product in hand: what its sections have told so far.

namespace tyr {

/// Most points of a grid; of one that has fewer than a bit a point (a constant field, a packing
/// that squeezes) kMostFreePoints. Both are far above any model in use: 0.025 degree round the
/// earth makes 104 million.
inline constexpr std::int64_t kMostPoints = std::int64_t{1} << 27;
inline constexpr std::int64_t kMostFreePoints = std::int64_t{1} << 25;

/// Where a message is told to stand, and whether it has been told of yet.
struct Origin {
    std::string file;
    long message = 0; ///< from 1
    bool is_quiet = false;
    /// One line at warn: "GRIB: file, message n: reason". False, for callers to return.
    bool refuse(const char *format, ...) const __attribute__((format(printf, 2, 3)));
    /// The same line for what is read all the same.
    void note(const char *reason) const { refuse("%s", reason); }
};

/// How rows of unequal length become the grid's.
enum class RowShape {
    kEven,    ///< nx values each
    kThinned, ///< row_lengths values, spread from the row's first place to its last
    kPlaced   ///< row_lengths values: one fills the row; nx - 1 repeat the first behind the last;
              ///< fewer stand in the middle between places without a value
};

/// How values stand in the data section.
struct Layout {
    int nx = 0, ny = 0;
    bool from_south = false; ///< the first row is the southernmost
    bool from_east = false;
    bool by_columns = false;
    bool alternates = false; ///< every other row runs the other way
    RowShape shape = RowShape::kEven;
    std::vector<int> row_lengths; ///< in the order of the file

    size_t grid_points() const { return static_cast<size_t>(nx) * static_cast<size_t>(ny); }
    /// Points that the file holds, present or not.
    size_t stored_points() const;
    /// Scanning octet: 128 from the east, 64 from the south, 32 by columns, 16 alternating.
    void set_scanning(unsigned flags);
};

enum class Packing { kNone, kSimple, kComplex, kJpeg2000, kRunLength };

/// What a data section is to be read by. A value is (X * binary_scale + reference) *
/// decimal_scale.
struct PackingRec {
    Packing kind = Packing::kNone;
    std::uint32_t points = 0; ///< values in the section; edition 2
    double reference = 0.0;
    double binary_scale = 1.0;
    double decimal_scale = 1.0;
    unsigned bits = 0;

    // complex packing
    int missing_management = 0; ///< 1 primary, 2 primary and secondary missing values
    std::uint32_t groups = 0;
    unsigned width_reference = 0, width_bits = 0;
    std::uint32_t length_reference = 0, last_length = 0;
    unsigned length_step = 0, length_bits = 0;
    int order = 0; ///< of spatial differencing
    unsigned extra_octets = 0;

    // run-length packing
    unsigned max_level = 0;
    std::vector<float> levels; ///< value of level 1 and on
};

/// Ensemble and probability fields, for `info`.
struct Ensemble {
    int kind = 0, member = 0;
    int product_class = 0; ///< 1 member, 2 mean, 11 and 12 standard deviation
    int count = 0;
    int variable = 0;         ///< that a probability is about
    int probability_kind = 0; ///< 1, 4 below; 2, 5 above; 3, 6 within
    float low = 0.0F, high = 0.0F;
};

/// The guard against damaged products of edition 1.
struct Guard {
    int max_bad = -1; ///< steps out of 20 that are borne; below 1 there is no guard
    std::int64_t bad_limit = 0;
};

struct Product {
    Origin origin;
    int edition = -1;
    unsigned discipline = 0;
    int grid_number = 0;
    bool has_grid = false, has_bitmap = false; ///< sections 2 and 3 of edition 1 follow
    DateRec date;
    Layout layout;
    PackingRec packing;
    Ensemble ensemble;
    Guard guard;
    bool is_known = true;               ///< no section of this field was refused
    bool has_map = false;               ///< `bitmap` says which points are present
    std::vector<std::uint8_t> bitmap;   ///< a bit a point, as in the section
    std::vector<std::uint8_t> section_; ///< bytes of the section in hand, padded
};

/// Room for a field of `grid`'s size: allocates grid->values, after a look at the data's size.
bool alloc_values(const Product &product, size_t data_bytes, GridRec *grid);

/// Brings values that stand one behind the other at the start of grid->values, `count` of them, in
/// the order of the file and without those that the bit map lacks, to their places in the grid.
/// `stored` holds them instead where rows are unequal.
bool place_values(const Product &product, std::vector<float> *stored, size_t count, GridRec *grid);

} // namespace tyr
