// Lines of latitude and longitude, and their labels.

#include "map/map_page.h"

namespace {

struct GridLabel {
    const char *text;
    double x, y;
};

TEST_F(MapLayer, LinesAndTheirLabels)
{
    // 20 W to 28 E and 16 S to 16 N of a map in degrees
    MapPage page("lat:0:4,0,4,25,17,2,2");
    GPH_set_text_attr(nullptr, 1.0F);
    gset_char_ht(0.5F);
    EXPECT_EQ(MAP_draw_lalo(10.0F, 20.0F), 0);
    const std::vector<PsStroke> strokes = page.strokes();
    std::vector<double> latitudes;
    std::vector<double> longitudes;
    for (const PsStroke &s : strokes) {
        const PsPoint a = s.points.front();
        const PsPoint b = s.points.back();
        if (std::fabs(a[1] - b[1]) < 0.01) {
            latitudes.push_back(std::round(a[1] * 10.0) / 10.0);
            EXPECT_LE(std::min(a[0], b[0]), -24.0 + 0.01);
            EXPECT_GE(std::max(a[0], b[0]), 24.0 - 0.01);
        } else {
            EXPECT_NEAR(a[0], b[0], 0.01);
            longitudes.push_back(std::round((a[0] + 4.0) * 10.0) / 10.0);
        }
    }
    EXPECT_EQ(latitudes, (std::vector<double>{0.0, 10.0, -10.0}));
    EXPECT_EQ(longitudes, (std::vector<double>{0.0, 20.0, -20.0}));
    const GridLabel labels[] = {{"EQ", -23.52, 0.0},
                                {"10N", -23.52, 10.0},
                                {"10S", -23.52, -10.0},
                                {"PM", -4.0, -15.52},
                                {"20E", 16.0, -15.52}};
    const std::vector<PsText> &texts = page.page().texts;
    ASSERT_EQ(texts.size(), std::size(labels));
    for (size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].text, labels[i].text);
        EXPECT_NEAR(texts[i].x, labels[i].x, 0.01);
        EXPECT_NEAR(texts[i].y, labels[i].y, 0.01);
    }
}

TEST_F(MapLayer, LinesOfAnEntryLabelASectionInPageUnits)
{
    MapPage page("cat,-1,-1000,25,21,14,18000");
    start_map_entries(kMapUnmarked);
    EXPECT_EQ(MAP_process("lalo:1:-2000:red"), 0);
    const float at[2] = {0.5F, 0.3F};
    gtext(at, "H");
    page.strokes();
    const std::vector<PsText> &texts = page.page().texts;
    ASSERT_FALSE(texts.empty());
    const PsStroke corners = strokes_of(page.page(), -1).front();
    double low = 1e9;
    double high = -1e9;
    for (const PsStroke &s : strokes_of(page.page(), static_cast<int>(texts.size()) - 1)) {
        for (const PsPoint &p : s.points) {
            low = std::min(low, p[1]);
            high = std::max(high, p[1]);
        }
    }
    const double page_height = std::fabs(corners.points[1][1] - corners.points[0][1]);
    EXPECT_NEAR((high - low) / page_height * kViewHeight, 0.015, 0.001);
}

TEST_F(MapLayer, RepeatedLabelsAndCrosses)
{
    MapPage page("lat:0:0,0,0,25,17,14,10");
    DOM_set_offset(40, 60, 30.0F, 30.0F);
    gset_char_ht(1.0F);
    MAP_draw_lalo(30.0F, 30.0F);
    const std::vector<PsStroke> strokes = page.strokes();
    // -79 / 40 * 40 = -40, 0, 40 by -160 to 160: 27 crosses of two strokes
    const auto is_arm = [](const PsStroke &s) {
        return std::hypot(s.points[0][0] - s.points[1][0], s.points[0][1] - s.points[1][1]) < 0.5;
    };
    EXPECT_EQ(std::count_if(strokes.begin(), strokes.end(), is_arm), 2 * 27);
    // along the equator from int((60 * -2 - 30) / 30) * 30 - 15 = -165 by 60
    constexpr double kLeftLabel = -168.0 + 3.36;
    std::vector<double> along;
    for (const PsText &t : page.page().texts) {
        if (t.text == "EQ" && std::fabs(t.x - kLeftLabel) > 0.01) {
            along.push_back(t.x);
        }
    }
    EXPECT_EQ(along, (std::vector<double>{-165.0, -105.0, -45.0, 15.0, 75.0, 135.0}));
    DOM_set_offset(0, 0, 0.0F, 0.0F);
}

TEST_F(MapLayer, SillyIntervalsEndAtOnce)
{
    for (const char *entry : {"lalo:0:5", "lalo:5:0", "lalo:-5:5", "lalo:nan:5", "lalo:inf",
                              "lalo:1e-9:10", "lalo:0.01:0.01"}) {
        const std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,2,2", entry);
        EXPECT_EQ(strokes.size(), 0U) << entry;
        DOM_set_offset(0, 0, 0.0F, 0.0F);
        EXPECT_EQ(said_.rfind("MAP_draw_lalo: no lines at intervals ", 0), 0U) << entry << said_;
    }
    for (const char *entry : {"lalo", "lalo:", "lalo:10", "lalo10:20", "lalo:10:20:magenta",
                              "lalo::magenta", "lalo:10:blue"}) {
        const std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,2,2", entry);
        EXPECT_GT(strokes.size(), 2U) << entry;
        EXPECT_EQ(said_, "") << entry;
    }
    EXPECT_TRUE(draw("lat:0:0,0,0,25,17,2,2", "lalo:10:10:none").empty());
}

} // namespace
