#pragma once

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
