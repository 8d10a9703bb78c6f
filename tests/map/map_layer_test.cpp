#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>

#include "support/kernel_plot.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry_private.h"
#include "tyr/map/map_file_private.h"
#include "tyr/map/map_grid.h"
#include "tyr/map/map_layer.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/plot/view.h"

using namespace tyr;

namespace {

constexpr float kViewWidth = 0.9F;
constexpr float kViewHeight = 0.6F;

struct LatLon {
    float lat, lon;
};
using Line = std::vector<LatLon>;

void put_number(std::string &bytes, uint32_t value, int count)
{
    for (int i = count - 1; i >= 0; --i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
    }
}

std::string binary_map(const std::vector<Line> &lines)
{
    std::string bytes;
    for (const Line &line : lines) {
        put_number(bytes, static_cast<uint32_t>(line.size()), 2);
        bytes += std::string(20, '\0');
        for (const LatLon &p : line) {
            put_number(bytes, std::bit_cast<uint32_t>(p.lat), 4);
            put_number(bytes, std::bit_cast<uint32_t>(p.lon), 4);
        }
    }
    return bytes + std::string(22, '\0');
}

std::string text_map(const std::vector<Line> &lines)
{
    std::string text;
    for (const Line &line : lines) {
        text += std::to_string(line.size()) + " 0 0 0 0 7\n";
        for (const LatLon &p : line) {
            text += std::to_string(p.lat) + " " + std::to_string(p.lon) + "\n";
        }
    }
    return text + "0 0 0 0 0 0\n";
}

/// A page with a domain's window in transformation 2; strokes are read back in plot units.
class MapPage {
  public:
    explicit MapPage(const char *domain) : plot_(kDevicePostScript, "color,port")
    {
        CLR_read_table("tyr.clr");
        DOM_decode(domain, &domain_);
        PLT_set_domain(&domain_);
        const float viewport[4] = {0.0F, kViewWidth, 0.0F, kViewHeight};
        gset_viewport(2, viewport);
        gset_viewport(1, viewport);
        gset_window(1, viewport);
        const float corners[4] = {0.0F, 0.0F, kViewWidth, kViewHeight};
        gsel_norm_tran(1);
        gpolyline(2, corners);
        gsel_norm_tran(2);
        DOM_get_window(window_);
    }

    /// What was drawn since, in plot units; texts keep their strokes apart.
    std::vector<PsStroke> strokes()
    {
        page_ = plot_.page();
        EXPECT_EQ(page_.error, "");
        std::vector<PsStroke> all = strokes_of(page_, -1);
        if (all.empty()) {
            ADD_FAILURE() << "no corners";
            return {};
        }
        const PsPoint a = all[0].points[0];
        const PsPoint b = all[0].points[1];
        all.erase(all.begin());
        for (PsStroke &s : all) {
            for (PsPoint &p : s.points) {
                p[0] = window_[0] + (p[0] - a[0]) / (b[0] - a[0]) * (window_[1] - window_[0]);
                p[1] = window_[2] + (p[1] - a[1]) / (b[1] - a[1]) * (window_[3] - window_[2]);
            }
        }
        return all;
    }
    const PsPage &page() const { return page_; }

  private:
    KernelPlot plot_;
    DomainRec domain_ = {};
    float window_[4] = {};
    PsPage page_;
};

class MapLayer : public testing::Test {
  protected:
    MapLayer() { MSG_set_mask(0, 0xFF); }
    ~MapLayer() override { set_map_fill(false); }

    /// The path of a file in the test's folder, and its drawing.
    std::string write(const std::string &bytes) { return folder_.write("a.map", bytes); }
    std::vector<PsStroke> draw(const char *domain, const std::string &entry)
    {
        MapPage page(domain);
        start_map_entries(kMapUnder | kMapOver | kMapUnmarked);
        testing::internal::CaptureStderr();
        result_ = MAP_process(entry.c_str());
        said_ = testing::internal::GetCapturedStderr();
        return page.strokes();
    }

