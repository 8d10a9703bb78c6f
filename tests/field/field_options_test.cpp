#include <gtest/gtest.h>

#include "tyr/field/contour_private.h"
#include "tyr/field/vector_private.h"

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

} // namespace
