#include <array>
#include <cmath>
#include <limits>

#include "support/capture.h"
#include "support/warm_sounding.h"
#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/field/hodograph.h"
#include "tyr/field/sounding_plot.h"
#include "tyr/geo/projection.h"

using namespace tyr;

namespace {

constexpr float M = kMissing;
constexpr std::array<float, 4> kArea = {0.1F, 0.5F, 0.1F, 0.6F};

bool is_near(double a, double b)
{
    return std::fabs(a - b) < 0.004;
}

// Strokes of one colour that belong to no text.
std::vector<PsStroke> of_colour(const PsPage &page, double red, double green, double blue)
{
    std::vector<PsStroke> found;
    for (const PsStroke &s : page.strokes)
        if (s.text < 0 && is_near(s.rgb[0], red) && is_near(s.rgb[1], green) &&
            is_near(s.rgb[2], blue))
            found.push_back(s);
    return found;
}

// Where a skew-T puts a point: 45 degrees of slope for isotherms, pressure by its logarithm.
PsPoint skewed(double t, double p)
{
    const double width = kArea[1] - kArea[0];
    const double height = kArea[3] - kArea[2];
    const double up = std::log(1050.0 / p) / std::log(1050.0 / 100.0) * height;
    return {kArea[0] + (t + 40.0) / 85.0 * width + up, kArea[2] + up};
}

void expect_on(const PsStroke &stroke, const PsPoint &place, const std::string &what)
{
    double nearest = 1.0;
    for (const PsPoint &p : stroke.points)
        nearest = std::min(nearest, std::hypot(p[0] - place[0], p[1] - place[1]));
    EXPECT_LT(nearest, 0.002) << what;
}

struct ColourLook {
    const char *resource;
    const char *look;
};

PsPage draw(int proj, const std::vector<SoundLevel> &sound, const ParcelPath *path, int *result)
{
    constexpr ColourLook kLooks[] = {{"color_temp", "#FF0000:w1"}, {"color_dewp", "#00FF00:w1"}};
    for (const ColourLook &c : kLooks)
        RES_put(c.resource, c.look);
    PlotSession plot;
    *result =
        THERM_plot_diagram(proj, kArea.data(), sound.data(), static_cast<int>(sound.size()), path);
    return plot.finish();
}

} // namespace

TEST(SoundingPlot, CurvesOfASkewTStandWhereTheyShould)
{
    int result = -1;
    const std::vector<SoundLevel> sound = warm_sounding();
    const PsPage page = draw(kProjSkewT, sound, nullptr, &result);
    ASSERT_EQ(page.error, "");
    EXPECT_EQ(result, 0);
    const std::vector<PsStroke> temperature = of_colour(page, 1, 0, 0);
    const std::vector<PsStroke> dew_point = of_colour(page, 0, 1, 0);
    ASSERT_EQ(temperature.size(), 1U);
    ASSERT_EQ(dew_point.size(), 1U);
    for (const SoundLevel &level : sound) {
        expect_on(temperature[0], skewed(level.t, level.p), "t at " + std::to_string(level.p));
        expect_on(dew_point[0], skewed(level.td, level.p), "td at " + std::to_string(level.p));
    }
}

TEST(SoundingPlot, NumbersNameTheLinesTheyStandAt)
{
    int result = -1;
    const PsPage page = draw(kProjSkewT, {}, nullptr, &result);
    EXPECT_EQ(result, 0);
    const struct {
        const char *text;
        double x, y; // of the line's end; Missing: not looked at
    } cases[] = {
        {"500", M, skewed(0, 500)[1]},    {"850", M, skewed(0, 850)[1]},
        {"100", M, skewed(0, 100)[1]},    {"0", skewed(0, 1050)[0], M},
        {"-20", skewed(-20, 1050)[0], M}, {"30", skewed(30, 1050)[0], M},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        int found = 0;
        for (const PsText &text : page.texts)
            if (text.text == c.text) {
                ++found;
                EXPECT_TRUE(c.x == M || is_near(text.x, c.x)) << text.x;
                EXPECT_TRUE(c.y == M || is_near(text.y, c.y)) << text.y;
            }
        EXPECT_EQ(found, 1);
    }
}

TEST(SoundingPlot, ATephigramHasStraightDryAdiabatsAtRightAnglesToIsotherms)
{
    for (const int proj : {int{kProjTephigram}, int{kProjRotatedTephigram}}) {
        SCOPED_TRACE(proj);
        int result = -1;
        draw(proj, {}, nullptr, &result);
        EXPECT_EQ(result, 0); // its domain stays current
        std::array<float, 4> w{};
        DOM_get_window(w.data());
        const auto place = [&w](float t, float p) {
            float x = 0;
            float y = 0;
            MAP_ll_to_xy(&x, &y, t, p);
            return PsPoint{(x - w[0]) / (w[1] - w[0]) * 0.4, (y - w[2]) / (w[3] - w[2]) * 0.5};
        };
        // 300 K at 1000, 700 and 400 hPa; 0 C at 700 hPa and 400 hPa
        const PsPoint a = place(26.85F, 1000.0F);
        const PsPoint b = place(static_cast<float>(300 * std::pow(0.7, 0.286) - 273.15), 700.0F);
        const PsPoint c = place(static_cast<float>(300 * std::pow(0.4, 0.286) - 273.15), 400.0F);
        const PsPoint d = place(0.0F, 700.0F);
        const PsPoint e = place(0.0F, 400.0F);
        const double cross = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
        EXPECT_NEAR(cross, 0.0, 1e-4);
        const double dot = (c[0] - a[0]) * (e[0] - d[0]) + (c[1] - a[1]) * (e[1] - d[1]);
        EXPECT_NEAR(dot, 0.0, 1e-4);
    }
}

