#pragma once

#include <string>

namespace tyr {

/// The folder of fonts, colours, maps and tables that was installed with the running program:
/// ../etc or ../share/tyr beside its own folder. Empty where there is none.
std::string installed_data_folder();

} // namespace tyr
