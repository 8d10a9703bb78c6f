#include <cmath>

#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/names/name_conv.h"
#include "tyr/place/city.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/params.h"
#include "tyr/plot/plot_session.h"

namespace {

void apply(const std::string &words)
{
    RES_put("out_file", nullptr);
    RES_put("plot_param", words.c_str());
    PLT_read_params();
}

struct Case {
    const char *name, *words;
    double (*read)();
    double value;
};

void check(const std::vector<Case> &cases)
{
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        apply(c.words);
        EXPECT_FLOAT_EQ(static_cast<float>(c.read()), static_cast<float>(c.value));
    }
}

double bottom_margin()
{
    float margins[4];
    PLT_get_margins(margins);
    return margins[2];
}

double dlat()
{
    float a = 0.0F;
    float b = 0.0F;
    DOM_get_offset(&a, &b);
    return a;
}

double dlon()
{
    float a = 0.0F;
    float b = 0.0F;
    DOM_get_offset(&a, &b);
    return b;
}

} // namespace

TEST(PlotParams, WordsOfThePlotLayer)
{
    PLT_set_labels_inside(0);
    PLT_set_margins(0.0F, 0.0F, 0.04F, 0.04F);
    check({
        {"nothing", "", bottom_margin, 0.04},
        {"full", "FULL", bottom_margin, 0},
        {"full, labels out", "full", [] { return double(PLT_labels_inside()); }, 0},
        {"full with labels", "fullab", [] { return double(PLT_labels_inside()); }, 1},
        {"overlay offset", "over=2:4", [] { return double(PLT_get_label_offset()); }, 2},
        {"overlay count", "over=2:4", [] { return double(PLT_get_label_count()); }, 4},
        {"minimal labels", "labmin", [] { return double(PLT_get_label_mode()); }, -2},
        {"simple labels", "labsimp", [] { return double(PLT_get_label_mode()); }, -1},
        {"complete labels", "labcomp", [] { return double(PLT_get_label_mode()); }, 1},
        {"four letters do", "LABMxyz", [] { return double(PLT_get_label_mode()); }, -2},
        {"normal labels", "labnorm", [] { return double(PLT_get_label_mode()); }, 0},
        {"bar", "bar", [] { return double(PLT_get_bar_mode()); }, 2},
        {"bar with a range", "bar=0:10", [] { return double(PLT_get_bar_mode()); }, 2},
        {"no bar", "bar,nobar", [] { return double(PLT_get_bar_mode()); }, -2},
        {"grid spacing", "lalo=5:10", dlat, 5},
        {"grid spacing, lon", "lalo=5:10:1:2", dlon, 10},
        {"one for both", "lalo=7", dlon, 7},
        {"unreadable spacing", "lalo=%s", dlat, 0},
    });
}

TEST(PlotParams, WordsOfTheKernelAndTheFiles)
{
    check({
        {"no recording", "noredraw", [] { return double(ginq_recording()); }, 0},
        {"inverse", "inv", [] { return double(ginq_invert()); }, 1},
        {"colour PostScript", "pscolor", [] { return double(ginq_invert()); }, 1},
        {"shadow", "shadow=7", [] { return double(GPH_get_shadow()); }, 7},
        {"shadow below 1", "shadow=0", [] { return double(GPH_get_shadow()); }, 4},
        {"bare shadow", "shadow", [] { return double(GPH_get_shadow()); }, 4},
        {"least size", "min_size=500", [] { return double(FILE_get_min_size()); }, 500},
        {"least size, none", "min_size=-5", [] { return double(FILE_get_min_size()); }, 0},
        {"bare least size", "min_size", [] { return double(FILE_get_min_size()); }, 0},
    });
    gset_invert(0);
    GPH_set_shadow(0);
    gset_recording(1);
}

