#pragma once

#include "tyr/geo/domain.h"

/// The current domain on the view surface: its window becomes that of transformation 2.

/// Makes a domain current, gives its window to transformation 2 and selects that.
void PLT_set_domain(const DomainRec *domain);

/// Size of the window of transformation 2, world units: what sizes of text and signs are
/// fractions of.
float DOM_window_height();
float DOM_window_width();
