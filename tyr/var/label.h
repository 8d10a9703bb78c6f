#pragma once

#include <cstddef>

#include "tyr/var/variable.h"

inline constexpr size_t kDatatypeSize = 80;  ///< room for VAR_make_datatype
inline constexpr size_t kVarLabelSize = 300; ///< room for VAR_make_label

/// Text of a time range and a level, such as "12 hour avg 500 mb" or "0-3000 m AG"; empty for none.
/// @param[out] out  kDatatypeSize bytes. Returns out
char *VAR_make_datatype(int time, int level_kind, int level_value, char *out);

/// Label of a record: level and time, name and units, format, as the label mode has it.
/// @param[out] out  kVarLabelSize bytes. Returns out
char *VAR_record_label(const VarRec *record, char *out);

/// Label of record i of the variable list; empty outside the list.
/// @param[out] out  kVarLabelSize bytes. Returns out
char *VAR_make_label(int i, char *out);
