#pragma once

// The record of one gridded field, its memory and its copies.

#include "tyr/geo/domain.h"

inline constexpr int kGridDateRoom = 50;  ///< bytes of GridRec::date, with the end
inline constexpr int kGridInfoRoom = 102; ///< of GridRec::info
inline constexpr int kGridUnitsRoom = 16; ///< of GridRec::units

/// One grid with its description. Values that aren't there are Missing (base/missing.h).
struct GridRec {
    int grid_id; ///< number of the grid: GRIB's, or the model's own
    int source;  ///< originating centre
    int version; ///< of the grid's encoding; 1 in a coded text product, the edition in GRIB
    char date[kGridDateRoom];
    char info[kGridInfoRoom]; ///< description, shown as a label
    int model;
    int ltype; ///< vertical level type
    int level; ///< vertical level value
    int time;  ///< forecast time, hours, or a range (var/time_range.h)
    int var;   ///< variable code
    char units[kGridUnitsRoom];
    DomainRec domain; ///< projection, centre, spacing, nx, ny
    float *values;    ///< nx * ny, row by row, the northern row first, from west to east; from
                      ///< malloc, owned, null where only the description is known
};

/// A record without values: texts empty, numbers 0, the domain by DOM_init.
void GRD_init(GridRec *grid);

/// Allocates nx * ny floats, which hold no defined values. What `values` pointed at isn't freed.
/// @return 1; 0 with a message and null `values` where a side is below 1 or there is no memory
int GRD_alloc(GridRec *grid);

/// Frees the values and sets the pointer to null.
void GRD_free(GridRec *grid);

/// Copies grid_id, source, version, date, units, model and domain, and sets `to->values` to null
/// (they aren't freed); ltype, level, time and var stay.
void GRD_copy_layout(GridRec *to, const GridRec *from);

/// Copies the whole record, the pointer to the values included: both then name one array.
void GRD_copy(GridRec *to, const GridRec *from);
