#include "tyr/plot/barb.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"

using namespace tyr;

namespace {

constexpr auto kRadian = static_cast<float>(kRadiansPerDegree);
constexpr int kSolid = 1;
constexpr float kSpacing = 0.12F;   ///< of the signs, as a fraction of the staff
constexpr float kFirstFull = 0.88F; ///< foot of the first full barb
constexpr float kLoneHalf = 0.88F;  ///< foot of a half barb that stands alone
constexpr float kFullLength = 0.5F; ///< sideways, as a fraction of the staff
constexpr float kHalfLength = 0.25F;
constexpr float kSlantFull = 0.12F; ///< outward, as a fraction of the staff
constexpr float kSlantHalf = 0.06F;
constexpr float kRounding = 2.0F;     ///< knots: 3 counts as 5, 8 as 10
constexpr float kMostSpeed = 2000.0F; ///< knots: forty flags, faster than any wind
constexpr float kHeadWing = 0.2F;

struct Point {
    float x, y;
};

/// A staff from (x, y) in a direction; points along it and to its right.
struct Staff {
    float x, y, sine, cosine, length;

    Point at(float along, float sideways) const
    {
        return {x + length * along * sine + cosine * length * sideways,
                y + length * along * cosine - sine * length * sideways};
    }
};

void draw_line(Point from, Point to)
{
    const std::array<float, 4> points = {from.x, from.y, to.x, to.y};
    gpolyline(2, points.data());
}

void draw_flag(const Staff &staff, float outer)
{
    const Point a = staff.at(outer, 0.0F);
    const Point b = staff.at(outer, kFullLength);
    const Point c = staff.at(outer - kSpacing, 0.0F);
    const std::array<float, 8> points = {a.x, a.y, b.x, b.y, c.x, c.y, a.x, a.y};
    gfill_area(3, points.data());
    gpolyline(4, points.data());
}

void draw_half(const Staff &staff, float foot)
{
    draw_line(staff.at(foot, 0.0F), staff.at(foot + kSlantHalf, kHalfLength));
}

void draw_full(const Staff &staff, float foot)
{
    draw_line(staff.at(foot, 0.0F), staff.at(foot + kSlantFull, kFullLength));
}

/// How many of each sign a speed has.
struct Signs {
    int flags, fulls, halves;
};

Signs count_signs(float speed)
{
    speed = std::fmin(speed, kMostSpeed);
    const int flags = static_cast<int>(std::floor((speed + kRounding) / 50.0F));
    const float rest = speed - static_cast<float>(flags) * 50.0F;
    return {flags, static_cast<int>(std::floor((rest + kRounding) / 10.0F)),
            static_cast<int>(std::floor((rest + kRounding) / 5.0F)) % 2};
}

/// Two strokes of an arrow head at `end`, with d the arrow's direction times its length.
void draw_head(Point end, Point d, float wing)
{
    const Point back = {end.x - d.x * wing, end.y - d.y * wing};
    draw_line(end, {back.x + d.y * wing, back.y - d.x * wing});
    draw_line(end, {back.x - d.y * wing, back.y + d.x * wing});
}

bool nothing_to_draw(float direction, float length)
{
    return is_missing(direction) || is_missing(length) || length == 0.0F ||
           !std::isfinite(direction) || !std::isfinite(length);
}

} // namespace

int WX_barb(float x, float y, float direction, float speed, float staff, float offset)
{
    if (is_missing(direction)) {
        return -1;
    }
    return WX_barb_raw(x, y, MAP_rotate_dir(direction, x, y), speed, staff, offset);
}

int WX_barb_raw(float x, float y, float direction, float speed, float length, float offset)
{
    if (nothing_to_draw(direction, speed) || speed < 0.0F) {
        return -1;
    }
    gset_fill_int_style(kSolid);
    speed = std::min(speed, kFastestBarb) + 0.01F;
    const Staff staff = {x, y, std::sin(direction * kRadian), std::cos(direction * kRadian),
                         length};
    draw_line({x + offset * staff.sine, y + offset * staff.cosine}, staff.at(1.0F, 0.0F));
    const Signs signs = count_signs(speed);
    if (signs.halves == 1 && signs.fulls == 0 && signs.flags == 0) {
        draw_half(staff, kLoneHalf);
        return 0;
    }
    for (int i = 0; i < signs.flags; ++i) {
        draw_flag(staff, 1.0F - static_cast<float>(i) * kSpacing);
    }
    // with no flag the barbs begin one space further out, at the end of the staff
    int place = signs.flags == 0 ? -1 : signs.flags;
    for (int i = 0; i < signs.fulls; ++i, ++place) {
        draw_full(staff, kFirstFull - static_cast<float>(place) * kSpacing);
    }
    if (signs.halves == 1) {
        draw_half(staff, kFirstFull - static_cast<float>(place) * kSpacing);
    }
    return 0;
}

int WX_vector(float x, float y, float direction, float length, float scale, float head)
{
    if (is_missing(direction)) {
        return -1;
    }
    return WX_vector_raw(x, y, MAP_rotate_dir(direction, x, y), length, scale, head);
}

int WX_vector_raw(float x, float y, float direction, float length, float scale, float head)
{
    if (nothing_to_draw(direction, length)) {
        return -1;
    }
    const Point d = {-length * std::sin(direction * kRadian),
                     -length * std::cos(direction * kRadian)};
    const Point end = {x + scale * d.x, y + scale * d.y};
    draw_line({x, y}, end);
    if (head > 0.0F) {
        draw_head(end, d, head * scale * kHeadWing);
    }
    return 0;
}

int WX_track(float x, float y, float direction, float length, float tick, int ticks)
{
    if (nothing_to_draw(direction, length)) {
        return -1;
    }
    const Point d = {-std::sin(direction * kRadian), -std::cos(direction * kRadian)};
    const float wing = tick * kHeadWing;
    const Point end = {x + length * d.x, y + length * d.y};
    draw_line({x, y}, end);
    for (int i = 0; i < ticks; ++i) {
        const float along = length / static_cast<float>(ticks) * static_cast<float>(i);
        const Point p = {x + along * d.x, y + along * d.y};
        draw_line({p.x - d.y * wing, p.y + d.x * wing}, {p.x + d.y * wing, p.y - d.x * wing});
    }
    if (tick > 0.0F) {
        draw_head(end, d, wing);
    }
    return 0;
}