    TempDir folder_;
    int result_ = 0;
    std::string said_;
};

TEST_F(MapLayer, TextAndBinaryFilesDrawTheSame)
{
    const std::vector<Line> lines = {
        {{10.0F, 10.0F}, {12.5F, 20.0F}, {0.0F, 30.0F}},
        {{-5.0F, -5.0F},              {5.0F, 5.0F}              }
    };
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
    const Line line = {
        {10.0F, 170.0F },
        {11.0F, 178.0F },
        {12.0F, -177.0F},
        {13.0F, -170.0F}
    };
    const WrapCase cases[] = {
        {"degrees",   "lat:0:0,0,0,25,17,16,16",  360.0                             },
        {"Mercator",  "merc:0:0,0,0,25,17,18,18", 63.7122 * 2.0 * 3.14159265        },
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
    const Line line = {
        {70.0F, 60.0F },
        {70.0F, 75.0F },
        {70.0F, 85.0F },
        {70.0F, 100.0F}
    };
    const std::vector<PsStroke> strokes =
        draw("lamb:60:-100:30:60,80,-100,25,17,9,9", write(binary_map({line})));
    ASSERT_EQ(strokes.size(), 2U) << "the cut is at 80 E";
    EXPECT_EQ(strokes[0].points.size(), 2U);
    EXPECT_EQ(strokes[1].points.size(), 2U);
}

TEST_F(MapLayer, PlotSpacesHaveNoMaps)
{
    const std::string path = write(binary_map({
        {{1.0F, 1.0F}, {2.0F, 2.0F}}
    }));
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

struct EntryCase {
    const char *entry;
    int mode;
    bool is_drawn;
};

TEST_F(MapLayer, MarksAndConditions)
{
    // the window is 32 high
    folder_.write("m", binary_map({
                           {{1.0F, 1.0F}, {2.0F, 2.0F}}
    }));
    const EntryCase cases[] = {
        {"m",                                4, true },
        {"m",                                3, false},
        {"-m",                               1, true },
        {"-m",                               6, false},
        {"+m",                               2, true },
        {"+m",                               5, false},
        {"s+32:m",                           4, true },
        {"s+33:m",                           4, false},
        {"s-32:m",                           4, true },
        {"s-31:m",                           4, false},
        {">30:m",                            4, true },
        {">33:m",                            4, false},
        {">30<40:m",                         4, true },
        {">30<31:m",                         4, false},
        {"<40:m",                            4, true },
        {"<31:m",                            4, false},
        {"<40>30:m",                         4, true },
        {"<40>35:m",                         4, false},
        {"s+20:s-40:m",                      4, true },
        {"-s+20:>10<50:s-40:<60>2:s+1:>3:m", 1, true },
        {"s+20:s-30:m",                      4, false},
        {">20:s-40:s+33:m",                  4, false},
        {"m:blue",                           4, true },
        {"m:none",                           4, false},
        {"",                                 7, false},
        {"-",                                7, false},
        {"s+20",                             4, false},
    };
    for (const EntryCase &c : cases) {
        SCOPED_TRACE(c.entry);
        MapPage page("lat:0:0,0,0,25,17,2,2");
        RES_put("file_path", folder_.path().c_str());
        start_map_entries(c.mode);
        testing::internal::CaptureStderr();
        MAP_process(c.entry);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(page.strokes().size(), c.is_drawn ? 1U : 0U);
    }
}

TEST_F(MapLayer, BlocksOfListFiles)
{
    const struct {
        const char *name, *list, *expected; ///< numbers of the maps drawn
    } cases[] = {
        {"the first that fits",         "[50,60,0,5\n1\n[-10,10,-10,10\n2\n[0,10,0,10\n3\n", "2" },
        {"in any order of the limits",  "[10,-10,10,-10\n1",                                 "1" },
        {"too high",                    "[-10,10,-10,10,20\n1\n[-10,10,-10,10,40\n2",        "2" },
        {"the default behind others",   "[50,60,0,5\n1\n[\n2\n",                             "2" },
        {"the default after a fit",     "[-1,1,-1,1\n1\n[\n2\n",                             "1" },
        {"ahead of all blocks",         "1\n[50,60,0,5\n2\n",                                "1" },
        {"many a line, and marks",      "-1 +2 3",                                           "13"},
        {"the list itself is no entry", "fi:list 3",                                         "3" },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        for (int i = 1; i <= 3; ++i) {
            const float x = static_cast<float>(i);
            folder_.write(std::to_string(i), binary_map({
                                                 {{x, 0.0F}, {x, 1.0F}}
            }));
        }
        folder_.write("list", c.list);
        MapPage page("lat:0:0,0,0,25,17,2,2");
        RES_put("file_path", folder_.path().c_str());
        RES_put("map_file", "fi:list");
        DOM_set_offset(0, 0, 0.0F, 0.0F);
        testing::internal::CaptureStderr();
        EXPECT_EQ(MAP_draw(kMapUnder | kMapUnmarked), 0);
        testing::internal::GetCapturedStderr();
        std::string drawn;
        for (const PsStroke &s : page.strokes()) {
            drawn += std::to_string(std::lround(s.points[0][1]));
        }
        EXPECT_EQ(drawn, c.expected);
    }
}

TEST_F(MapLayer, DamagedListsAreNamed)
{
    MapPage page("lat:0:0,0,0,25,17,2,2");
    RES_put("file_path", folder_.path().c_str());
    RES_put("map_file", "fi:none,fi:zeros");
    folder_.write("zeros", std::string(5000, '\0'));
    testing::internal::CaptureStderr();
    EXPECT_EQ(MAP_draw(kMapUnmarked), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "MAP_draw: Unable to open map list file: " + folder_.file("none") +
                  "\nMAP_draw: Map list file is damaged: " + folder_.file("zeros") + "\n");
}

TEST_F(MapLayer, FillsClosedOutlines)
{
    const std::string path = write(binary_map({
        {{0.0F, 0.0F}, {5.0F, 0.0F}, {5.0F, 5.0F}}
    }));
    std::vector<PsStroke> strokes = draw("lat:0:0,0,0,25,17,2,2", path + ":blue:fi=sol");
    ASSERT_FALSE(strokes.empty());
    EXPECT_TRUE(strokes[0].filled);
    strokes = draw("lat:0:0,0,0,25,17,2,2", path + ":red");
    ASSERT_FALSE(strokes.empty());
    EXPECT_TRUE(strokes[0].filled) << "once filled, all later maps of a run are";
}

TEST_F(MapLayer, MissingAndUselessFilesAreNamed)
{
    const struct {
        std::string entry;
        const char *said;
    } cases[] = {
        {folder_.file("none"),                  "MAP_process: Map file not found: "},
        {                     folder_.path(),  "MAP_process: Map file not found: "                                   },
        { folder_.write("words",  "<html><body>No map</body></html>\n<p>at all</p>\n"),
         "MAP_process: Map file is damaged: "},
        {                                  folder_.write("negative", "-5 0 0 0 0 0\n"),                                    "MAP_process: Map file is damaged: "},
        { folder_.write("short", "3 0 0 0 0 0\n1 1\n2 2\n"),                                    "MAP_process: Map file is damaged: "},
        {  folder_.write("huge",  "2000000000 0 0 0 0 0\n1 1\n2 2\n"),
         "MAP_process: Map file is damaged: "},
        {                                       folder_.write("odd", "2 0 0 0 0 0\n1 1\n2 nan\n"),                                    "MAP_process: Map file is damaged: "},
    };
    for (const auto &c : cases) {
        draw("lat:0:0,0,0,25,17,2,2", c.entry);
        EXPECT_EQ(said_, c.said + c.entry + "\n");
    }
    draw("lat:0:0,0,0,25,17,2,2", folder_.write("empty", ""));
    EXPECT_EQ(said_, "");
}

TEST_F(MapLayer, DamagedFilesEnd)
{
    const std::vector<Line> lines = {
        {{10.0F, 10.0F}, {12.5F, 20.0F}, {0.0F, 30.0F}},
        {{-5.0F, -5.0F},              {5.0F, 5.0F}              }
    };
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
    const GridLabel labels[] = {
        {"EQ",  -23.52, 0.0   },
        {"10N", -23.52, 10.0  },
        {"10S", -23.52, -10.0 },
        {"PM",  -4.0,   -15.52},
        {"20E", 16.0,   -15.52}
    };
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
