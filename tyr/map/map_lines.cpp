#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_lines_private.h"
#include "tyr/map/map_sides_private.h"

using namespace tyr;

namespace {

constexpr float kWestEnd = -180.0F;
constexpr float kLatStep = 2.5F;   ///< along a circle of latitude, degrees
constexpr float kFirstStep = 5.0F; ///< and its first step
constexpr int kCircleSteps = 143;  ///< from there to 180
constexpr float kLonStep = 2.5F;   ///< most along a meridian
constexpr float kJump = 50.0F;     ///< plot units in x: over the side of the map
constexpr float kTurn = 360.0F;
constexpr float kMostSteps = 1e7F;   ///< some seconds
constexpr float kLabelInset = 0.01F; ///< of the window width
constexpr float kCrossArm = 0.1F;    ///< degrees
constexpr float kMostArm = 5.0F;     ///< plot units
constexpr size_t kLabelRoom = 32;

struct Point {
    float x = kMissing;
    float y = kMissing;

    bool is_shown() const { return !is_missing(x) && !is_missing(y); }
};

Point project(float lat, float lon)
{
    Point p;
    MAP_ll_to_xy(&p.x, &p.y, lat, lon);
    return p;
}

struct Window {
    float x0, x1, y0, y1;

    bool holds(const Point &p) const { return p.x > x0 && p.x < x1 && p.y > y0 && p.y < y1; }
    /// False of a step that lies beyond one side.
    bool may_hold(const Point &a, const Point &b) const
    {
        return std::min(a.x, b.x) <= x1 && std::max(a.x, b.x) >= x0 && std::min(a.y, b.y) <= y1 &&
               std::max(a.y, b.y) >= y0;
    }
};

Window current_window()
{
    std::array<float, 4> w;
    DOM_get_window(w.data());
    return {w[0], w[1], w[2], w[3]};
}

using Label = std::array<char, kLabelRoom>;

Label make_label(float value, const char *zero, char positive, char negative)
{
    Label label = {};
    if (value == 0.0F) {
        std::snprintf(label.data(), label.size(), "%s", zero);
    } else {
        std::snprintf(label.data(), label.size(), "%1.0f%c", static_cast<double>(std::fabs(value)),
                      value > 0.0F ? positive : negative);
    }
    return label;
}

void draw_label(const Point &at, const Label &label)
{
    const std::array<float, 2> place = {at.x, at.y};
    gtext(place.data(), label.data());
}

/// A line under way, step by step; what lies off the window is left out.
class Polyline {
  public:
    explicit Polyline(const Window &window) : window_(window) {}
    ~Polyline() { flush(); }
    Polyline(const Polyline &) = delete;
    Polyline &operator=(const Polyline &) = delete;

    void step(const Point &a, const Point &b)
    {
        if (!window_.may_hold(a, b)) {
            flush();
            return;
        }
        if (points_.empty() || a.x != points_[points_.size() - 2] || a.y != points_.back()) {
            flush();
            points_ = {a.x, a.y};
        }
        points_.insert(points_.end(), {b.x, b.y});
    }

  private:
    void flush()
    {
        if (!points_.empty()) {
            gpolyline(static_cast<int>(points_.size() / 2), points_.data());
            points_.clear();
        }
    }

    Window window_;
    std::vector<float> points_;
};

/// A coordinate at an edge, and how far inside it the label stands.
struct Edge {
    float at, inset;
};

/// Where a step that crosses an edge in its first coordinate stands inside of it; false if it
/// doesn't cross.
bool crossing(float u1, float v1, float u2, float v2, const Edge &edge, float *v)
{
    if (u1 == u2) {
        return false;
    }
    const float part = (edge.at - u1) / (u2 - u1);
    if (!(part >= 0.0F && part < 1.0F)) {
        return false;
    }
    *v = v1 + (edge.at + edge.inset - u1) / (u2 - u1) * (v2 - v1);
    return true;
}

/// First place of the labels along a line, between the lines that cross it.
float first_repeat(int repeat, int limit, float interval)
{
    const int start = repeat * (-limit / repeat) - repeat / 2;
    const float lines = std::trunc(static_cast<float>(start) / interval);
    return lines * interval - interval / 2.0F;
}

class LineDrawer {
  public:
    explicit LineDrawer(const MapLines &lines)
        : lines_(lines), window_(current_window()), proj_(DOM_get_proj()),
          inset_(kLabelInset * (window_.x1 - window_.x0))
    {
    }

    void draw_latitudes()
    {
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        for (int i = 0; value(i, lines_.dlat) < 90.0F; ++i) {
            draw_latitude(value(i, lines_.dlat));
        }
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        for (int i = -1; value(i, lines_.dlat) > -90.0F; --i) {
            draw_latitude(value(i, lines_.dlat));
        }
    }

    void draw_longitudes()
    {
        GPH_set_text_align(kAlignCentre, kAlignBase);
        for (int i = 0; value(i, lines_.dlon) <= 180.0F; ++i) {
            draw_longitude(value(i, lines_.dlon));
        }
        GPH_set_text_align(kAlignCentre, kAlignBase);
        for (int i = -1; value(i, lines_.dlon) > kWestEnd; --i) {
            draw_longitude(value(i, lines_.dlon));
        }
    }

