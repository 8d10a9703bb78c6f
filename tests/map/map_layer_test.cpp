#include "map/map_page.h"

namespace {

TEST_F(MapLayer, TextAndBinaryFilesDrawTheSame)
{
    const std::vector<Line> lines = {{{10.0F, 10.0F}, {12.5F, 20.0F}, {0.0F, 30.0F}},
                                     {{-5.0F, -5.0F}, {5.0F, 5.0F}}};
    for (const std::string &bytes :
         {binary_map(lines), text_map(lines), binary_map(lines).substr(0, 22 * 2 + 8 * 5)}) {
        const std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,4,4", write(bytes));
        EXPECT_EQ(said_, "");
        ASSERT_EQ(strokes.size(), lines.size());
        for (size_t i = 0; i < lines.size(); ++i) {
            ASSERT_EQ(strokes[i].points.size(), lines[i].size());
            for (size_t k = 0; k < lines[i].size(); ++k) {
                EXPECT_NEAR(strokes[i].points[k][0], lines[i][k].lon, 0.02);
                EXPECT_NEAR(strokes[i].points[k][1], lines[i][k].lat, 0.02);
            }
        }
    }
}

TEST_F(MapLayer, LongSegmentsAreWholeAndInOrder)
{
    Line line;
    for (int i = 0; i < 30000; ++i) {
        line.push_back({static_cast<float>(i % 7), -20.0F + static_cast<float>(i) * 0.001F});
    }
    const std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,4,4", write(binary_map({line})));
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_NEAR(strokes[0].points.back()[0], 9.999, 0.02);
    EXPECT_NEAR(strokes[0].points.back()[1], 29999 % 7, 0.02);
}

TEST_F(MapLayer, LinesBreakWhereTheEarthTurnsAway)
{
    Line equator;
    for (int lon = -180; lon <= 180; lon += 5) {
        equator.push_back({0.0F, static_cast<float>(lon)});
    }
    // seen from 150 E: visible from 65 to 180 and from -180 to -125, 60 and -120 lying on the limb
    const std::vector<PsStroke> strokes =
        draw("or:0:150,0,150,25,25,5.4,5.4", write(binary_map({equator})));
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_NEAR(strokes[0].points.back()[0], 63.7122, 0.3);
    EXPECT_NEAR(strokes[1].points.front()[0], -63.7122, 0.3);
    for (const PsStroke &s : strokes) {
        EXPECT_GE(s.points.size(), 12U);
        for (const PsPoint &p : s.points) {
            EXPECT_NEAR(p[1], 0.0, 0.05);
        }
    }
    EXPECT_NEAR(strokes[0].points.front()[0], 63.7122 * std::sin(0.523599), 0.05) << "at 180";
}

struct WrapCase {
    const char *name;
    const char *domain;
    double width;
};

TEST_F(MapLayer, LinesGoOnAtTheOtherSide)
{
    const Line line = {{10.0F, 170.0F}, {11.0F, 178.0F}, {12.0F, -177.0F}, {13.0F, -170.0F}};
    const WrapCase cases[] = {
        {"degrees", "lat:0:0,0,0,25,17,16,16", 360.0},
        {"Mercator", "merc:0:0,0,0,25,17,18,18", 63.7122 * 2.0 * 3.14159265},
        // the ellipse's chord at 12 N: theta + sin theta cos theta = pi / 2 sin 12
        {"Mollweide", "moll:0:0,0,0,25,17,11,11", 4.0 * 63.7122 * std::cos(0.164016)},
    };
    for (const WrapCase &c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<PsStroke> strokes = draw(c.domain, write(binary_map({line})));
        ASSERT_EQ(strokes.size(), 2U);
        ASSERT_EQ(strokes[0].points.size(), 3U);
        ASSERT_EQ(strokes[1].points.size(), 3U);
        // the step over the side stands beyond it at both
        const PsPoint out = strokes[0].points[2];
        const PsPoint in = strokes[1].points[1];
        EXPECT_NEAR(out[0] - in[0], c.width, 0.3);
        EXPECT_NEAR(out[1], in[1], 0.1);
        EXPECT_NEAR(strokes[0].points[1][0] - strokes[1].points[0][0], c.width, 0.6);
        EXPECT_GT(out[0], strokes[0].points[1][0]);
        EXPECT_GT(strokes[1].points[2][0], in[0]);
    }
}

TEST_F(MapLayer, ConesAreCutOpenWithoutALine)
{
    const Line line = {{70.0F, 60.0F}, {70.0F, 75.0F}, {70.0F, 85.0F}, {70.0F, 100.0F}};
    const std::vector<PsStroke> strokes =
        draw("lamb:60:-100:30:60,80,-100,25,17,9,9", write(binary_map({line})));
    ASSERT_EQ(strokes.size(), 2U) << "the cut is at 80 E";
    EXPECT_EQ(strokes[0].points.size(), 2U);
    EXPECT_EQ(strokes[1].points.size(), 2U);
}

TEST_F(MapLayer, PlotSpacesHaveNoMaps)
{
    const std::string path = write(binary_map({{{1.0F, 1.0F}, {2.0F, 2.0F}}}));
    DomainRec d;
    DOM_decode("cat,-1,-1000,25,21,14,18000", &d);
    DOM_set(&d);
    FILE *file = std::fopen(path.c_str(), "r");
    ASSERT_TRUE(file);
    EXPECT_EQ(MAP_read_file(file), 1);
    EXPECT_EQ(std::ftell(file), 0) << "nothing is read";
    DOM_decode("lat,0,0,1", &d);
    DOM_set(&d);
    EXPECT_EQ(MAP_read_file(file), 0);
    EXPECT_EQ(MAP_read_file(file), -1) << "at the end no count can be read";
    std::fclose(file);
}

TEST_F(MapLayer, FillsClosedOutlines)
{
    const std::string path = write(binary_map({{{0.0F, 0.0F}, {5.0F, 0.0F}, {5.0F, 5.0F}}}));
    std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,2,2", path + ":blue:fi=sol");
    ASSERT_FALSE(strokes.empty());
    EXPECT_TRUE(strokes[0].filled);
    strokes = draw("lat:0:0,0,0,25,17,2,2", path + ":red");
    ASSERT_FALSE(strokes.empty());
    EXPECT_TRUE(strokes[0].filled) << "once filled, all later maps of a run are";
}

TEST_F(MapLayer, DamagedFilesEnd)
{
    const std::vector<Line> lines = {{{10.0F, 10.0F}, {12.5F, 20.0F}, {0.0F, 30.0F}},
                                     {{-5.0F, -5.0F}, {5.0F, 5.0F}}};
    DomainRec d;
    DOM_decode("lat:0:0,0,0,25,17,4,4", &d);
    KernelPlot plot(kDevicePostScript);
    PLT_set_domain(&d);
    MSG_set_mask(0, 0);
    start_map_entries(kMapUnmarked);
    for (const std::string &whole : {binary_map(lines), text_map(lines)}) {
        for (size_t length = 0; length < whole.size(); ++length) {
            MAP_process(write(whole.substr(0, length)).c_str());
        }
        for (size_t i = 0; i < whole.size(); ++i) {
            for (const char byte : {'\0', '\xFF', '\x7F', '-', ' '}) {
                std::string damaged = whole;
                damaged[i] = byte;
                MAP_process(write(damaged).c_str());
            }
        }
    }
    EXPECT_EQ(plot.page().error, "");
}

TEST_F(MapLayer, ImagesNeedADisplay)
{
    RES_put("image_path", "/pictures");
    draw("lat:0:0,0,0,25,17,2,2", "im:sat.gif:black:0:0");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(said_, "MAP_process: No display for the map image: /pictures/sat.gif\n");
}

TEST_F(MapLayer, DefaultMapByPlace)
{
    if (RES_get("map_file")) {
        GTEST_SKIP() << "another test of this process has set the list of maps";
    }
    MapPage page("ps,40,-100,25,17,2,2");
    MAP_draw(kMapUnmarked);
    const std::vector<PsStroke> strokes = page.strokes();
    ASSERT_GT(strokes.size(), 50U);
    EXPECT_EQ(strokes.back().message, "Map: tyr.map");
}

} // namespace
