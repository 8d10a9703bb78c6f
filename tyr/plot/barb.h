#pragma once

/// Signs of the wind. Directions are degrees, speeds of barbs knots, sizes plot units of the
/// current transformation. Each returns 0, or -1 if nothing was drawn (no wind, or Missing).

inline constexpr float kFastestBarb = 300.0F; ///< a faster wind is drawn as this

/// Wind barb: the staff points to where the wind comes from, true north turned to the plot's.
/// @param staff   length of the staff
/// @param offset  gap between the place and the staff's beginning, as a fraction of the staff's
///                direction in plot units
int WX_barb(float x, float y, float direction, float speed, float staff, float offset);
/// The same with the direction measured from the plot's up direction.
int WX_barb_raw(float x, float y, float direction, float speed, float staff, float offset);

/// Wind arrow, downwind. @param length times `scale` its length; `head` the size of its head
int WX_vector(float x, float y, float direction, float length, float scale, float head);
int WX_vector_raw(float x, float y, float direction, float length, float scale, float head);

/// Track arrow with cross ticks; the direction isn't turned.
int WX_track(float x, float y, float direction, float length, float tick, int ticks);
