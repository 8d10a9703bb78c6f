#pragma once

// Directions of winds and their components over rows of points. A point of which an operand is
// Missing, or the result no finite number, is Missing. The result may be one of the operands.

#include <cstddef>

namespace tyr {

/// atan2(y, x) in degrees.
void atan2d_row(const float *y, const float *x, float *angle, size_t count);

/// The direction that a wind comes from, degrees from north, 0 up to 360; 0 for a calm.
void direction_row(const float *u, const float *v, float *direction, size_t count);

/// Components of a wind from its direction (degrees) and speed.
void east_part_row(const float *direction, const float *speed, float *u, size_t count);
void north_part_row(const float *direction, const float *speed, float *v, size_t count);

} // namespace tyr
