#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace tyr {

/// Stroke fonts. A character sits on a grid of font units: base line at 35, half line at 85, cap
/// line at 140, top at 160, bottom of descenders at 0; x from 0 to 127.
inline constexpr float kFontUnitsPerHeight = 105.0F; ///< cap line less base line
inline constexpr int kFontBase = 35;
inline constexpr int kFontHalf = 85;
inline constexpr int kFontCap = 140;
inline constexpr int kFontTop = 160;
inline constexpr int kBlankWidth = 40;

inline constexpr size_t kMaxStrokeData = 15008;  ///< bytes
inline constexpr unsigned char kStrokeEnd = 255; ///< in the x place: ends a character
inline constexpr unsigned char kPenUp = 128;     ///< added to the x of a move

/// A stroke font: a stream of (x, y) pairs, the place of each character in it, -1 for none, and
/// the width of each character.
struct StrokeFont {
    std::vector<unsigned char> strokes;
    std::array<int, 256> offset;
    std::array<unsigned char, 256> width;

    StrokeFont() { clear(); }
    void clear();
};

/// Reads the text of a font file. False, with the font cleared, when it is damaged: a number out
/// of its range, too much stroke data, an offset beyond it, or an end too early.
bool parse_font(std::string_view text, StrokeFont &font);

/// The font in use.
const StrokeFont &font_current();
/// Whether a font of the X11 server takes its place.
bool font_is_of_server();

} // namespace tyr
