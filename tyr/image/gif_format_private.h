#pragma once

#include <array>

namespace tyr {

/// What reader and writer of GIF share.

enum GifByte : unsigned {
    kGifTableFlag = 0x80,
    kGifInterlaceFlag = 0x40,
    kGifTableBits = 0x07,
    kGifTransparentFlag = 0x01,
    kGifImage = 0x2C,
    kGifExtension = 0x21,
    kGifControl = 0xF9,
    kGifComment = 0xFE,
    kGifApplication = 0xFF,
    kGifTrailer = 0x3B
};

inline constexpr int kGifMaxWidth = 12;                   ///< bits of a code
inline constexpr unsigned kGifCodes = 1U << kGifMaxWidth; ///< codes in all

/// Rows of one pass over an interlaced picture.
struct GifPass {
    int first, step;
};
inline constexpr GifPass kGifPasses[] = {
    {0, 8},
    {4, 8},
    {2, 4},
    {1, 2}
};
inline constexpr GifPass kGifPlain[] = {
    {0, 1}
};

} // namespace tyr
