#pragma once

#include "tyr/plot/attributes.h"

/// Writes a label below the plot area at an x of the domain, if it is one of those that are
/// labelled: multiples of the grid interval (DOM_get_offset), or about ten across the picture.
/// Transformation 2 is selected afterwards.
void PLT_x_tick(float x, const char *text, const AttrRec *line);
