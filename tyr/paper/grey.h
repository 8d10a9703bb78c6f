#pragma once

/// Grey level of each colour index, for paper without colour.

/// Stores the grey of a colour, (0.9 r + g + 0.8 b) / 2.7, reversed when asked for. The index is
/// 0 to 256; others are passed over.
void gps_set_gray(int index, float red, float green, float blue);
/// Grey of an index, 0 black to 1 white; 0 for an index without an entry.
float gps_gray(int index);
/// From here on greys are reversed: 1 minus the level.
void gps_set_reverse(int flag);
