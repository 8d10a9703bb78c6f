#include "tyr/field/sounding_plot.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/field/diagram_private.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/met/sounding_private.h"
#include "tyr/plot/barb.h"
#include "tyr/plot/view.h"

namespace {

using namespace tyr;

constexpr int kSurface = 1; // transformation of the whole view surface
constexpr int kDiagram = 2; // and of the diagram

// Pressure at which air of temperature t (kelvin) has the potential temperature theta.
float pressure_of(double t, double theta)
{
    constexpr double kPoisson = 0.286;
    return static_cast<float>(1000.0 * std::pow(t / theta, 1.0 / kPoisson));
}

void set_corner(DomainRec *d, float t, float p, float t_span, float top)
{
    d->clat = t;
    d->clon = p;
    d->dx = t_span;
    d->dy = top - p;
}

// The tephigram is turned about its lower left corner. It looks right when the isobars at its foot
// run level, which sets the span of ln(theta) by that of temperature.
void set_tephigram(DomainRec *d, float shape)
{
    constexpr float kLeft = -30.0F; // degrees Celsius
    constexpr float kSpan = 95.0F;
    constexpr double kLevel = 245.0; // K; a larger one tilts them, and shows less of the heights
    const double t = kelvin(kLeft);
    const double theta = MET_theta(kelvin(kLeft), kDiagramBottom);
    set_corner(d, kLeft, kDiagramBottom, kSpan,
               pressure_of(t, theta * std::exp(shape * kSpan / kLevel)));
}

void set_upright_tephigram(DomainRec *d)
{
    constexpr float kLeft = -90.0F; // degrees Celsius
    constexpr float kSpan = 135.0F;
    constexpr double kColdTheta = 240.0; // K
    constexpr double kWarmTheta = 450.0;
    const double t = kelvin(kLeft);
    set_corner(d, kLeft, pressure_of(t, kColdTheta), kSpan, pressure_of(t, kWarmTheta));
}

void draw_curve(const SoundLevel *sound, int n, float SoundLevel::*field)
{
    DiagramLine line;
    for (int i = 0; i < n; ++i)
        if (!is_missing(sound[i].*field)) // a level without the value doesn't break the curve
            line.add(sound[i].*field, sound[i].p);
    line.draw();
}

// Points of the parcel's path, from its start to the diagram's top.
std::vector<SoundLevel> path_points(const ParcelPath &path)
{
    constexpr float kStep = 5.0F; // hPa
    std::vector<SoundLevel> points;
    const ParcelRec &lift = path.lift;
    if (is_missing(path.start.p) || is_missing(lift.lcl_p) || !(lift.lcl_p > 0.0F))
        return points;
    const auto add = [&points](float p, float t_kelvin) {
        points.push_back({p, kMissing, celsius(t_kelvin), kMissing, kMissing, kMissing});
    };
    const float start = std::min(path.start.p, 2.0F * kDiagramBottom);
    for (float p = start; p > lift.lcl_p; p -= kStep)
        add(p, MET_dry_adiabat(lift.lcl_t, lift.lcl_p, p));
    add(lift.lcl_p, lift.lcl_t);
    for (float p = lift.lcl_p - kStep; p >= kDiagramTop; p -= kStep)
        add(p, MET_moist_temp(lift.theta_e, p));
    return points;
}

// One stretch where the parcel is warmer, or colder, than its surroundings.
struct Stretch {
    bool is_warm = false;
    std::vector<SoundLevel> parcel, environment;

