#include <cstring>
#include <map>

#include <gtest/gtest.h>

#include "grid_math/math_grids.h"
#include "support/capture.h"
#include "tyr/base/res.h"
#include "tyr/grid_math/evaluate.h"
#include "tyr/grid_math/grid_math_file.h"
#include "tyr/var/expression.h"

using namespace tyr;

namespace {

/// Grids of 3 by 3 by name, all at 500 hPa, each of one value.
bool find(const VarRec &wanted, GridRec *out)
{
    const std::map<std::string, float> known{{"uwnd", 3.0F}, {"vwnd", 4.0F}, {"temp", 300.0F}};
    const auto found = known.find(wanted.name);
    if (found == known.end() || wanted.level_value != 500)
        return false;
    MathGrid grid(3, 3);
    grid.fill(found->second);
    std::swap(*out, grid.rec);
    out->ltype = wanted.level_kind;
    out->level = wanted.level_value;
    out->var = wanted.var_number;
    return true;
}

class EvaluateTest : public testing::Test {
  protected:
    void SetUp() override { RES_put("file_path", TYR_SOURCE_DIR "/data"); }
};

TEST_F(EvaluateTest, ExpressionsOfFunctionsConstantsAndVectors)
{
    struct {
        const char *expression;
        int grids;
        float first, second;
    } const cases[] = {
        {"12:500:temp", 1, 300.0F, 0.0F},
        {"12:500:wspd(uwnd,vwnd)", 1, 5.0F, 0.0F},
        {"wspd(12:500:uwnd,12:500:vwnd)", 1, 5.0F, 0.0F},
        {"12:500:mul(uwnd,#2.5)", 1, 7.5F, 0.0F},
        {"12:500:sub(#10,uwnd)", 1, 7.0F, 0.0F},
        {"12:500:add(mul(uwnd,vwnd),temp)", 1, 312.0F, 0.0F},
        {"<12:500:uwnd,12:500:vwnd>", 2, 3.0F, 4.0F},
        {"12:500:wind(uwnd,vwnd)", 2, 3.0F, 4.0F},
        {"12:500:dot(<12:500:uwnd,12:500:vwnd>,vwnd,uwnd)", 1, 24.0F, 0.0F},
        {"12:500:grad(temp)", 2, 0.0F, 0.0F},
        {"12:500:wind(uwnd,vwnd)[0.5:barb]", 2, 6.0F, 8.0F},
        {"12:500:vdiff(uwnd,vwnd,vwnd,uwnd)", 2, -1.0F, 1.0F},
        {"12:500:mag(vdiff(uwnd,vwnd,vwnd,vwnd))", 1, 1.0F, 0.0F},
        {"12:500:mul(+uwnd,#2)[knt]", 1, 6.0F, 0.0F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.expression);
        GridRec out[2];
        const int grids = GRD_evaluate(c.expression, find, "nowhere", out);
        EXPECT_EQ(grids, c.grids);
        if (grids > 0) {
            EXPECT_FLOAT_EQ(out[0].values[4], c.first);
            EXPECT_EQ(out[0].level, 500);
        }
        if (grids > 1) {
            EXPECT_FLOAT_EQ(out[1].values[4], c.second);
        }
        GRD_free(&out[0]);
        GRD_free(&out[1]);
    }
}

TEST_F(EvaluateTest, TellsInOneLineWhatIsWrong)
{
    struct {
        const char *expression;
        const char *message;
    } const cases[] = {
        {"12:700:temp", "GRD_evaluate: No grid of temp at 12 h 700 mb in fcst.grd\n"},
        {"12:500:add(temp,hght)", "GRD_evaluate: No grid of hght at 12 h 500 mb in fcst.grd\n"},
        {"12:500:add(temp)", "GRD_math: Invalid grids\n"},
        {"12:500:foo(temp)", "GRD_math: Math function not available: foo\n"},
        {"12:500:temp,12:500:uwnd", "GRD_evaluate: an expression of more than one item\n"},
        {"#5", "GRD_evaluate: a constant alone\n"},
        {"add(#5,#6)", "GRD_evaluate: a function of no grid\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.expression);
        GridRec out[2];
        int grids = 1;
        EXPECT_EQ(told_by([&] { grids = GRD_evaluate(c.expression, find, "fcst.grd", out); }),
                  c.message);
        EXPECT_EQ(grids, 0);
        EXPECT_EQ(out[0].values, nullptr);
    }
}

TEST_F(EvaluateTest, ItemsOfAListComeOneByOne)
{
    ASSERT_EQ(VAR_decode(nullptr, "12:500:{temp,<uwnd,vwnd>},map,12:500:grad(temp),uwnd"), 1);
    const struct {
        int grids;
        float first;
    } wanted[] = {
        {-1, 0},                         // the head of the group
        {1, 300.0F}, {2, 3.0F}, {-1, 0}, // the map
        {2, 0.0F},   {0, 0},             // no level of its own
    };
    int next = 0;
    for (const auto &w : wanted) {
        SCOPED_TRACE(next);
        GridRec out[2];
        int grids = -2;
        const std::string told =
            told_by([&] { grids = GRD_evaluate_item(&next, find, "nowhere", out); });
        ASSERT_EQ(grids, w.grids);
        EXPECT_EQ(told.empty(), w.grids != 0);
        if (w.grids > 0) {
            EXPECT_EQ(out[0].values[4], w.first);
        }
        GRD_free(&out[0]);
        GRD_free(&out[1]);
    }
}

TEST_F(EvaluateTest, OperationsOverFiles)
{
    const auto read = [](const std::string &path, GridRec *out) {
        if (path == "none")
            return false;
        MathGrid grid(2, 1);
        grid.set({std::strtof(path.c_str(), nullptr), path == "5" ? kMissing : 1.0F});
        std::swap(*out, grid.rec);
        return true;
    };
    struct {
        const char *name;
        float first, second;
    } const cases[] = {{"max", 5, 1}, {"min", -2, 1}, {"sum", 6, 2}, {"avg", 2, kMissing}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        GridRec out;
        EXPECT_EQ(GRD_math_file(c.name, {"3", "none", "5", "-2"}, read, &out), 3);
        EXPECT_FLOAT_EQ(out.values[0], c.first);
        EXPECT_FLOAT_EQ(out.values[1], c.second);
        GRD_free(&out);
    }
    GridRec out;
    EXPECT_EQ(told_by([&] { GRD_math_file("div", {"3"}, read, &out); }),
              "GRD_math_file: Invalid grids\n");
}

} // namespace