    void draw_crosses() const
    {
        const int n = lines_.crosses;
        for (int lat = -79 / n * n; lat < 80; lat += n) {
            for (int lon = -179 / n * n; lon <= 180; lon += n) {
                const float a = static_cast<float>(lat);
                const float b = static_cast<float>(lon);
                draw_arm(project(a, b - kCrossArm), project(a, b + kCrossArm));
                draw_arm(project(a - kCrossArm, b), project(a + kCrossArm, b));
            }
        }
    }

  private:
    static float value(int i, float interval) { return static_cast<float>(i) * interval; }
    float repeat(int i) const { return value(i, static_cast<float>(lines_.repeat)); }

    void draw_latitude(float lat) const
    {
        const Label label = make_label(lat, "EQ", 'N', 'S');
        {
            Polyline line(window_);
            Point a = project(lat, kWestEnd);
            float old_lon = kWestEnd;
            for (int i = 0; i < kCircleSteps; ++i) {
                const float lon = kWestEnd + kFirstStep + value(i, kLatStep);
                const Point b = project(lat, lon);
                if (a.is_shown() && b.is_shown() && !crosses_cone_cut(old_lon, lon)) {
                    draw_step(line, a, b, label);
                }
                a = b;
                old_lon = lon;
            }
        }
        if (lines_.repeat > 0) {
            GPH_set_text_align(kAlignCentre, kAlignHalf);
            const float first = first_repeat(lines_.repeat, 179, lines_.dlon);
            for (int i = 0; first + repeat(i) <= 180.0F; ++i) {
                label_inside(project(lat, first + repeat(i)), label);
            }
        }
    }

    /// A step of a circle of latitude, which may leave the map at its side and come in again.
    void draw_step(Polyline &line, Point a, Point b, const Label &label) const
    {
        const float width = proj_ == kProjMollweide ? 0.0F : tyr::projection_wrap_width(proj_, a.y);
        const float d = b.x - a.x;
        if (width != 0.0F && std::fabs(d) > kJump) {
            const float side = d < 0.0F ? 1.0F : -1.0F;
            line.step(a, {b.x + side * width, b.y});
            a.x -= side * width;
        }
        line.step(a, b);
        Point at;
        if (crossing(a.x, a.y, b.x, b.y, {window_.x0, inset_}, &at.y)) {
            at.x = window_.x0 + inset_;
            label_inside(at, label);
        }
    }

    void draw_longitude(float lon) const
    {
        const Label label = lon == 180.0F ? Label{"DL"} : make_label(lon, "PM", 'E', 'W');
        const bool is_open =
            proj_ == kProjPolar || proj_ == kProjLambert || proj_ == kProjSatellite;
        const float end = is_open ? std::trunc(89.0F / lines_.dlat) * lines_.dlat : 90.0F;
        const int parts = static_cast<int>(std::ceil(lines_.dlat / kLonStep));
        const float step = lines_.dlat / static_cast<float>(parts);
        {
            Polyline line(window_);
            Point a = project(-end, lon);
            for (int i = 1; - end + value(i, step) <= end + step / 2.0F; ++i) {
                const Point b = project(std::min(-end + value(i, step), end), lon);
                if (a.is_shown() && b.is_shown()) {
                    line.step(a, b);
                    label_lower_edge(a, b, label);
                }
                a = b;
            }
        }
        if (lines_.repeat > 0) {
            GPH_set_text_align(kAlignCentre, kAlignHalf);
            const float first = first_repeat(lines_.repeat, 89, lines_.dlat);
            for (int i = 0; first + repeat(i) < 90.0F; ++i) {
                label_inside(project(first + repeat(i), lon), label);
            }
        }
    }

    void label_lower_edge(const Point &a, const Point &b, const Label &label) const
    {
        Point at;
        if (crossing(a.y, a.x, b.y, b.x, {window_.y0, inset_}, &at.x)) {
            at.y = window_.y0 + inset_;
            label_inside(at, label);
        }
    }

    void label_inside(const Point &at, const Label &label) const
    {
        if (at.is_shown() && window_.holds(at)) {
            draw_label(at, label);
        }
    }

    void draw_arm(const Point &a, const Point &b) const
    {
        if (a.is_shown() && b.is_shown() && std::fabs(a.x - b.x) < kMostArm) {
            Polyline(window_).step(a, b);
        }
    }

    MapLines lines_;
    Window window_;
    int proj_;
    float inset_;
};

/// Whether the steps of all lines end before the user gives up.
bool is_drawable(const MapLines &lines)
{
    const float latitudes = 180.0F / lines.dlat;
    const float longitudes = 360.0F / lines.dlon;
    const float steps =
        latitudes * 360.0F / kLatStep + longitudes * std::max(latitudes, 180.0F / kLonStep);
    const auto is_angle = [](float interval) { return interval > 0.0F && interval <= kTurn; };
    return is_angle(lines.dlat) && is_angle(lines.dlon) && steps < kMostSteps;
}

} // namespace

bool tyr::draw_map_lines(const MapLines &lines)
{
    if (!is_drawable(lines)) {
        return false;
    }
    gsel_norm_tran(2);
    LineDrawer drawer(lines);
    drawer.draw_latitudes();
    drawer.draw_longitudes();
    if (lines.crosses > 0) {
        drawer.draw_crosses();
    }
    return true;
}
