#pragma once

#include <cmath>
#include <cstddef>

#include "tyr/base/missing.h"

inline constexpr size_t kUnitTextRoom = 32; ///< bytes that UNIT_scale_text fills at most

/// Converts a value between two unit texts by "units.lup", found by `file_path`.
///
/// A unit text may have a number in front ("100 mb", "10^-3/s", "-deg"), and '_' stands for a
/// blank. Texts that are equal but for case, and an empty `to` with a `from`, leave the value
/// alone. The last pair is kept, so that a run over many values reads the file once.
///
/// @return value * input scale * scale + offset, divided by the output scale; Missing for Missing;
///         0 if the file can't be opened. A pair that the file hasn't got converts by the numbers
///         in front alone. Missing where the result is no finite number
float UNIT_convert(const char *from, const char *to, float value);

/// Forgets the pair that is kept, so that the next call reads the file again.
void UNIT_forget();

/// Scales a unit text: the number in front of `unit` (1 where there is none) times `factor`, a
/// blank, the rest of `unit` and the suffix: "K", "/m" and 1e-5 give "1e-05 K/m".
/// @param[out] out  kUnitTextRoom bytes
void UNIT_scale_text(const char *unit, const char *suffix, char *out, float factor);

namespace tyr {

/// The numbers that turn values of one unit into another.
struct UnitConversion {
    float in = 1.0F;
    float out = 1.0F;
    float scale = 1.0F;
    float offset = 0.0F;

    /// Of a value that isn't Missing.
    float apply(float value) const
    {
        const double result = (double{value} * in * scale + offset) / out;
        const auto rounded = static_cast<float>(result);
        return std::isfinite(rounded) ? rounded : kMissing;
    }
    /// True where apply() gives each finite value back.
    bool is_identity() const { return in == out && scale == 1.0F && offset == 0.0F; }
};

/// The numbers of UNIT_convert for a pair, for runs over many values.
UnitConversion find_unit_conversion(const char *from, const char *to);

} // namespace tyr
