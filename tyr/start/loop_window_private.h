#pragma once

#include <span>
#include <string>

#include "tyr/start/option_rec.h"

// The exchange of resources with a loop window (base/channel.h) at start-up: the window's values
// overrule what was read before, and it learns each value that it hasn't got.

namespace tyr {

/// Connects to the window of that number (a text) and exchanges. A window that isn't there, or
/// doesn't take clients, is told by a warning.
void loop_exchange(const std::string &number, std::span<const OptionRec> options);
/// Tells the window, if one is connected, an option of the command line; null for no value.
void loop_tell(const char *name, const char *value);
/// Leaves the window.
void loop_quit();

} // namespace tyr
