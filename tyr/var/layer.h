#pragma once

#include "tyr/var/variable.h"

/// The two numbers of a level: of a layer the larger one first, in hPa, metres or kelvin;
/// otherwise the value and Missing. The layers of sigma and eta count as single values.
void VAR_decode_layer(int kind, int value, float *first, float *second);

/// A level from its numbers, the reverse of VAR_decode_layer: a single kind whose top isn't
/// Missing becomes the kind of the layer; fractions are cut off. No guard against numbers beyond
/// the packing range.
void VAR_encode_layer(int kind, int *out_kind, int *out_value, float bottom, float top);

/// What the level of a record means for the sounding in force (MET_set_sounding).
///
/// @param[out] kind         kind of bottom and top: 100 for the named levels, else the record's
/// @param[out] bottom, top  hPa, metres or kelvin by kind; Missing where not known
/// @param[out] extra        index of the surface, or Missing
/// @return 0 for no level, 1 for a single level, 2 for a layer
int VAR_layer_limits(const VarRec *record, int *kind, float *bottom, float *top, float *extra);
