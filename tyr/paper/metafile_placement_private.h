#pragma once

#include <algorithm>
#include <array>

#include "tyr/gks/gks.h"

namespace tyr {

/// Where on the page a file is played: its viewports are moved there.
class Placement {
  public:
    Placement(const float panel[4], bool swap) : swap_(swap)
    {
        std::copy_n(panel, 4, panel_.begin());
    }

    /// A colour as it is shown: black and white may change places.
    void set_colour(int index, const float rgb[3]) const
    {
        const bool is_ground =
            rgb[0] == rgb[1] && rgb[1] == rgb[2] && (rgb[0] == 0.0F || rgb[0] == 1.0F);
        const float other = 1.0F - rgb[0];
        const float swapped[3] = {other, other, other};
        gset_colr_rep(1, index, swap_ && is_ground ? swapped : rgb);
    }

    void set_window(const float rect[4])
    {
        std::copy_n(rect, 4, window_.begin());
        for (int n = 0; n < kNumTransformations; n++) {
            apply(n);
        }
    }
    void set_viewport(int n, const float rect[4])
    {
        if (n >= 0 && n < kNumTransformations) {
            std::copy_n(rect, 4, viewports_[static_cast<size_t>(n)].begin());
            apply(n);
        }
    }

  private:
    using Rect = std::array<float, 4>;

    void apply(int n) const
    {
        const float width = window_[1] - window_[0];
        const float height = window_[3] - window_[2];
        const float wide = panel_[1] - panel_[0];
        const float high = panel_[3] - panel_[2];
        const float scale = std::min(wide / width, high / height);
        const float x = panel_[0] + (wide - scale * width) / 2.0F;
        const float y = panel_[2] + (high - scale * height) / 2.0F;
        const Rect &v = viewports_[static_cast<size_t>(n)];
        const Rect placed = {x + scale * (v[0] - window_[0]), x + scale * (v[1] - window_[0]),
                             y + scale * (v[2] - window_[2]), y + scale * (v[3] - window_[2])};
        gset_viewport(n, placed.data());
    }

    Rect panel_{};
    bool swap_;
    Rect window_ = {0.0F, 1.0F, 0.0F, 1.0F};
    std::array<Rect, kNumTransformations> viewports_ = {window_, window_, window_,
                                                        window_, window_, window_};
};

} // namespace tyr
