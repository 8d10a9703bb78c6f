#pragma once

#include "tyr/map/map_file.h"

namespace tyr {

/// Draws the segments of a map file in transformation 2 by the current line or fill attributes,
/// cut where they can't be shown or leave a cylindrical map at its side. What stands ahead of a
/// damage is drawn.
MapFileEnd draw_map_file(FILE *stream);

/// Whether segments are filled as areas rather than drawn as lines.
void set_map_fill(bool is_filled);

} // namespace tyr
