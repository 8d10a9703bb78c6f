#pragma once

#include <string>
#include <string_view>

#include "tyr/upper_air/foreign/foreign.h"

// Which of the forms of others a text is in.

namespace tyr {

/// kUpaBulletin, kUpaWyoming or kUpaSpc by what the first lines of a text hold; -1 for none.
int foreign_type(std::string_view text);

/// Reads a text of that type. What can't be used is told and passed over.
ForeignFile read_foreign(int type, std::string_view text, const std::string &name);

} // namespace tyr
