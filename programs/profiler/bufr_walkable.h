#pragma once

#include <string_view>
#include <vector>

/// The BUFR messages of a file, and which of them our own walk can follow.

namespace tyr {

/// The messages of a file, each with its announced length where the file has so much.
std::vector<std::string_view> bufr_messages(std::string_view bytes);

/// Whether our own walk follows a message: an edition up to 3, not compressed, of elements that it
/// knows.
bool bufr_is_own(std::string_view message);

} // namespace tyr
