#include "tyr/field/hodograph.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/field/diagram_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/met/sounding_private.h"
#include "tyr/plot/attributes.h"

namespace {

using namespace tyr;

constexpr int kSurface = 1; // transformation of the whole view surface
constexpr int kRings = 3;   // and of the hodograph
constexpr int kHeightKind = 103;
constexpr float kHalfTurn = 180.0F;
constexpr float kFastest = 300.0F; // knots; faster winds are left out

struct Band {
    float top; // m above the first level
    const char *look;
};
constexpr Band kBands[] = {
    {3000.0F, "#D02020:w3"},
    {6000.0F, "#108030:w3"},
    {9000.0F, "#C09000:w3"},
    {1e9F,    "#2060C0:w3"},
};

constexpr float kMarks[] = {0.0F, 1000.0F, 2000.0F, 3000.0F, 6000.0F, 9000.0F};

struct Point {
    float x, y;
};

// The end of a wind's vector, which points to where the wind goes.
Point end_of(float dir, float spd)
{
    Point p{kMissing, kMissing};
    MAP_ll_to_xy(&p.x, &p.y, dir + kHalfTurn, spd);
    return p;
}

bool has_wind(const SoundLevel &level)
{
    return !is_missing(level.dir) && level.spd >= 0.0F && level.spd <= kFastest &&
           !is_missing(level.z);
}

// The levels of the curve: those with a wind up to `top`, and the wind at the bounds of its bands.
std::vector<SoundLevel> curve_levels(const SoundLevel *winds, int m, float ground, float top)
{
    std::vector<SoundLevel> levels;
    for (int i = 0; i < m; ++i)
        if (has_wind(winds[i]) && winds[i].z >= ground && winds[i].z <= ground + top)
            levels.push_back(winds[i]);
    for (const Band &band : kBands)
        if (band.top < top) {
            const SoundLevel level = level_at(winds, m, kHeightKind, ground + band.top);
            if (has_wind(level))
                levels.push_back(level);
        }
    std::stable_sort(levels.begin(), levels.end(),
                     [](const SoundLevel &a, const SoundLevel &b) { return a.z < b.z; });
    return levels;
}

// A whole number of rings, wide enough for the curve and the storm.
struct Scale {
    float ring = 10.0F; // knots
    int rings = 4;

    float radius() const { return ring * static_cast<float>(rings); }
};

Scale scale_of(const std::vector<SoundLevel> &levels, float storm_speed)
{
    constexpr float kFineUpTo = 60.0F; // knots
    float fastest = storm_speed;
    for (const SoundLevel &level : levels)
        fastest = std::max(fastest, level.spd);
    Scale scale;
    if (fastest > kFineUpTo)
        scale.ring = 20.0F;
    scale.rings = std::max(scale.rings, static_cast<int>(std::ceil(1.05F * fastest / scale.ring)));
    return scale;
}

void set_space(const float viewport[4], float radius)
{
    const float width = viewport[1] - viewport[0];
    const float height = viewport[3] - viewport[2];
    const float side = std::min(width, height);
    const float x = viewport[0] + (width - side) / 2.0F;
    const float y = viewport[2] + (height - side) / 2.0F;
    const float square[4] = {x, x + side, y, y + side};
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjPolarPlot;
    domain.clat = domain.clon = -radius;
    domain.dx = domain.dy = 2.0F * radius;
    DOM_set(&domain);
    float window[4];
    DOM_get_window(window);
    GPH_set_viewport(kRings, square);
    GPH_set_window(kRings, window);
    gsel_norm_tran(kRings);
}

/// The side of the upright axis that has less of the curve: -1 left, 1 right.
float free_side(const std::vector<SoundLevel> &levels)
{
    float sum = 0.0F;
    for (const SoundLevel &level : levels) {
        sum += end_of(level.dir, level.spd).x;
    }
    return sum > 0.0F ? -1.0F : 1.0F;
}

/// @param side  where the numbers stand, as free_side
void draw_rings(const Scale &scale, float side)
{
    constexpr int kSides = 90;
    use_line("color_ring", "#B8B8B8");
    const float r = scale.radius();
    const float across[4] = {-r, 0.0F, r, 0.0F};
    const float up[4] = {0.0F, -r, 0.0F, r};
    gpolyline(2, across);
    gpolyline(2, up);
    use_text("color_text", "", 0.045F * r);
    GPH_set_text_align(side < 0.0F ? kAlignRight : kAlignLeft, kAlignTop);
    for (int i = 1; i <= scale.rings; ++i) {
        const float spd = scale.ring * static_cast<float>(i);
        std::array<float, 2 * (kSides + 1)> points{};
        for (int k = 0; k <= kSides; ++k)
            MAP_ll_to_xy(&points[2 * k], &points[2 * k + 1],
                         360.0F / kSides * static_cast<float>(k), spd);
        gpolyline(kSides + 1, points.data());
        if (i < scale.rings) {
            GPH_text_at("%.0f", side * (spd + 0.015F * r), -0.015F * r, double{spd});
        }
    }
}

// Looks of the bands: those of the list in the resource, over the room's own.
void use_band(size_t band)
{
    const std::vector<std::string> list = RES_list("color_hodo");
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_parse(kBands[band].look, &attr);
    if (band < list.size())
        ATTR_parse(list[band].c_str(), &attr);
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&attr);
}

