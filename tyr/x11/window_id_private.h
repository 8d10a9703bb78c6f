#pragma once

#include <optional>
#include <string>

namespace tyr {

/// The numbers of an external window, as a text tells them.
struct WindowId {
    unsigned long window = 0; ///< 0 where the text names a pixmap alone
    unsigned long pixmap = 0;
    int width = 640, height = 512;
    unsigned long colour_map = 0; ///< 0 for the screen's
};

/// Decodes "+W:P:WIDTHxHEIGHT:C", "P:WIDTHxHEIGHT:C" or "0xP:WIDTHxHEIGHT:C", window, pixmap,
/// size and colour map; the last number of the two short forms counts for nothing. Nothing when
/// there is no pixmap or its size can't be.
std::optional<WindowId> parse_window_id(const std::string &text);

/// Name of the file that holds the text, for a word that isn't the text itself: "w3" is
/// "tyrloop.3", "w" is "tyrloop.win", any other its own name. Empty for a text (it begins with a
/// digit or a plus).
std::string window_id_file(const std::string &word);

} // namespace tyr
