#pragma once

namespace tyr {

/// Lets the library read every file in memory (true), or those alone that aren't read directly
/// (false), so that the one can be held against the other.
void netcdf_by_library_alone(bool is_alone);

} // namespace tyr
