#pragma once

// Formulas of met/thermo.h over rows of points, several times as fast, with the same results but
// for a rare last place. A point of which an operand is Missing, or the result no finite number, is
// Missing. The result may be one of the operands.

#include <cstddef>

namespace tyr {

/// MET_dew_from_rh of temperatures (K) and relative humidities (%).
void dew_from_rh_row(const float *t, const float *rh, float *td, size_t count);

/// MET_sat_vapor of dew points or temperatures (K).
void sat_vapor_row(const float *t, float *e, size_t count);

/// MET_theta of temperatures (K) and pressures (hPa).
void theta_row(const float *t, const float *p, float *theta, size_t count);

/// MET_theta_e of temperatures, dew points (K) and pressures (hPa).
void theta_e_row(const float *t, const float *td, const float *p, float *theta_e, size_t count);

/// MET_wet_bulb of the same.
void wet_bulb_row(const float *t, const float *td, const float *p, float *wet_bulb, size_t count);

} // namespace tyr
