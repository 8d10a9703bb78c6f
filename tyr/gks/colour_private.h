#pragma once

namespace tyr {

/// The colour test of the attribute setters. Reports in the name of the routine and returns false
/// for an index that can't be used.
/// On the X11 devices a print colour becomes index 1.
bool colour_usable(const char *routine, int *index);

/// Colour of the background entry.
void colour_set_background(float red, float green, float blue);

} // namespace tyr
