#include <cmath>
#include <cstdio>

#include "tyr/base/missing.h"
#include "tyr/field/diagram_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/met/sounding_private.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"

namespace {

using namespace tyr;

constexpr int kDiagram = 2;    // transformation of the diagram
constexpr int kSurface = 1;    // and of the whole view surface
constexpr float kStep = 10.0F; // hPa along adiabats

constexpr float kIsobars[] = {1000.0F, 925.0F, 850.0F, 700.0F, 500.0F, 400.0F,
                              300.0F,  250.0F, 200.0F, 150.0F, 100.0F};
constexpr float kMixingRatios[] = {0.4F, 1.0F, 2.0F, 4.0F, 7.0F, 10.0F, 16.0F, 24.0F};

constexpr const char *kMixingLook = "#7890C8:s5";

constexpr float kColdest = -160.0F; // isotherms
constexpr float kWarmest = 60.0F;

const char *text_colour()
{
    return PLT_is_light() != 0 ? "black" : "white";
}

bool is_inside(float x, float y)
{
    float w[4];
    DOM_get_window(w);
    const float margin = 1e-3F * (w[3] - w[2]);
    return x >= w[0] && x <= w[1] && y >= w[2] - margin && y <= w[3] + margin;
}

// A number beside a plot point of the diagram, moved by dx and dy on the view surface.
void number_at(float x, float y, float dx, float dy, int decimals, double value)
{
    gsel_norm_tran(kSurface);
    char text[16];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    const float at[2] = {gtran_x(kDiagram, kSurface, x) + dx, gtran_y(kDiagram, kSurface, y) + dy};
    GPH_text(at, text);
    gsel_norm_tran(kDiagram);
}

void draw_isobars(float size)
{
    constexpr float kSample = 2.0F; // K
    use_line("color_isobar", "#909090");
    use_text("color_text", "", size);
    GPH_set_text_align(kAlignRight, kAlignHalf);
    for (const float p : kIsobars) {
        DiagramLine line;
        for (float t = kColdest; t <= kWarmest; t += kSample)
            line.add(t, p);
        line.draw();
        // its number stands where the line comes in from the left
        float y = kMissing;
        float w[4];
        DOM_get_window(w);
        const std::vector<float> &points = line.points();
        for (size_t i = 0; i + 3 < points.size() && is_missing(y); i += 2)
            if (points[i] <= w[0] && points[i + 2] > w[0])
                y = points[i + 1] + (points[i + 3] - points[i + 1]) * (w[0] - points[i]) /
                                        (points[i + 2] - points[i]);
        if (!is_missing(y) && is_inside(w[0], y))
            number_at(w[0], y, -0.6F * size, 0.0F, 0, p);
    }
}

constexpr size_t kNowhere = static_cast<size_t>(-1);

// Where a line from below comes into the diagram: its first point, or the first near the lower
// edge.
size_t lowest_inside(const std::vector<float> &points)
{
    constexpr float kNear = 0.03F; // of the diagram's height
    float w[4];
    DOM_get_window(w);
    for (size_t i = 0; i + 1 < points.size(); i += 2)
        if (is_inside(points[i], points[i + 1]))
            return i == 0 || points[i + 1] < w[2] + kNear * (w[3] - w[2]) ? i : kNowhere;
    return kNowhere;
}

void draw_isotherms(float size)
{
    constexpr float kInterval = 10.0F;
    use_text("color_text", "", size);
    GPH_set_text_align(kAlignCentre, kAlignTop);
    for (float t = kColdest; t <= kWarmest; t += kInterval) {
        if (t == 0.0F)
            use_line("color_zero", "#5070C0:w2");
        else
            use_line("color_isotherm", "#B8B8B8");
        DiagramLine line;
        for (float p = kDiagramBottom; p >= kDiagramTop / 2.0F; p -= kStep)
            line.add(t, p);
        line.draw();
        const size_t at = lowest_inside(line.points());
        if (at != kNowhere)
            number_at(line.points()[at], line.points()[at + 1], 0.0F, -0.7F * size, 0, t);
    }
}

void draw_dry_adiabats()
{
    constexpr float kInterval = 10.0F; // K
    use_line("color_dry", "#D8B080");
    for (float theta = 230.0F; theta <= 470.0F; theta += kInterval) {
        DiagramLine line;
        for (float p = kDiagramBottom; p >= kDiagramTop / 2.0F; p -= kStep)
            line.add(celsius(MET_temp_from_theta(theta, p)), p);
        line.draw();
    }
}

void draw_moist_adiabats()
{
    constexpr float kInterval = 4.0F;  // K at 1000 hPa
    constexpr float kHighest = 200.0F; // hPa; they are dry adiabats above
    use_line("color_moist", "#80B890:s2");
    for (float t = -20.0F; t <= 40.0F; t += kInterval) {
        const float theta_e = MET_theta_e_sat(kelvin(t), 1000.0F);
        DiagramLine line;
        for (float p = kDiagramBottom; p >= kHighest; p -= kStep)
            line.add(celsius(MET_moist_temp(theta_e, p)), p);
        line.draw();
    }
}

void draw_mixing_ratios(float size)
{
    constexpr float kHighest = 550.0F; // hPa; their numbers stand there
    use_text("color_mixing", kMixingLook, size);
    GPH_set_text_align(kAlignCentre, kAlignHalf);
    for (const float w : kMixingRatios) {
        use_line("color_mixing", kMixingLook);
        DiagramLine line;
        for (float p = kDiagramBottom; p >= kHighest; p -= kStep)
            line.add(celsius(MET_dew_from_mix(w, p)), p);
        line.draw();
        const std::vector<float> &points = line.points();
        const size_t n = points.size();
        if (n >= 2 && is_inside(points[n - 2], points[n - 1]))
            number_at(points[n - 2], points[n - 1], 0.0F, size, w < 1.0F ? 1 : 0, w);
    }
}

} // namespace

namespace tyr {

void DiagramLine::add(float t, float p)
{
    float x = kMissing;
    float y = kMissing;
    if (!is_missing(t) && p > 0.0F)
        MAP_ll_to_xy(&x, &y, t, p);
    if (!is_missing(x) && std::isfinite(x) && std::isfinite(y)) {
        stretches_.back().push_back(x);
        stretches_.back().push_back(y);
    } else if (!stretches_.back().empty()) {
        stretches_.emplace_back();
    }
}

void DiagramLine::draw() const
{
    for (const std::vector<float> &points : stretches_)
        if (points.size() >= 4)
            gpolyline(static_cast<int>(points.size() / 2), points.data());
}

void use_line(const char *resource, const char *default_text)
{
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_parse(text_colour(), &attr);
    ATTR_from_resource(resource, default_text, &attr);
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&attr);
}

void use_fill(const char *resource, const char *default_text)
{
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_parse(text_colour(), &attr);
    ATTR_from_resource(resource, default_text, &attr);
    GPH_set_fill_attr(nullptr);
    GPH_set_fill_attr(&attr);
}

void use_text(const char *resource, const char *default_text, float height)
{
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_parse(text_colour(), &attr);
    ATTR_from_resource(resource, default_text, &attr);
    GPH_set_text_attr(nullptr, height);
    GPH_set_text_attr(&attr, height);
}

void draw_diagram_lines(const float viewport[4])
{
    constexpr float kTextSize = 0.018F; // of the diagram's height
    const float size = kTextSize * (viewport[3] - viewport[2]);
    draw_dry_adiabats();
    draw_moist_adiabats();
    draw_mixing_ratios(0.75F * size);
    draw_isotherms(size);
    draw_isobars(size);
}

} // namespace tyr
