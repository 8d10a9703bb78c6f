#pragma once

#include <string_view>

#include "tyr/gks/font_private.h"
#include "tyr/gks/state_private.h"

namespace tyr {

/// Widths of stroke text in font units.

/// Advance of a character to the next, before the expansion.
float text_advance(const TextState &text, const StrokeFont &font, unsigned char c);

/// Total width of a text: the advances but for the last character, which counts its own width;
/// truncated after each addition, then times the expansion and truncated again.
float text_total(const TextState &text, const StrokeFont &font, std::string_view characters);

} // namespace tyr
