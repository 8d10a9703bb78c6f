#include <algorithm>
#include <cmath>
#include <vector>

#include "tyr/field/contour_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/earth.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr float kLambertJump = 50.0F;
constexpr float kTouching = 1.0e-4F; ///< of a world: what reaches no farther in is rounding
constexpr int kMostWorlds = 3;       ///< copies to either side
constexpr int kMostPath = 50000;     ///< points of one polyline
constexpr float kPoleHeight = static_cast<float>(kEarthRadius);
constexpr float kSideStep = 0.035F; ///< radians, seen from the middle of Mollweide's map

bool is_filled(int kind)
{
    return kind == kContFilled;
}

void send(int kind, std::span<const FieldPoint> points)
{
    static_assert(sizeof(FieldPoint) == 2 * sizeof(float));
    if (is_filled(kind)) {
        gfill_area(static_cast<int>(points.size()), &points.front().x);
        return;
    }
    for (size_t at = 0; at + 1 < points.size(); at += kMostPath - 1) {
        const size_t n = std::min<size_t>(points.size() - at, kMostPath);
        gpolyline(static_cast<int>(n), &points[at].x);
    }
}

bool jumps(std::span<const FieldPoint> points)
{
    for (size_t i = 1; i < points.size(); ++i) {
        if (std::fabs(points[i].x - points[i - 1].x) > kLambertJump) {
            return true;
        }
    }
    return false;
}

/// Keeps of an area or a line what lies at or below `bound` * `sign` in parts of half a world.
/// Lines come apart where they leave.
std::vector<std::vector<FieldPoint>> cut(std::span<const FieldPoint> points, bool closed,
                                         float sign)
{
    std::vector<std::vector<FieldPoint>> runs(1);
    const auto inside = [sign](FieldPoint p) { return p.x * sign <= 1.0F; };
    const size_t n = points.size();
    for (size_t i = 0; i < n; ++i) {
        const FieldPoint p = points[i];
        if (inside(p)) {
            runs.back().push_back(p);
        }
        if (i + 1 == n && !closed) {
            break;
        }
        const FieldPoint q = points[(i + 1) % n];
        if (inside(p) != inside(q)) {
            const float t = (sign - p.x) / (q.x - p.x);
            runs.back().push_back({sign, p.y + t * (q.y - p.y)});
            if (!closed && inside(p)) {
                runs.emplace_back();
            }
        }
    }
    return runs;
}

/// Mollweide: the points between two on a side of the map, which is straight only in parts of its
/// width. They stand at fixed places, so that a way along the side and back is one line.
void add_side(FieldPoint from, FieldPoint to, const WorldSides &sides, std::vector<FieldPoint> &out)
{
    const auto steps = [](float y) {
        return std::asin(std::clamp(y / kPoleHeight, -1.0F, 1.0F)) / kSideStep;
    };
    const float begin = steps(from.y);
    const float end = steps(to.y);
    const float sign = end < begin ? -1.0F : 1.0F;
    for (float k = sign * (std::floor(sign * begin) + 1.0F); sign * k < sign * end; k += sign) {
        const float y = kPoleHeight * std::sin(k * kSideStep);
        out.push_back({from.x * sides.width(y) / 2.0F, y});
    }
}

/// Mollweide: a piece with x in parts of half the world's width, so that the sides are straight.
void send_part(int kind, std::span<const FieldPoint> part, const WorldSides &sides)
{
    std::vector<FieldPoint> points;
    for (size_t i = 0; i < part.size(); ++i) {
        const FieldPoint p = part[i];
        const FieldPoint next = part[(i + 1) % part.size()];
        points.push_back({p.x * sides.width(p.y) / 2.0F, p.y});
        if (is_filled(kind) && p.x == next.x && std::fabs(p.x) == 1.0F) {
            add_side(p, next, sides, points);
        }
    }
    if (points.size() >= (is_filled(kind) ? 3U : 2U)) {
        send(kind, points);
    }
}

