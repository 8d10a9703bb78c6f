#pragma once

/// The colour test of the attribute setters. Reports in the name of the routine and returns false
/// for an index that can't be used.
bool colour_usable(const char *routine, int index);
