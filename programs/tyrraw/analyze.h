#pragma once

#include <string>
#include <vector>

namespace tyr {

/// "analyze file[-column] = grid": the objective analysis of a column's values (the first without
/// one) on the domain of `grid_domain`, else of `plot_domain` or `region`, else the first region;
/// into a grid file of the kind that `output` or the name's ending tells.
/// @return the program's exit code
int analyze(const std::vector<std::string> &words);

} // namespace tyr
