#pragma once

#include "tyr/gks/gks.h"

namespace tyr {

/// The print colours 500 to 508: black, white and grey, each in plain, double and fourfold width.

enum class PrintShade { none, black, white, grey };

/// Shade of an index; none for an ordinary colour.
constexpr PrintShade print_shade(int index)
{
    if (index < kPrintBlack || index > kLastPrintColour) {
        return PrintShade::none;
    }
    return index < kPrintWhite  ? PrintShade::black
           : index < kPrintGrey ? PrintShade::white
                                : PrintShade::grey;
}

/// Factor on the line width: 1, 2 or 4.
constexpr int print_width_factor(int index)
{
    if (index < kPrintBlack || index > kLastPrintColour) {
        return 1;
    }
    return 1 << ((index - kPrintBlack) % 3);
}

} // namespace tyr
