#pragma once

#include "programs/profiler/setup.h"
#include "tyr/geo/domain.h"

/// The plot of the program: the time-height section of one station, or the level map.

void PRF_setup(const DriverSetup &setup);

/// Settles the variable (resource `variable`, "wbrb" in batch mode, or the menu) and parses it.
/// @return 0, or what the menu returned
int PRF_select_variable();

/// Sets whether PRF_select_variable still has to settle the variable.
void PRF_set_ask_variable(int flag);

/// Draws the plot of a domain. The first call opens the graphics and stays in PLT_end; a later one
/// draws again, from the files as they then are. @return 0; -1 if the map's file can't be opened
///         in a later call. A first one of which nothing could be drawn ends the process with
///         kExitNothing, the output complete.
int PRF_plot(DomainRec *domain);

/// The event callback of the window: zoom, the way back, and a new size draw again.
void PRF_event(int code, const char *event, float x, float y);

/// Prints the date and the stations of a file, thirteen a line. @return 0
int PRF_list_stations(const char *file);

/// Closing steps of a plot: the style of the values anew, and the colour bar where it is due.
/// @return 0
int PRF_finish_plot();