    void fill() const
    {
        DiagramLine edge;
        for (const SoundLevel &level : parcel)
            edge.add(level.t, level.p);
        for (auto level = environment.rbegin(); level != environment.rend(); ++level)
            edge.add(level->t, level->p);
        const std::vector<float> &points = edge.points();
        if (parcel.size() < 2 || points.size() < 6)
            return;
        if (is_warm)
            use_fill("color_cape", "#F8C8C0");
        else
            use_fill("color_cin", "#C8DCF4");
        gfill_area(static_cast<int>(points.size() / 2), points.data());
    }
};

// Fills between the parcel's path and the temperature: what is colder up to the level of free
// convection, and what is warmer.
void fill_energies(const SoundLevel *sound, int n, const ParcelPath &path)
{
    Stretch stretch;
    for (const SoundLevel &parcel : path_points(path)) {
        const SoundLevel around = level_at(sound, n, kPressureKind, parcel.p);
        if (is_missing(around.t))
            continue;
        const bool is_warm = parcel.t > around.t;
        stretch.parcel.push_back(parcel);
        stretch.environment.push_back(around);
        const bool is_free = path.lift.lfc_p > 0.0F && parcel.p < path.lift.lfc_p;
        if (stretch.parcel.size() > 1 && is_warm == stretch.is_warm)
            continue;
        if (stretch.is_warm || (!is_free && path.lift.lfc_p > 0.0F))
            stretch.fill();
        stretch = {is_warm, {parcel}, {around}};
    }
    if (stretch.is_warm)
        stretch.fill();
}

void draw_path(const ParcelPath &path)
{
    DiagramLine line;
    for (const SoundLevel &level : path_points(path))
        line.add(level.t, level.p);
    use_line("color_parcel", ":w2:s3");
    line.draw();
}

void draw_frame(const float viewport[4])
{
    gsel_norm_tran(kSurface);
    use_line("color_isobar", "#909090");
    GPH_rect(viewport);
}

// Where a level stands on the view surface; Missing off the diagram.
float surface_height(float t, float p, const float viewport[4])
{
    float x = kMissing;
    float y = kMissing;
    if (!(p > 0.0F) || MAP_ll_to_xy(&x, &y, t, p) == 0)
        return kMissing;
    y = gtran_y(kDiagram, kSurface, y);
    return y >= viewport[2] && y <= viewport[3] ? y : kMissing;
}

// Where an isobar comes in at the left edge.
float isobar_height(float p, const float viewport[4])
{
    float low = -150.0F; // degrees Celsius on both sides of the edge
    float high = 60.0F;
    for (int i = 0; i < 20; ++i) {
        const float t = (low + high) / 2.0F;
        float x = kMissing;
        float y = kMissing;
        MAP_ll_to_xy(&x, &y, t, p);
        (gtran_x(kDiagram, kSurface, x) < viewport[0] ? low : high) = t;
    }
    return surface_height(high, p, viewport);
}

// Where a level of the parcel's path stands.
float path_height(float p, const ParcelPath &path, const float viewport[4])
{
    if (!(p > 0.0F) || is_missing(path.lift.lcl_p))
        return kMissing;
    const float t = p >= path.lift.lcl_p ? MET_dry_adiabat(path.lift.lcl_t, path.lift.lcl_p, p)
                                         : MET_moist_temp(path.lift.theta_e, p);
    return surface_height(celsius(t), p, viewport);
}

} // namespace

int THERM_diagram_domain(int proj, const float viewport[4], DomainRec *domain)
{
    constexpr float kLeft = -40.0F; // degrees Celsius, of the skew-T
    constexpr float kSpan = 85.0F;
    DOM_init(domain);
    domain->proj = proj;
    const float width = viewport[1] - viewport[0];
    const float height = viewport[3] - viewport[2];
    if (!(width > 0.0F) || !(height > 0.0F)) {
        MSG_out(kMsgWarn, "THERM_diagram_domain: Viewport %.3f to %.3f, %.3f to %.3f is empty\n",
                double{viewport[0]}, double{viewport[1]}, double{viewport[2]}, double{viewport[3]});
        return -1;
    }
    switch (proj) {
    case kProjSkewT:
        set_corner(domain, kLeft, kDiagramBottom, kSpan, kDiagramTop);
        return 0;
    case kProjTephigram:
        set_tephigram(domain, height / width);
        return 0;
    case kProjRotatedTephigram:
        set_upright_tephigram(domain);
        return 0;
    default:
        MSG_out(kMsgWarn, "THERM_diagram_domain: Projection %d is no thermodynamic diagram\n",
                proj);
        return -1;
    }
}