void send_cut(int kind, std::span<const FieldPoint> points, const WorldSides &sides)
{
    for (const auto &right : cut(points, is_filled(kind), 1.0F)) {
        for (const auto &part : cut(right, is_filled(kind), -1.0F)) {
            send_part(kind, part, sides);
        }
    }
}

void send_mollweide(int kind, std::span<const FieldPoint> points, const WorldSides &sides)
{
    std::vector<FieldPoint> parts(points.begin(), points.end());
    for (FieldPoint &p : parts) {
        const float half = sides.width(p.y) / 2.0F;
        p.x = half > 1e-3F ? p.x / half : 0.0F;
    }
    const auto [least, most] = std::minmax_element(
        parts.begin(), parts.end(), [](FieldPoint a, FieldPoint b) { return a.x < b.x; });
    if (least->x >= -1.0F && most->x <= 1.0F) {
        send(kind, points);
        return;
    }
    const int first = static_cast<int>(std::ceil((-1.0F - most->x) / 2.0F));
    const int last = static_cast<int>(std::floor((1.0F - least->x) / 2.0F));
    std::vector<FieldPoint> moved(parts);
    for (int i = std::max(first, -kMostWorlds); i <= std::min(last, kMostWorlds); ++i) {
        const float shift = 2.0F * static_cast<float>(i);
        if (i != 0 &&
            (most->x + shift <= -1.0F + kTouching || least->x + shift >= 1.0F - kTouching)) {
            continue;
        }
        std::transform(parts.begin(), parts.end(), moved.begin(), [shift](FieldPoint p) {
            return FieldPoint{p.x + shift, p.y};
        });
        send_cut(kind, moved, sides);
    }
}

} // namespace

void draw_piece(int kind, std::span<const FieldPoint> points, const WorldSides &sides)
{
    if (points.size() < (is_filled(kind) ? 3U : 2U)) {
        return;
    }
    const float width = sides.width(points.front().y);
    if (width <= 0.0F && sides.proj != kProjMollweide) {
        send(kind, points);
        return;
    }
    if (sides.proj == kProjMollweide) {
        send_mollweide(kind, points, sides);
        return;
    }
    float window[4];
    DOM_get_window(window);
    const auto [least, most] = std::minmax_element(
        points.begin(), points.end(), [](FieldPoint a, FieldPoint b) { return a.x < b.x; });
    const int first = static_cast<int>(std::ceil((window[0] - most->x) / width));
    const int last = static_cast<int>(std::floor((window[1] - least->x) / width));
    const float touching = width * kTouching;
    std::vector<FieldPoint> moved(points.begin(), points.end());
    for (int i = std::max(first, -kMostWorlds); i <= std::min(last, kMostWorlds); ++i) {
        const float shift = width * static_cast<float>(i);
        if (i != 0 &&
            (most->x + shift <= window[0] + touching || least->x + shift >= window[1] - touching)) {
            continue;
        }
        std::transform(points.begin(), points.end(), moved.begin(), [shift](FieldPoint p) {
            return FieldPoint{p.x + shift, p.y};
        });
        send(kind, moved);
    }
}

} // namespace tyr

void CONT_piece(int kind, int count, const float *points)
{
    if (count < 2 || points == nullptr) {
        return;
    }
    const WorldSides sides{DOM_get_proj()};
    std::vector<FieldPoint> list;
    for (int i = 0; i < count; ++i) {
        const FieldPoint p{points[2 * i], points[2 * i + 1]};
        list.push_back(list.empty() ? p : sides.beside(p, list.back()));
    }
    if (sides.proj == kProjLambert && jumps(list)) {
        return;
    }
    const bool fills = kind == kContFilled || (kind == kContBoth && count > 2);
    draw_piece(fills ? kContFilled : kContLines, list, sides);
}

void CONT_edge_point(float x1, float y1, float x2, float y2, float fraction, float *out)
{
    const WorldSides sides{DOM_get_proj()};
    const FieldPoint p = sides.beside({x1, y1}, {x2, y2});
    out[0] = p.x + fraction * (x2 - p.x);
    out[1] = p.y + fraction * (y2 - p.y);
}
