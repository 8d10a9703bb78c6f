#pragma once

/// The value that stands for "no value" in every record and return: as a float and as an int.
inline constexpr float kMissing = -9999.0F;
inline constexpr int kMissingInt = -9999;

/// True for the float Missing value.
inline bool is_missing(float value)
{
    return value == kMissing;
}
