#pragma once

#include "tyr/geo/domain.h"

/// What a user does to a held plot, for every program: zoom to a box dragged with Shift and the
/// first button, the way back with Alt-u, a redraw with Alt-r, a new size of the window. Each makes
/// a domain and calls the program's plot routine with it.

using DomainCallback = int (*)(DomainRec *domain);

/// What draws the plot for a new domain, and after a change of size; null for nothing.
void PLT_set_zoom_callback(DomainCallback function);
void PLT_set_size_callback(DomainCallback function);

/// Take an event of the program's callback (device/x11_events.h). 0; -1 for a box of no size.
int PLT_zoom_event(const char *event, float x, float y);
int PLT_size_event(const char *event, float x, float y);
