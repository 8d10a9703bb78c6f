#pragma once

// Columns that stand for the name of a field.

namespace tyr {

/// Name of a column that is a field's name; null for a number.
const char *raw_column_name(long column);

} // namespace tyr

/// The column that stands for a field name, above 75.
int RAW_name_column(const char *name);
