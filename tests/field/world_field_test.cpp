// Fields on maps of the world, read back from paper in plot units: what the sides, the poles and
// the limb of a map do to them.

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/area.h"
#include "tyr/plot/view.h"

namespace {

constexpr double kRadius = 63.7122; // of the earth, plot units
constexpr double kPi = 3.14159265358979;
using Value = std::function<double(double lat, double lon)>;

/// A field on a latitude-longitude grid: all rows, columns from -180.
class WorldGrid {
  public:
    WorldGrid(double degrees, bool repeats_first, const Value &value)
    {
        GRD_init(&g);
        g.domain.proj = kProjLatLon;
        g.domain.dx = g.domain.dy = static_cast<float>(degrees);
        g.domain.nx = static_cast<int>(360.0 / degrees) + (repeats_first ? 1 : 0);
        g.domain.ny = static_cast<int>(180.0 / degrees) + 1;
        g.domain.clat = 0.0F;
        g.domain.clon = repeats_first ? 0.0F : static_cast<float>(-degrees / 2.0);
        GRD_alloc(&g);
        for (int row = 0; row < g.domain.ny; ++row)
            for (int column = 0; column < g.domain.nx; ++column)
                g.values[row * g.domain.nx + column] =
                    static_cast<float>(value(90.0 - row * degrees, -180.0 + column * degrees));
    }
    ~WorldGrid() { GRD_free(&g); }
    WorldGrid(const WorldGrid &) = delete;
    WorldGrid &operator=(const WorldGrid &) = delete;
    GridRec g;
};

DomainRec map_of(int proj, float clat, float clon)
{
    DomainRec d;
    DOM_init(&d);
    d.proj = proj;
    d.clat = clat;
    d.clon = clon;
    d.nx = 101;
    d.ny = 61;
    d.dx = d.dy = proj == kProjLatLon ? 3.6F : proj == kProjMollweide ? 3.0F : 2.4F;
    return d;
}

/// A page of a map, drawn by `draw`, in plot units.
PsPage drawn(const DomainRec &domain, const std::function<void()> &draw)
{
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    for (const char *name : {"plot_param", "plot_format", "con_interval", "con_base", "color_fill",
                             "color_cont", "color_clabel", "color_label"})
        RES_put(name, nullptr);
    PLT_set_margins(0.05F, 0.05F, 0.05F, 0.05F);
    PlotSession session(DOM_aspect(&domain));
    EXPECT_EQ(session.begun(), 0);
    PLT_set_domain(&domain);
    float window[4];
    float view[4];
    DOM_get_window(window);
    PLT_get_viewport(view);
    draw();
    PsPage page = session.finish();
    EXPECT_EQ(page.error, "");
    const auto place = [&](double at, int k) {
        return window[k] + (at - view[k]) / (view[k + 1] - view[k]) * (window[k + 1] - window[k]);
    };
    for (PsStroke &s : page.strokes)
        for (PsPoint &p : s.points)
            p = {place(p[0], 0), place(p[1], 2)};
    return page;
}

PsPage streams(const DomainRec &domain, const Value &east, const Value &north)
{
    WorldGrid u(10.0, true, east);
    WorldGrid v(10.0, true, north);
    return drawn(domain, [&] {
        VECT_set_kind(kVectStreamlines, "strm");
        VECT_setup(0, -1, &u.g, &v.g, nullptr, nullptr);
        VECT_draw(&u.g, &v.g);
    });
}

/// The lines of a page; heads' strokes, of two points, left out.
std::vector<std::vector<PsPoint>> lines_of(const PsPage &page)
{
    std::vector<std::vector<PsPoint>> lines;
    for (const PsStroke &s : page.strokes)
        if (s.text < 0 && !s.filled && s.points.size() > 2)
            lines.push_back(s.points);
    return lines;
}

/// A made flow with waves and eddies.
double waves_east(double lat, double lon)
{
    return 25.0 * std::pow(std::cos(lat * kPi / 180.0), 2) + 8.0 * std::sin(3 * lon * kPi / 180.0);
}
double waves_north(double lat, double lon)
{
    return 12.0 * std::cos(3 * lon * kPi / 180.0) * std::cos(lat * kPi / 180.0);
}

double area_of(const std::vector<PsPoint> &p)
{
    double sum = 0.0;
    for (size_t i = 0; i < p.size(); ++i) {
        const PsPoint &q = p[(i + 1) % p.size()];
        sum += p[i][0] * q[1] - q[0] * p[i][1];
    }
    return std::fabs(sum) / 2.0;
}

/// What the meridians at the sides of a map enclose.
double outline_area(const DomainRec &domain)
{
    DOM_set(&domain);
    std::vector<PsPoint> outline;
    for (const float turn : {179.99F, -179.99F})
        for (int lat = -89; lat <= 89; ++lat) {
            float x = 0.0F, y = 0.0F;
            MAP_ll_to_xy(&x, &y, static_cast<float>(turn > 0 ? lat : -lat), domain.clon + turn);
            outline.push_back({x, y});
        }
    return area_of(outline);
}

PsPage contoured(const DomainRec &domain, GridRec *grid, const char *format, const char *interval)
{
    return drawn(domain, [&] {
        RES_put("plot_format", format);
        RES_put("con_interval", interval);
        CONT_setup(0, -1, grid, nullptr, nullptr);
        CONT_draw(grid);
    });
}

} // namespace

