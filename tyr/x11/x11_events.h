#pragma once

#include <X11/Xlib.h>

/// Events of the display: what a user does to the picture that is held. See device/x11_keys for
/// the keys and buttons.

/// What a program is told: kind 2 for "size" (the window's new size) and keys ("e-Alt"), 3 for
/// buttons ("B1-P-Shft", "B1-R"), with the pointer's place in world coordinates.
using EventCallback = void (*)(int kind, const char *event, float x, float y);
void gset_event_callback(EventCallback function);

/// Handles one event. Returns 0.
int gprocess_x11_event(XEvent *event);
/// Handles what waits; returns how many keys and buttons there were. Does nothing but on the
/// display with event handling on, as the next one.
int gpump_events();
/// Waits for an event, then handles what waits.
int gblock_events();

/// The hold: shows the picture, or the loop, until the user ends it. On the display.
void gwait();
/// A function that the hold calls every so many seconds; 0 for none.
void gset_refresh(int seconds, void (*function)());
/// Puts the rubber band, and with mode 0 the hold, to their start.
void gevents_reset(int mode);
/// 1 starts the hold, anything else takes it back.
void gset_wait(int on);
/// Whether the hold goes on; whether the window is mapped.
int gis_waiting();
int gis_mapped();
