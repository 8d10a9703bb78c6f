#pragma once

#include <vector>

namespace tyr {

/// The finite numbers at the beginning of a text, at most eight, parted by one of the separators.
std::vector<float> number_list(const char *text, const char *separators);
/// A number as an int, bounded to a million either way.
int whole(float value);

} // namespace tyr