TEST(WorldField, StreamlinesStayOnTheGlobeAndGoOnAcrossIt)
{
    const struct {
        const char *name;
        int proj;
        double width; ///< half axis of the globe in x
    } cases[] = {{"Mollweide", kProjMollweide, 2.0 * kRadius},
                 {"orthographic", kProjOrtho, kRadius},
                 {"satellite", kProjSatellite, kRadius}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const auto lines = lines_of(streams(map_of(c.proj, 0, -90), waves_east, waves_north));
        double longest = 0.0;
        for (const auto &line : lines) {
            double length = 0.0;
            for (size_t i = 0; i < line.size(); ++i) {
                const double x =
                    c.proj == kProjMollweide ? line[i][0] / c.width : line[i][0] / kRadius;
                EXPECT_LT(std::hypot(x, line[i][1] / kRadius), 1.02)
                    << "the limb of the satellite view is 1.5 % farther out";
                length += i > 0
                              ? std::hypot(line[i][0] - line[i - 1][0], line[i][1] - line[i - 1][1])
                              : 0.0;
            }
            longest = std::max(longest, length);
        }
        EXPECT_GT(lines.size(), 20U);
        EXPECT_GT(longest, kRadius);
    }
}

TEST(WorldField, StreamlinesAreEvenOnThePicture)
{
    constexpr int kCells = 5; // each way
    const struct {
        const char *name;
        int proj;
        float clat, clon;
        double reach; ///< cells count up to here, in x and y
    } cases[] = {{"polar stereographic", kProjPolar, 90, -90, 60},
                 {"orthographic", kProjOrtho, 0, -90, 42},
                 {"Mollweide", kProjMollweide, 0, -90, 42},
                 {"Mercator", kProjMercator, 0, 0, 60}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const auto uniform = [](double lat, double) { return std::fabs(lat) > 89.0 ? 0.0 : 10.0; };
        const PsPage page =
            streams(map_of(c.proj, c.clat, c.clon), uniform, [](double, double) { return 0.0; });
        std::map<std::pair<int, int>, double> cells;
        for (int i = 0; i < kCells * kCells; ++i)
            cells[{i / kCells, i % kCells}] = 0.0;
        double sum = 0.0;
        for (const auto &line : lines_of(page))
            for (size_t i = 1; i < line.size(); ++i) {
                const double x = (line[i][0] + c.reach) / (2.0 * c.reach);
                const double y = (line[i][1] + c.reach) / (2.0 * c.reach);
                const auto cell = cells.find({static_cast<int>(std::floor(x * kCells)),
                                              static_cast<int>(std::floor(y * kCells))});
                if (cell == cells.end())
                    continue;
                const double length =
                    std::hypot(line[i][0] - line[i - 1][0], line[i][1] - line[i - 1][1]);
                cell->second += length;
                sum += length;
            }
        const double mean = sum / (kCells * kCells);
        ASSERT_GT(mean, 0.0);
        for (const auto &[cell, length] : cells) {
            EXPECT_GT(length, 0.25 * mean) << cell.first << "," << cell.second;
            EXPECT_LT(length, 2.0 * mean) << cell.first << "," << cell.second;
        }
    }
}

TEST(WorldField, StreamlinesFollowParallelsAndMeridians)
{
    const struct {
        const char *name;
        int proj;
        float clat, clon;
        double east, north;
    } cases[] = {{"latitude and longitude, west", kProjLatLon, 0, 180, 10, 0},
                 {"Mercator, west", kProjMercator, 0, 180, 10, 0},
                 {"Mollweide, west", kProjMollweide, 0, -90, 10, 0},
                 {"Mollweide, south", kProjMollweide, 0, -90, 0, 10},
                 {"orthographic, west", kProjOrtho, 30, -90, 10, 0},
                 {"orthographic, south", kProjOrtho, 30, -90, 0, 10},
                 {"satellite, south", kProjSatellite, 0, -90, 0, 10},
                 {"polar, west", kProjPolar, 90, -90, 10, 0},
                 {"Lambert, south", kProjLambert, 40, -90, 0, 10}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const DomainRec domain = map_of(c.proj, c.clat, c.clon);
        const auto lines = lines_of(streams(
            domain, [&c](double, double) { return c.east; },
            [&c](double, double) { return c.north; }));
        DOM_set(&domain);
        ASSERT_GT(lines.size(), 10U);
        int checked = 0;
        for (const auto &line : lines) {
            float first_lat = kMissing, first_lon = kMissing;
            for (const PsPoint &p : line) {
                float lat = 0.0F, lon = 0.0F;
                const bool known = MAP_xy_to_ll(&lat, &lon, static_cast<float>(p[0]),
                                                static_cast<float>(p[1])) != 0;
                // at the limb a thousandth of the page is a degree, at the pole longitudes meet
                if (!known || std::fabs(lat) > 60.0F || std::hypot(p[0], p[1]) > 0.8 * kRadius)
                    continue;
                first_lat = is_missing(first_lat) ? lat : first_lat;
                first_lon = is_missing(first_lon) ? lon : first_lon;
                const double turn = std::remainder(lon - first_lon, 360.0);
                EXPECT_LT(std::fabs(c.north > 0 ? turn : lat - first_lat), 1.5)
                    << lat << " " << lon;
                ++checked;
            }
        }
        EXPECT_GT(checked, 50);
    }
}