void draw_curve(const std::vector<SoundLevel> &levels, float ground)
{
    size_t band = 0;
    std::vector<float> points;
    const auto flush = [&points, &band] {
        use_band(band);
        if (points.size() >= 4)
            gpolyline(static_cast<int>(points.size() / 2), points.data());
    };
    for (const SoundLevel &level : levels) {
        const Point p = end_of(level.dir, level.spd);
        points.insert(points.end(), {p.x, p.y});
        if (level.z - ground >= kBands[band].top && band + 1 < std::size(kBands)) {
            flush();
            points.assign({p.x, p.y});
            ++band;
        }
    }
    flush();
}

void draw_marks(const SoundLevel *winds, int m, float ground, float top, float radius)
{
    use_text("color_text", "", 0.045F * radius);
    GPH_set_text_align(kAlignLeft, kAlignBottom);
    use_fill("color_storm", "#606060");
    for (const float height : kMarks) {
        const SoundLevel level = level_at(winds, m, kHeightKind, ground + height);
        if (height > top || !has_wind(level))
            continue;
        const Point p = end_of(level.dir, level.spd);
        constexpr float kDot = 0.012F;
        const float d = kDot * radius;
        const float box[8] = {p.x - d, p.y - d, p.x + d, p.y - d,
                              p.x + d, p.y + d, p.x - d, p.y + d};
        gfill_area(4, box);
        GPH_text_at("%.0f", p.x + 2.0F * d, p.y + d, height / 1000.0);
    }
}

void draw_storm(const float *storm, float radius)
{
    const Point p = end_of(storm[0], storm[1]);
    const float arm = 0.04F * radius;
    const float rising[4] = {p.x - arm, p.y - arm, p.x + arm, p.y + arm};
    const float falling[4] = {p.x - arm, p.y + arm, p.x + arm, p.y - arm};
    use_line("color_storm", ":w2");
    gpolyline(2, rising);
    gpolyline(2, falling);
}

} // namespace

int THERM_plot_hodograph(const float viewport[4], const SoundLevel *winds, int m,
                         const float *storm, float top)
{
    if (!(viewport[1] > viewport[0]) || !(viewport[3] > viewport[2])) {
        MSG_out(kMsgWarn, "THERM_plot_hodograph: Viewport %.3f to %.3f, %.3f to %.3f is empty\n",
                double{viewport[0]}, double{viewport[1]}, double{viewport[2]}, double{viewport[3]});
        return -1;
    }
    const SoundLevel *end = winds + std::max(m, 0);
    const SoundLevel *first = std::find_if(winds, end, has_wind);
    const float ground = first == end ? 0.0F : first->z;
    const std::vector<SoundLevel> levels = curve_levels(winds, m, ground, top);
    const bool has_storm =
        storm != nullptr && !is_missing(storm[0]) && !is_missing(storm[1]) && storm[1] <= kFastest;
    const Scale scale = scale_of(levels, has_storm ? storm[1] : 0.0F);
    set_space(viewport, scale.radius());
    draw_rings(scale, free_side(levels));
    draw_curve(levels, ground);
    draw_marks(winds, m, ground, top, scale.radius());
    if (has_storm)
        draw_storm(storm, scale.radius());
    gsel_norm_tran(kSurface);
    return static_cast<int>(levels.size());
}
