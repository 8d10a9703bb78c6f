#include "tyr/field/contour_rim_private.h"

namespace tyr {

namespace {

bool is_straight(FieldPoint a, FieldPoint b, FieldPoint c)
{
    return (a.x == b.x && b.x == c.x && (b.y - a.y) * (c.y - b.y) > 0.0F) ||
           (a.y == b.y && b.y == c.y && (b.x - a.x) * (c.x - b.x) > 0.0F);
}

} // namespace

void Rim::add(FieldPoint p)
{
    if (!points_.empty()) {
        p = sides_.beside(p, points_.back());
        if (points_.back() == p) {
            return;
        }
    }
    if (points_.size() >= 2 && points_[points_.size() - 2] == p) {
        points_.pop_back();
        return;
    }
    points_.push_back(p);
}

std::span<const FieldPoint> Rim::finish()
{
    trim_ends();
    leave_out_straight_points();
    return points_;
}

/// Takes off spikes at the point where the walk began.
void Rim::trim_ends()
{
    size_t first = 0;
    size_t last = points_.size();
    while (last - first > 2) {
        if (points_[first] == points_[last - 1]) {
            --last;
        } else if (points_[first + 1] == points_[last - 1]) {
            ++first;
            --last;
        } else if (points_[first] == points_[last - 2]) {
            last -= 2;
        } else {
            break;
        }
    }
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(last), points_.end());
    points_.erase(points_.begin(), points_.begin() + static_cast<std::ptrdiff_t>(first));
}

void Rim::leave_out_straight_points()
{
    size_t n = 0;
    for (const FieldPoint p : points_) {
        if (n >= 2 && is_straight(points_[n - 2], points_[n - 1], p)) {
            --n;
        }
        points_[n++] = p;
    }
    points_.resize(n);
}

} // namespace tyr
