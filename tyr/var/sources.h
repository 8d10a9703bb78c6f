#pragma once

#include <cstddef>

inline constexpr size_t kSourceTextSize = 41; ///< room for VAR_source
inline constexpr size_t kModelTextSize = 81;  ///< room for VAR_model

/// Name of a data source by its number, from "source.lup"; empty if the file hasn't got it.
/// @param[out] out  kSourceTextSize bytes. Returns out, or null after a message without the file
char *VAR_source(char *out, int code);

/// Name of a model, from "mod_name.lup": a code above 1000 is center * 1000 + model. A line
/// without a center fits all centers; a code of 1000 and below has the center 0.
/// @param[out] out  kModelTextSize bytes, empty if there is no such line. Returns out
char *VAR_model(char *out, int code);
