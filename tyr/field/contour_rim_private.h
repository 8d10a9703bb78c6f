#pragma once

// The rim of an area while it is walked.

#include "tyr/field/contour_trace_private.h"

namespace tyr {

class Rim {
  public:
    explicit Rim(const WorldSides &sides) : sides_(sides) {}

    void clear() { points_.clear(); }
    /// Adds a point, on the side of the world where the last one lies; a step straight back takes
    /// the spike off.
    void add(FieldPoint p);
    /// The closed rim without spikes, and without points between others on a row or column of the
    /// plot. Valid until the next call.
    std::span<const FieldPoint> finish();

  private:
    void trim_ends();
    void leave_out_straight_points();

    WorldSides sides_;
    std::vector<FieldPoint> points_;
};

} // namespace tyr