TEST(SoundingPlot, BarbsStandAtTheHeightOfTheirPressure)
{
    PlotSession plot;
    const std::vector<SoundLevel> sound = warm_sounding();
    THERM_plot_diagram(kProjSkewT, kArea.data(), nullptr, 0, nullptr);
    RES_put("color_wind", "#0000FF");
    const SoundLevel winds[] = {{1000, 0, M, M, 270, 20},
                                {999, 9, M, M, 270, 20}, // too near
                                {700, 3000, M, M, M, M},
                                {500, 5600, M, M, 270, 50},
                                {50, 20000, M, M, 270, 50}}; // off the diagram
    EXPECT_EQ(THERM_plot_barbs(0.55F, 0.02F, 0.01F, winds, 5, sound.data(), 17), 2);
    const PsPage page = plot.finish();
    int staffs = 0;
    for (const PsStroke &s : of_colour(page, 0, 0, 1))
        for (const double p : {1000.0, 500.0})
            if (s.points.size() == 2 && is_near(s.points[0][0], 0.55) &&
                is_near(s.points[1][0], 0.53) && is_near(s.points[0][1], skewed(0, p)[1]))
                ++staffs;
    EXPECT_EQ(staffs, 2);
}

TEST(SoundingPlot, WhatIsNoDiagramIsRefused)
{
    MSG_set_mask(0, kMsgWarn);
    DomainRec domain;
    EXPECT_EQ(told_by([&] { THERM_diagram_domain(kProjStuve, kArea.data(), &domain); }),
              "THERM_diagram_domain: Projection 41 is no thermodynamic diagram\n");
    const float empty[4] = {0.5F, 0.5F, 0.0F, 1.0F};
    EXPECT_EQ(THERM_diagram_domain(kProjSkewT, empty, &domain), -1);
    EXPECT_EQ(THERM_plot_hodograph(empty, nullptr, 0, nullptr, 6000.0F), -1);
}

TEST(SoundingPlot, BadSoundingsGiveAPageAllTheSame)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float far = 3e38F;
    const SoundLevel levels[] = {{M, M, M, M, M, M},
                                 {nan, nan, nan, nan, nan, nan},
                                 {850, 1500, 10, 5, 200, 20},
                                 {1e-30F, 0, far, -far, far, far},
                                 {0, 0, 0, 0, 0, 0}};
    for (const SoundLevel &level : levels) {
        SCOPED_TRACE(level.p);
        const std::vector<SoundLevel> sound(12, level);
        ParcelPath path{level, {}};
        MET_parcel(sound.data(), 12, &path.start, 100, &path.lift, level.p, 0.0F);
        int result = -1;
        const PsPage page = draw(kProjSkewT, sound, &path, &result);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(page.error, "");
        PlotSession plot;
        EXPECT_GE(THERM_plot_hodograph(kArea.data(), sound.data(), 12, &level.dir, 12000.0F), 0);
        EXPECT_EQ(plot.finish().error, "");
    }
}

TEST(Hodograph, PointsStandWhereTheWindGoes)
{
    RES_put("color_hodo", "#FF0000:w1");
    PlotSession plot;
    // 30 knots from the west, from the south, and calm; rings of 10 to 40 knots
    const SoundLevel winds[] = {
        {1000, 100, M, M, 270, 30}, {900, 1000, M, M, 180, 30}, {850, 1500, M, M, 0, 0}};
    const float storm[2] = {M, M};
    EXPECT_EQ(THERM_plot_hodograph(kArea.data(), winds, 3, storm, 6000.0F), 3);
    const PsPage page = plot.finish();
    const std::vector<PsStroke> curve = of_colour(page, 1, 0, 0);
    ASSERT_EQ(curve.size(), 1U);
    ASSERT_EQ(curve[0].points.size(), 3U);
    // the square of 0.4 in the middle of the area; 40 knots are 0.2
    const PsPoint expected[] = {{0.3 + 0.15, 0.35}, {0.3, 0.35 + 0.15}, {0.3, 0.35}};
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(curve[0].points[i][0], expected[i][0], 0.002) << i;
        EXPECT_NEAR(curve[0].points[i][1], expected[i][1], 0.002) << i;
    }
}
