#pragma once

#include "tyr/met/level_kind.h"

/// Parses the text of a level: "500", "850-700mb", "3000ft_ag", "h500", "a0-3000", "frz", ...
///
/// A layer packs two numbers as high * 1000 + low, scaled by its kind (see VAR_decode_layer).
///
/// @param[in,out] kind, value  LevelKind and value; left as they stand by a text that fits nothing
/// @return 2 for a level that the text gave (or that fits nothing), 1 when the default of the
///         settings was taken; for an empty text inside a parse the class of its base
int VAR_level(const char *text, int *kind, int *value);

namespace tyr {

/// Tells at warn of a level's text that fits nothing, with what was probably meant.
void warn_unless_level(const char *text);

} // namespace tyr