int THERM_plot_diagram(int proj, const float viewport[4], const SoundLevel *sound, int n,
                       const ParcelPath *path)
{
    DomainRec domain;
    if (THERM_diagram_domain(proj, viewport, &domain) != 0)
        return -1;
    GPH_set_viewport(kDiagram, viewport);
    DOM_set_viewport(viewport);
    PLT_set_domain(&domain);
    if (path != nullptr && n > 0)
        fill_energies(sound, n, *path);
    draw_diagram_lines(viewport);
    use_line("color_dewp", "#108030:w3");
    draw_curve(sound, n, &SoundLevel::td);
    use_line("color_temp", "#D02020:w3");
    draw_curve(sound, n, &SoundLevel::t);
    if (path != nullptr)
        draw_path(*path);
    draw_frame(viewport);
    return 0;
}

void THERM_plot_levels(const float viewport[4], const SoundLevel *sound, int n,
                       const ParcelPath *path)
{
    constexpr float kTextSize = 0.013F; // of the diagram's height
    constexpr float kHeights[] = {1000.0F, 850.0F, 700.0F, 500.0F, 400.0F, 300.0F, 200.0F, 150.0F};
    const float size = kTextSize * (viewport[3] - viewport[2]);
    gsel_norm_tran(kSurface);
    use_text("color_isobar", "#909090", size);
    GPH_set_text_align(kAlignLeft, kAlignBottom);
    for (const float p : kHeights) {
        const float z = level_at(sound, n, kPressureKind, p).z;
        const float y = isobar_height(p, viewport);
        if (!is_missing(z) && !is_missing(y))
            GPH_text_at("%.0f m", viewport[0] + size, y + 0.3F * size, double{z});
    }
    if (path == nullptr)
        return;
    const struct {
        const char *name;
        float p;
    } marks[] = {
        {"LCL", path->lift.lcl_p},
        {"LFC", path->lift.lfc_p},
        {"EL",  path->lift.el_p }
    };
    use_text("color_parcel", "", 1.2F * size);
    use_line("color_parcel", "");
    GPH_set_text_align(kAlignRight, kAlignHalf);
    for (const auto &mark : marks) {
        const float y = path_height(mark.p, *path, viewport);
        if (is_missing(y))
            continue;
        const float dash[4] = {viewport[1] - 2.0F * size, y, viewport[1], y};
        gpolyline(2, dash);
        GPH_text_at("%s", viewport[1] - 2.6F * size, y, mark.name);
    }
}

int THERM_plot_barbs(float x, float staff, float gap, const SoundLevel *winds, int m,
                     const SoundLevel *temps, int n)
{
    float window[4];
    DOM_get_window(window);
    use_line("color_wind", "");
    use_fill("color_wind", "");
    gsel_norm_tran(kSurface);
    const float axis[4] = {x, gtran_y(kDiagram, kSurface, window[2]), x,
                           gtran_y(kDiagram, kSurface, window[3])};
    gpolyline(2, axis);
    float last = kMissing;
    int drawn = 0;
    for (int i = 0; i < m; ++i) {
        const SoundLevel &wind = winds[i];
        const float t = level_at(temps, n, kPressureKind, wind.p).t;
        float plot_x = kMissing;
        float plot_y = kMissing;
        if (is_missing(wind.dir) || is_missing(wind.spd) || !(wind.p > 0.0F))
            continue;
        MAP_ll_to_xy(&plot_x, &plot_y, is_missing(t) ? 0.0F : t, wind.p);
        if (is_missing(plot_y) || !(plot_y >= window[2] && plot_y <= window[3]))
            continue;
        const float y = gtran_y(kDiagram, kSurface, plot_y);
        if (!is_missing(last) && y - last < gap)
            continue;
        if (WX_barb_raw(x, y, wind.dir, wind.spd, staff, 0.0F) == 0)
            ++drawn;
        last = y;
    }
    return drawn;
}
