#pragma once

#include "tyr/grid/grid.h"

// The store of stations for an analysis: places and up to 20 fields of values. It grows by itself,
// up to 4,000,000 stations.

inline constexpr int kObservationFields = 20;

/// An empty store, and the parameters of the analysis at their start (OBJ_reset).
void OBJ_store_init();
/// Makes room for a field, 0 to 19; others are passed over.
void OBJ_store_add_field(int field);
/// Sets a station's place in plot coordinates of the grid's domain. Stations count from 0.
void OBJ_store_position(int station, float x, float y);
/// 1 if a field has room.
int OBJ_store_has_field(int field);
/// Sets a value of a field that has room. A station without a value is Missing.
void OBJ_store_value(int field, int station, float value);
/// Frees all.
void OBJ_store_free();

/// OBJ_analyze over the store; `grids` has a record for each field up to the highest added. What
/// OBJ_analyze changes is changed in the store.
int OBJ_store_analyze(GridRec *grids);

/// Reads a column of a raw file into the store and analyses it to one grid of `domain`: filter 1.0
/// and radius 3.0, unless `object_param` says otherwise.
/// @param column  column of RAW_read_value, see raw/raw.h
/// @param grid    made anew, with the file's date and the column's label; its values are from
/// malloc and the caller's
/// @return stations with a value; -1 where there are none or the file can't be read, told
int OBJ_analyze_raw(const char *path, long column, const DomainRec *domain, GridRec *grid);
