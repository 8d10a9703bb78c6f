#include <cmath>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/plot/barb.h"

namespace {

using Strokes = std::vector<std::string>;

/// A barb's signs, read from its strokes.
struct Barb {
    int result = 0;
    int staffs = 0, flags = 0, fulls = 0, halves = 0, others = 0;
    double direction = 0.0; ///< that the staff points to
    double gap = 0.0;       ///< between the place and the staff's beginning
    double length = 0.0;    ///< from the place to the staff's end
    bool right_side = true; ///< all signs lie to the right of the staff
};

/// Sorts strokes by their length and place on a staff of one unit from the origin.
Barb read_barb(const PsPage &page)
{
    Barb barb;
    double s = 0.0;
    double c = 1.0;
    for (const PsStroke &stroke : page.strokes) {
        const PsPoint a = stroke.points.front();
        const PsPoint b = stroke.points.size() > 1 ? stroke.points[1] : a;
        if (barb.staffs == 0) {
            barb.staffs = 1;
            barb.length = std::hypot(b[0], b[1]);
            barb.gap = std::hypot(a[0], a[1]);
            barb.direction = std::fmod(std::atan2(b[0], b[1]) * 180.0 / M_PI + 360.0, 360.0);
            s = b[0] / barb.length;
            c = b[1] / barb.length;
            continue;
        }
        const auto side = [&](const PsPoint &p) { return p[0] * c - p[1] * s; };
        barb.right_side = barb.right_side && side(b) > 0.0;
        const double reach = side(b);
        if (stroke.filled) {
            barb.flags++;
        } else if (stroke.points.size() > 2) {
            continue; // outline of a flag
        } else if (std::fabs(reach - 0.5) < 0.02) {
            barb.fulls++;
        } else if (std::fabs(reach - 0.25) < 0.02) {
            barb.halves++;
        } else {
            barb.others++;
        }
    }
    return barb;
}

Barb draw(float direction, float speed, float offset = 0.0F)
{
    WorldPlot plot(4);
    const int result = WX_barb(0.0F, 0.0F, direction, speed, 1.0F, offset);
    const PsPage page = plot.finish();
    EXPECT_EQ(page.error, "");
    Barb barb = read_barb(page);
    barb.result = result;
    return barb;
}

} // namespace

TEST(Barb, SignsOfEverySpeedAddUpToIt)
{
    for (int speed = 1; speed <= 300; ++speed) {
        SCOPED_TRACE(speed);
        const Barb barb = draw(30.0F, static_cast<float>(speed));
        ASSERT_EQ(barb.result, 0);
        ASSERT_EQ(barb.staffs, 1);
        ASSERT_EQ(barb.others, 0);
        // to the nearest five: 3 counts as 5, 8 as 10
        ASSERT_EQ(50 * barb.flags + 10 * barb.fulls + 5 * barb.halves, (speed + 2) / 5 * 5);
        ASSERT_LE(barb.fulls, 4);
        ASSERT_LE(barb.halves, 1);
        ASSERT_TRUE(barb.right_side);
    }
}

TEST(Barb, StaffPointsToWhereTheWindComesFrom)
{
    for (int direction = 0; direction <= 360; direction += 15) {
        SCOPED_TRACE(direction);
        const Barb barb = draw(static_cast<float>(direction), 65.0F, 0.2F);
        const double off = std::fabs(barb.direction - direction % 360);
        EXPECT_LT(std::fmin(off, 360.0 - off), 0.5);
        EXPECT_NEAR(barb.length, 1.0, 0.01);
        EXPECT_NEAR(barb.gap, 0.2, 0.01);
        EXPECT_TRUE(barb.right_side);
        EXPECT_EQ(barb.flags, 1);
        EXPECT_EQ(barb.fulls, 1);
        EXPECT_EQ(barb.halves, 1);
    }
}

