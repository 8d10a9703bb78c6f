#pragma once

#include <string>

/// Path of a file in the folder of real observations by other hands that may stand beside the
/// checkout (`../shared/data`, or the folder that the environment names in TYR_SHARED_DATA).
/// Empty where it isn't there; the test then skips, saying so.
std::string shared_data(const std::string &name);
