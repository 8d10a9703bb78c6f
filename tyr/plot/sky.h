#pragma once

/// Sky cover sign: a circle of `radius` (plot units) with the filling of a code: 0 C b o s x clear,
/// 1 F, 2 3 S, 4 5, 6 B, 7, 8 O overcast, 9 X obscured; any other an M. @return 0
int WX_sky_symbol(float x, float y, float radius, char code);
