#pragma once

/// The plot session: the thin layer over the kernel's that a program draws through.

/// Opens a plot: reads `plot_param`, opens the device with a plot area of the wished shape.
/// @param aspect  width over height of the picture; 0 for that of the view surface
/// @return 0; -1 if no plot is wanted, with nothing opened
int PLT_begin(float aspect);

/// The same for a further plot on the open workstation.
int PLT_restart(float aspect);

/// Ends a plot: detaches in batch mode, shows the picture, closes all. Output that didn't all go
/// out ends the process with code 4. @return 0; -1 when there was no plot
int PLT_end();

/// Sets the program's event callback: see gset_event_callback in device/x11_events.h. Null
/// changes nothing there.
void PLT_set_callback(void (*function)(int kind, const char *event, float x, float y));

/// Closes the graphics and ends the process; with a code other than 0 the output files that are
/// open are taken away.
[[noreturn]] void PLT_abort(int code);
