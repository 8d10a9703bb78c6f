#include <cmath>

#include "support/world_plot.h"
#include "tyr/plot/sky.h"

namespace {

double area_of(const std::vector<PsPoint> &points)
{
    double sum = 0.0;
    for (size_t i = 0; i < points.size(); ++i) {
        const PsPoint &a = points[i];
        const PsPoint &b = points[(i + 1) % points.size()];
        sum += a[0] * b[1] - b[0] * a[1];
    }
    return std::fabs(sum) / 2.0;
}

} // namespace

TEST(SkySymbol, FillingFollowsTheCode)
{
    // A regular polygon of twelve corners and radius 1 has the area 3: a quarter is 0.75. The two
    // segments of code 7 (150 degrees, five of its sides) are 5/4 - cos 15 * sin 15 * ... = 1.0
    // each: 5 triangles of 1/4 less the triangle of 150 degrees, 1/4.
    const struct {
        const char *codes;
        double filled;
        size_t strokes; ///< circle, lines and fillings
    } cases[] = {
        {"0Cbosx", 0.0, 1}, {"1F", 0.0, 2}, {"2S", 0.75, 2},   {"3", 0.75, 3},
        {"4", 1.5, 2},      {"5", 1.5, 3},  {"6B", 2.25, 2},   {"7", 2.0, 3},
        {"8O", 3.0, 2},     {"9X", 0.0, 3}, {"MQ?- ", 0.0, 2},
    };
    for (const auto &c : cases) {
        for (const char *code = c.codes; *code; ++code) {
            SCOPED_TRACE(*code);
            WorldPlot plot(4);
            EXPECT_EQ(WX_sky_symbol(0.0F, 0.0F, 1.0F, *code), 0);
            const PsPage page = plot.finish();
            double filled = 0.0;
            for (const PsStroke &stroke : page.strokes) {
                filled += stroke.filled ? area_of(stroke.points) : 0.0;
                for (const PsPoint &p : stroke.points) {
                    EXPECT_LE(std::hypot(p[0], p[1]), 1.01);
                }
            }
            EXPECT_EQ(page.strokes.size(), c.strokes);
            EXPECT_NEAR(filled, c.filled, 0.02);
        }
    }
}

TEST(SkySymbol, LinesStandWhereTheTableSays)
{
    const struct {
        char code;
        std::vector<std::string> lines; ///< behind the circle
    } cases[] = {
        {'1', {"line 0.00,1.00 0.00,-1.00"}},
        {'9', {"line -0.71,-0.71 0.71,0.71", "line -0.71,0.71 0.71,-0.71"}},
        {'M', {"line -0.70,-0.70 -0.70,0.70 0.00,0.00 0.70,0.70 0.70,-0.70"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.code);
        WorldPlot plot(4);
        WX_sky_symbol(0.0F, 0.0F, 1.0F, c.code);
        std::vector<std::string> drawn = show_strokes(plot.finish());
        ASSERT_GT(drawn.size(), 1U);
        EXPECT_EQ(drawn[0].substr(0, 20), "line 1.00,0.00 0.87,");
        drawn.erase(drawn.begin());
        EXPECT_EQ(drawn, c.lines);
    }
}

TEST(SkySymbol, QuartersLieOnTheRightSides)
{
    const struct {
        char code;
        PsPoint middle; ///< a point inside, in units of the radius
        PsPoint empty;  ///< one outside
    } cases[] = {
        {'2', {0.4, 0.4}, {-0.4, 0.4}},
        {'4', {0.5, 0.0}, {-0.5, 0.0}},
        {'6', {0.4, 0.4}, {-0.4, 0.4}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.code);
        WorldPlot plot(4);
        WX_sky_symbol(0.0F, 0.0F, 1.0F, c.code);
        for (const PsStroke &stroke : plot.finish().strokes) {
            if (!stroke.filled) {
                continue;
            }
            // even-odd rule
            const auto holds = [&stroke](const PsPoint &q) {
                bool inside = false;
                const auto &points = stroke.points;
                for (size_t i = 0, k = points.size() - 1; i < points.size(); k = i++) {
                    const PsPoint &a = points[i];
                    const PsPoint &b = points[k];
                    if ((a[1] > q[1]) != (b[1] > q[1]) &&
                        q[0] < (b[0] - a[0]) * (q[1] - a[1]) / (b[1] - a[1]) + a[0]) {
                        inside = !inside;
                    }
                }
                return inside;
            };
            EXPECT_TRUE(holds(c.middle));
            EXPECT_FALSE(holds(c.empty));
        }
    }
}
