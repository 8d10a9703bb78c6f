// Streamlines on paper, read back: their strokes in plot units of a linear plot.

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "support/world_plot.h"
#include "tyr/field/vector_private.h"
#include "tyr/gks/gks.h"
#include "tyr/grid/grid.h"
#include "tyr/plot/levels.h"

namespace {

constexpr int kPoints = 41;
using Speed = std::function<float(float x, float y)>;

struct WindGrids {
    GridRec u, v;
    WindGrids(const Speed &east, const Speed &north)
    {
        fill(&u, east);
        fill(&v, north);
    }
    ~WindGrids()
    {
        GRD_free(&u);
        GRD_free(&v);
    }
    WindGrids(const WindGrids &) = delete;
    WindGrids &operator=(const WindGrids &) = delete;

  private:
    static void fill(GridRec *g, const Speed &speed)
    {
        GRD_init(g);
        DOM_get(&g->domain);
        g->domain.nx = g->domain.ny = kPoints;
        g->domain.dx = g->domain.dy = 1.0F;
        GRD_alloc(g);
        for (int row = 0; row < kPoints; ++row)
            for (int column = 0; column < kPoints; ++column)
                g->values[row * kPoints + column] =
                    speed(static_cast<float>(column) - 20.0F, 20.0F - static_cast<float>(row));
    }
};

/// Streamlines without heads, in grid units: the plot's origin is the middle of the grid.
void prepare()
{
    CONT_reset(); // speeds have no colours of their own
    tyr::vectors() = tyr::VectorState();
    tyr::vectors().spacing = 0.0F;
    tyr::vectors().attr.color = 1;
    const float window[4] = {0.0F, kPoints - 1, 0.0F, kPoints - 1};
    gset_window(2, window);
    gsel_norm_tran(2);
}

/// The lines drawn, steps that join put together. A head's strokes count as lines of two points.
std::vector<std::vector<PsPoint>> lines_of(WorldPlot &plot)
{
    const PsPage page = plot.finish();
    EXPECT_EQ(page.error, "");
    std::vector<std::vector<PsPoint>> lines;
    for (const PsStroke &s : page.strokes) {
        if (s.text >= 0 || s.filled || s.points.size() < 2)
            continue;
        const PsPoint &from = s.points.front();
        const bool joins = !lines.empty() && std::hypot(lines.back().back()[0] - from[0],
                                                        lines.back().back()[1] - from[1]) < 0.05;
        if (!joins)
            lines.push_back({from});
        lines.back().insert(lines.back().end(), s.points.begin() + 1, s.points.end());
    }
    return lines;
}

double side(const PsPoint &a, const PsPoint &b, const PsPoint &c)
{
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

/// Two segments cross by more than the paper's rounding: both ends of both stand clear.
bool cross(const PsPoint &a, const PsPoint &b, const PsPoint &c, const PsPoint &d)
{
    constexpr double kClear = 0.03; // a step of the paper's grid, in grid lengths
    const double ab = std::hypot(b[0] - a[0], b[1] - a[1]);
    const double cd = std::hypot(d[0] - c[0], d[1] - c[1]);
    const double s1 = side(a, b, c) / ab, s2 = side(a, b, d) / ab;
    const double s3 = side(c, d, a) / cd, s4 = side(c, d, b) / cd;
    return s1 * s2 < 0 && s3 * s4 < 0 && std::fabs(s1) > kClear && std::fabs(s2) > kClear &&
           std::fabs(s3) > kClear && std::fabs(s4) > kClear;
}

} // namespace

TEST(Streamline, SolidRotationClosesOnItsCircle)
{
    for (int radius : {5, 10, 15}) {
        SCOPED_TRACE(radius);
        WorldPlot plot(40);
        ASSERT_TRUE(plot.opened());
        const WindGrids w([](float, float y) { return -y; }, [](float x, float) { return x; });
        prepare();
        tyr::vectors().base = 100.0F;
        GridRec u = w.u, v = w.v;
        // the grid point is right of the centre; a turn is 8 pi radius steps
        const float steps = std::round(8.0F * 3.14159265F * static_cast<float>(radius));
        VECT_trace(steps, &u, &v, 20 + radius, 20);
        const auto lines = lines_of(plot);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NEAR(static_cast<double>(lines[0].size()), steps + 1.0, 0.1);
        for (const PsPoint &p : lines[0])
            EXPECT_NEAR(std::hypot(p[0], p[1]), radius, 0.06) << p[0] << "," << p[1];
        EXPECT_NEAR(lines[0].back()[0], radius, 0.06);
        EXPECT_NEAR(lines[0].back()[1], 0.0, 0.2); // steps are whole
    }
}

TEST(Streamline, UniformWindsAreStraightAndFillTheGrid)
{
    const struct {
        const char *name;
        float u, v;
    } cases[] = {{"from the west", 10.0F, 0.0F},
                 {"from the east", -10.0F, 0.0F},
                 {"from the south", 0.0F, 10.0F},
                 {"from the north", 0.0F, -10.0F},
                 {"from the southwest", 10.0F, 5.0F}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        WorldPlot plot(40);
        ASSERT_TRUE(plot.opened());
        const WindGrids w([&c](float, float) { return c.u; }, [&c](float, float) { return c.v; });
        prepare();
        GridRec u = w.u, v = w.v;
        tyr::draw_streamlines(&u, &v);
        const auto lines = lines_of(plot);
        ASSERT_GT(lines.size(), 20U);
        double length = 0.0;
        for (const auto &line : lines) {
            const double along = std::hypot(c.u, c.v);
            for (const PsPoint &p : line) {
                const double x = p[0] - line[0][0], y = p[1] - line[0][1];
                ASSERT_NEAR((x * c.v - y * c.u) / along, 0.0, 0.05);
                length = std::max(length, (x * c.u + y * c.v) / along);
            }
        }
        EXPECT_GT(length, 38.0) << "one line goes through the whole grid";
    }
}

TEST(Streamline, NoneCrossesItself)
{
    const struct {
        const char *name;
        Speed u, v;
    } cases[] = {{"spiral in", [](float x, float y) { return -y - 0.1F * x; },
                  [](float x, float y) { return x - 0.1F * y; }},
                 {"waves", [](float, float) { return 10.0F; },
                  [](float x, float) { return 8.0F * std::cos(x * 0.4F); }},
                 {"four eddies",
                  [](float x, float y) { return std::sin(x * 0.15F) * std::cos(y * 0.15F); },
                  [](float x, float y) { return -std::cos(x * 0.15F) * std::sin(y * 0.15F); }}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        WorldPlot plot(40);
        ASSERT_TRUE(plot.opened());
        const WindGrids w(c.u, c.v);
        prepare();
        GridRec u = w.u, v = w.v;
        tyr::draw_streamlines(&u, &v);
        const auto lines = lines_of(plot);
        ASSERT_GT(lines.size(), 10U);
        int crossings = 0;
        for (const auto &line : lines)
            for (size_t i = 0; i + 1 < line.size(); ++i)
                for (size_t j = i + 2; j + 1 < line.size(); ++j)
                    crossings += cross(line[i], line[i + 1], line[j], line[j + 1]) ? 1 : 0;
        EXPECT_EQ(crossings, 0);
    }
}
