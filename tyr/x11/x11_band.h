#pragma once

#include <X11/Xlib.h>

/// The rubber band: a figure that follows the pointer while a button is down. It is drawn on the
/// window alone, so that an update takes it off.

enum BandKind { kBandNone, kBandLine, kBandBox, kBandFan };

/// A band will start at the next press of a button.
void gset_band(int kind);
/// Points of a fan in world coordinates, up to 3, and whether the pointer moves it in y alone (1:
/// x is fixed) or in x alone (2).
void gset_band_points(const float *world, int n, int fixed);
/// Rectangle in world coordinates that the band can't leave: x minimum, x maximum, y minimum,
/// y maximum.
void gset_band_limits(const float world[4]);
