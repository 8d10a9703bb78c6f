#pragma once

// Words for the codes of projections and plot spaces.

/// Projection code of a word, by its beginning; kMissingInt for "miss", -1 for an unknown word.
int DOM_proj_code(const char *word);

namespace tyr {

/// Name of a code for printing; empty for one without a name.
const char *projection_name(int code);

} // namespace tyr
