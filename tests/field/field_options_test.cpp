#include <gtest/gtest.h>

#include "tyr/field/contour_private.h"
#include "tyr/field/vector_private.h"
#include "tyr/plot/levels.h"

namespace {

TEST(FieldOptions, PairsTakeOtherSeparators)
{
    for (const char *text : {"sk=2:3", "sk=2,3", "sk=2x3:ln", "cf:sk=2/3", "sk=2:3:lcf"}) {
        SCOPED_TRACE(text);
        tyr::contours().set = {};
        CONT_set_options(text);
        EXPECT_EQ(tyr::contours().set.skip_x, 2);
        EXPECT_EQ(tyr::contours().set.skip_y, 3);
    }
}

TEST(FieldOptions, NonsenseLeavesSaneSettings)
{
    for (const char *text : {"", ":::", "sk=0", "sk=-5:1e99", "lab=", "lab=-3.99999999999999", "=",
                             "sc=-1", "sc=nan", "xy=", "fi=9999", "mn=inf", "%n%s", "in=1e-30"}) {
        SCOPED_TRACE(text);
        tyr::contours().set = {};
        CONT_set_options(text);
        const tyr::ContourSettings &s = tyr::contours().set;
        EXPECT_GE(s.skip_x, 1);
        EXPECT_GE(s.skip_y, 1);
        EXPECT_GT(s.scale, 0.0F);
        EXPECT_GE(s.extreme_radius, 0);
        EXPECT_LE(s.extreme_radius, 100);
        VECT_set_kind(kVectArrows, text);
        tyr::read_vector_words();
        EXPECT_GE(tyr::vectors().skip_x, 1);
        EXPECT_GT(tyr::vectors().scale, 0.0F);
    }
}

// The colour of a band in the field is the one that the colour bar and values count from 0.
TEST(FieldLevels, BandsTakeTheRowsOfTheirValues)
{
    for (const float base : {kMissing, 0.0F, 130.0F}) {
        SCOPED_TRACE(base);
        GridRec g;
        GRD_init(&g);
        g.domain.nx = g.domain.ny = 2;
        ASSERT_NE(GRD_alloc(&g), 0);
        const float values[] = {4998.0F, 5100.0F, 5400.0F, 5592.0F};
        std::copy(values, values + 4, g.values);
        tyr::contours() = {};
        CONT_reset();
        CONT_set_fill_colors("16-22", 1);
        CONT_set_interval(50.0F);
        CONT_set_base(base);
        ASSERT_EQ(CONT_plan_levels(&g), 0);
        const tyr::LevelPlan &plan = tyr::contours().plan;
        ASSERT_GE(plan.count, 12);
        for (int i = 0; i < plan.count; ++i) {
            AttrRec a;
            CONT_value_attr(plan.level(i) + 25.0F, &a);
            EXPECT_EQ(CONT_row(plan.row(i)).color, a.color) << i;
        }
        GRD_free(&g);
        CONT_reset();
    }
}

} // namespace