TEST(PlotParams, WordsThatAreKeptForOthers)
{
    check({
        {"refinement", "gridx3", [] { return double(PLT_wishes().grid_refinement); }, 3},
        {"refinement needs it at once", "gridx=5",
         [] { return double(PLT_wishes().grid_refinement); }, 3},
        {"thinning", "plt_grid=4", [] { return double(PLT_wishes().value_thinning); }, 4},
        {"bare thinning", "plt_grid", [] { return double(PLT_wishes().value_thinning); }, 1},
        {"precision", "loc_pr=2", [] { return double(PLT_wishes().location_precision); }, 2},
        {"skip pair", "plt_skip=2:3", [] { return double(PLT_wishes().contour_skip[1]); }, 3},
        {"skip, one for both", "plt_skip=4", [] { return double(PLT_wishes().contour_skip[1]); },
         4},
        {"offset pair", "plt_off=1:2.5", [] { return double(PLT_wishes().contour_offset[1]); },
         2.5},
        {"bad records", "max_bad=9", [] { return double(PLT_wishes().max_bad); }, 9},
        {"bad records below 1", "max_bad=0", [] { return double(PLT_wishes().max_bad); }, 5},
        {"no index", "nohdr", [] { return double(PLT_wishes().grib_index); }, 0},
    });
}

TEST(PlotParams, StationsAreNamedAsAsked)
{
    const TempDir folder;
    RES_put("file_path", folder.path().c_str());
    folder.write("sao.cty", "Denver CO US KDEN 0 39.87 -104.67 1640 72565 0\n"
                            "Cordoba -- AR -- 4 -31.32 -64.22 474 87344 0\n");
    const struct {
        const char *word, *denver, *cordoba;
    } cases[] = {
        {"wmo", "72565", "87344"},
        {"cod_wmo", "KDEN", "SA344"},
        {"ID", "KDEN", "87344"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        apply(c.word);
        CTY_close_file(CTY_read(nullptr, kCityPoints, nullptr, kAllPriorities));
        CityPoint denver = {};
        CityPoint cordoba = {};
        ASSERT_EQ(CTY_get("72565", &denver), 1);
        ASSERT_EQ(CTY_get("87344", &cordoba), 1);
        EXPECT_STREQ(denver.id, c.denver);
        EXPECT_STREQ(cordoba.id, c.cordoba);
    }
}

TEST(PlotParams, ViewFractionNeedsAllFourNumbers)
{
    const struct {
        const char *name, *word;
        double x0, x1, y0, y1; ///< of the surface
    } cases[] = {
        {"upper right quarter", "vp_size=0.5x0.5+0.5+0.5", 0.5, 1.0, 0.5, 1.0},
        {"two alone", "vp_size=0.3x0.3", 0.0, 1.0, 0.0, 1.0},
        {"panels", "vp_size=2x2+1+0", 0.5, 1.0, 0.5, 1.0},
        {"panels, lower left", "vp_size=2x2+0+1", 0.0, 0.5, 0.0, 0.5},
        {"too many panels", "vp_size=20x2+0+0", 0.0, 0.125, 0.5, 1.0},
        {"nonsense", "vp_size=%s%n", 0.0, 1.0, 0.0, 1.0},
    };
    float full[4];
    GPH_set_view_frac(1.0F, 1.0F, 0.0F, 0.0F);
    GPH_get_view_frac(full);
    ASSERT_GT(full[1], 0.0F);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        GPH_set_view_frac(1.0F, 1.0F, 0.0F, 0.0F);
        apply(c.word);
        float view[4];
        GPH_get_view_frac(view);
        EXPECT_NEAR(view[0] / full[1], c.x0, 1e-5);
        EXPECT_NEAR(view[1] / full[1], c.x1, 1e-5);
        EXPECT_NEAR(view[2] / full[3], c.y0, 1e-5);
        EXPECT_NEAR(view[3] / full[3], c.y1, 1e-5);
    }
    GPH_set_view_frac(1.0F, 1.0F, 0.0F, 0.0F);
}

TEST(PlotParams, NonsenseIsPassedOver)
{
    const std::string x(10000, 'x');
    for (const std::string &words :
         {x, "lalo=" + x, "vp_size=" + x, "over=" + x, std::string("over=99999999999:99999999999"),
          "bar=" + x, "gif=" + x, "tz=" + x, "font=" + x, "%s%n%d," + std::string(10000, ','),
          std::string("lalo=1e999:nan:9999999999:5"), std::string("tz,lalo,over,bar,gridx,vp_size"),
          std::string("shadow=99999999999999,min_size=99999999999999,max_bad=-99999999999999")}) {
        apply(words);
    }
    DOM_set_offset(0, 0, 0.0F, 0.0F);
    PLT_set_label_offset(0);
    PLT_set_label_count(-1);
    PLT_set_bar_mode(0);
}