TEST(Barb, StrokesStandWhereTheTableSays)
{
    // Worked out by hand for a northerly wind: x is the sideways reach, y the fraction of the
    // staff.
    const Strokes staff = {"line 0.00,0.00 0.00,1.00"};
    const struct {
        float speed;
        Strokes signs;
    } cases[] = {
        {2.0F, {}},
        {3.0F, {"line 0.00,0.88 0.25,0.94"}},
        {7.0F, {"line 0.00,0.88 0.25,0.94"}},
        {8.0F, {"line 0.00,1.00 0.50,1.12"}},
        {15.0F, {"line 0.00,1.00 0.50,1.12", "line 0.00,0.88 0.25,0.94"}},
        {25.0F,
         {"line 0.00,1.00 0.50,1.12", "line 0.00,0.88 0.50,1.00", "line 0.00,0.76 0.25,0.82"}},
        {48.0F,
         {"fill 0.00,1.00 0.50,1.00 0.00,0.88", "line 0.00,1.00 0.50,1.00 0.00,0.88 0.00,1.00"}},
        {55.0F,
         {"fill 0.00,1.00 0.50,1.00 0.00,0.88", "line 0.00,1.00 0.50,1.00 0.00,0.88 0.00,1.00",
          "line 0.00,0.76 0.25,0.82"}},
        {65.0F,
         {"fill 0.00,1.00 0.50,1.00 0.00,0.88", "line 0.00,1.00 0.50,1.00 0.00,0.88 0.00,1.00",
          "line 0.00,0.76 0.50,0.88", "line 0.00,0.64 0.25,0.70"}},
        {100.0F,
         {"fill 0.00,1.00 0.50,1.00 0.00,0.88", "line 0.00,1.00 0.50,1.00 0.00,0.88 0.00,1.00",
          "fill 0.00,0.88 0.50,0.88 0.00,0.76", "line 0.00,0.88 0.50,0.88 0.00,0.76 0.00,0.88"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.speed);
        WorldPlot plot(4);
        EXPECT_EQ(WX_barb_raw(0.0F, 0.0F, 0.0F, c.speed, 1.0F, 0.0F), 0);
        Strokes drawn = show_strokes(plot.finish());
        Strokes expected = staff;
        expected.insert(expected.end(), c.signs.begin(), c.signs.end());
        for (std::string &stroke : drawn) {
            // the paper's reader may close a filled path by repeating its first point
            if (stroke.rfind("fill", 0) == 0 && stroke.size() > expected[1].size()) {
                stroke.resize(expected[1].size());
            }
        }
        EXPECT_EQ(drawn, expected);
    }
}

TEST(Barb, NoWindDrawsNothing)
{
    const struct {
        const char *name;
        float direction, speed;
    } cases[] = {
        {"calm", 90.0F, 0.0F},
        {"missing direction", kMissing, 20.0F},
        {"missing speed", 90.0F, kMissing},
        {"both missing", kMissing, kMissing},
        {"no number", NAN, 20.0F},
        {"endless", 90.0F, INFINITY},
        {"below nothing", 90.0F, -5.0F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        WorldPlot plot(4);
        EXPECT_EQ(WX_barb(0.0F, 0.0F, c.direction, c.speed, 1.0F, 0.0F), -1);
        EXPECT_EQ(WX_vector(0.0F, 0.0F, c.direction, c.speed == -5.0F ? 0.0F : c.speed, 1.0F, 1.0F),
                  -1);
        EXPECT_TRUE(plot.finish().strokes.empty());
    }
    EXPECT_EQ(draw(90.0F, 400.0F).flags, 6) << "a faster wind is drawn as 300";
}

TEST(Barb, ArrowsPointDownwind)
{
    // From the west, two units long: the end at x = 2; wings 0.4 back and to the sides.
    WorldPlot plot(8);
    EXPECT_EQ(WX_vector(0.0F, 0.0F, 270.0F, 2.0F, 1.0F, 1.0F), 0);
    EXPECT_EQ(show_strokes(plot.finish()),
              (Strokes{"line 0.00,0.00 2.00,0.00", "line 2.00,0.00 1.60,-0.40",
                       "line 2.00,0.00 1.60,0.40"}));
    WorldPlot plain(8);
    EXPECT_EQ(WX_vector(1.0F, 1.0F, 0.0F, 1.0F, 2.0F, 0.0F), 0);
    EXPECT_EQ(show_strokes(plain.finish()), (Strokes{"line 1.00,1.00 1.00,-1.00"}));
}

TEST(Barb, TracksHaveCrossTicksAndAHead)
{
    // From the south, three units long, ticks of one: cross ticks of 0.4 at 0, 1 and 2.
    WorldPlot plot(8);
    EXPECT_EQ(WX_track(0.0F, 0.0F, 180.0F, 3.0F, 1.0F, 3), 0);
    EXPECT_EQ(show_strokes(plot.finish()),
              (Strokes{"line 0.00,0.00 0.00,3.00", "line -0.20,0.00 0.20,0.00",
                       "line -0.20,1.00 0.20,1.00", "line -0.20,2.00 0.20,2.00",
                       "line 0.00,3.00 0.20,2.80", "line 0.00,3.00 -0.20,2.80"}));
    WorldPlot none(8);
    EXPECT_EQ(WX_track(0.0F, 0.0F, kMissing, 3.0F, 1.0F, 3), -1);
    EXPECT_EQ(WX_track(0.0F, 0.0F, 180.0F, 0.0F, 1.0F, 3), -1);
    EXPECT_TRUE(none.finish().strokes.empty());
}