TEST(WorldField, MarksAndSignsAtTheSeamAreDrawnOnce)
{
    const auto bump = [](double lat, double lon) {
        return 100.0 * std::cos(lat * kPi / 180.0) * (1.0 - std::cos(lon * kPi / 180.0));
    };
    for (const bool repeats : {false, true}) {
        SCOPED_TRACE(repeats);
        WorldGrid height(10.0, repeats, bump);
        const PsPage page = contoured(map_of(kProjLatLon, 0, 180), &height.g, "ln:lab=23", "20");
        const auto highs = std::count_if(page.texts.begin(), page.texts.end(),
                                         [](const PsText &t) { return t.text == "H"; });
        EXPECT_EQ(highs, 1);
        WorldGrid wind(30.0, repeats,
                       [](double lat, double) { return std::fabs(lat) > 89.0 ? 0.0 : 10.0; });
        WorldGrid calm(30.0, repeats, [](double, double) { return 0.0; });
        const PsPage arrows = drawn(map_of(kProjLatLon, 0, 180), [&] {
            VECT_set_kind(kVectArrows, "vect");
            VECT_setup(0, -1, &wind.g, &calm.g, nullptr, nullptr);
            VECT_draw(&wind.g, &calm.g);
        });
        EXPECT_EQ(arrows.strokes.size(), 12U * 5U * 3U); // points, three strokes an arrow
    }
}

TEST(WorldField, LinesGoOnAcrossTheSeam)
{
    // the contour of 5 is the equator, wherever the columns begin
    for (const bool repeats : {false, true}) {
        for (const int proj : {int{kProjLatLon}, int{kProjMollweide}, int{kProjOrtho}}) {
            SCOPED_TRACE(proj);
            WorldGrid g(10.0, repeats, [](double lat, double) { return 5.0 + lat / 100.0; });
            const DomainRec domain = map_of(proj, 0, 180);
            const PsPage page = contoured(domain, &g.g, "ln:lab=0", "5");
            DOM_set(&domain);
            float window[4];
            DOM_get_window(window);
            const auto shown = [&window](const PsPoint &p) {
                return std::clamp(p[0], double{window[0]}, double{window[1]});
            };
            double length = 0.0;
            for (const PsStroke &s : page.strokes)
                for (size_t i = 1; i < s.points.size(); ++i)
                    length += std::fabs(shown(s.points[i]) - shown(s.points[i - 1]));
            const double expected = proj == kProjLatLon      ? 360.0
                                    : proj == kProjMollweide ? 4.0 * kRadius
                                                             : 2.0 * kRadius;
            EXPECT_NEAR(length, expected, expected * 0.005);
        }
    }
}

TEST(WorldField, BandsFillTheDiscUpToTheLimb)
{
    const auto value = [](double lat, double lon) {
        return 50.0 + 40.0 * std::sin(lat * kPi / 180.0) * std::cos(2.0 * lon * kPi / 180.0);
    };
    const struct {
        const char *name;
        int proj;
        float clat;
        double area;
        double within;
    } cases[] = {
        {"orthographic", kProjOrtho, 0, kPi * kRadius * kRadius, 0.01},
        {"orthographic, aslant", kProjOrtho, 35, kPi * kRadius * kRadius, 0.01},
        {"Mollweide", kProjMollweide, 0, outline_area(map_of(kProjMollweide, 0, -90)), 0.002}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        WorldGrid g(5.0, false, value);
        DomainRec domain = map_of(c.proj, c.clat, -90);
        domain.dy = domain.dx = 3.0F; // the whole disc
        const PsPage page = contoured(domain, &g.g, "cf:lab=0", "7");
        double area = 0.0;
        for (const PsStroke &s : page.strokes)
            area += s.filled ? area_of(s.points) : 0.0;
        EXPECT_NEAR(area / c.area, 1.0, c.within);
    }
}
