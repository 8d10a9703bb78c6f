#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <netcdf.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"

namespace {

constexpr double kKnots = 3600.0 / 1852.0;
constexpr double kDegree = 57.29577951308232;
constexpr int kHeight = 2500;

struct StationWind {
    std::string name;
    double lat, lon, direction, knots;
};

/// The stations of a file with a wind at kHeight, read through the netCDF library alone.
std::vector<StationWind> winds_in_file(const std::string &path)
{
    std::vector<StationWind> winds;
    int id = -1;
    if (nc_open(path.c_str(), NC_NOWRITE, &id) != NC_NOERR) {
        return winds;
    }
    const auto value = [id](const char *name, std::vector<size_t> at) {
        int var = -1;
        float v = 0.0F;
        nc_inq_varid(id, name, &var);
        nc_get_var1_float(id, var, at.data(), &v);
        return static_cast<double>(v);
    };
    size_t records = 0;
    nc_inq_dimlen(id, 0, &records);
    for (size_t r = 0; r < records; ++r) {
        for (size_t i = 0; i < 72; ++i) {
            const double u = value("uComponent", {r, i});
            const double v = value("vComponent", {r, i});
            if (value("levels", {i}) == kHeight && std::fabs(u) < 100.0 && std::fabs(v) < 100.0) {
                char name[7] = "";
                const size_t start[] = {r, 0};
                const size_t six[] = {1, 6};
                int var = -1;
                nc_inq_varid(id, "staName", &var);
                nc_get_vara_text(id, var, start, six, name);
                winds.push_back({name, value("staLat", {r}), value("staLon", {r}),
                                 std::atan2(-u, -v) * kDegree, std::hypot(u, v) * kKnots});
                break;
            }
        }
    }
    nc_close(id);
    return winds;
}

/// A polar stereographic map true at 60 N, 2.3 units of 100 km a cell of 25 by 17 around 39 N 97 W.
struct UsMap {
    static constexpr double kLon = -97.0;
    static constexpr double kScale = 63.7122 * 1.8660254;
    double centre = -kScale * std::tan((90.0 - 39.0) / 2.0 / kDegree);

    PsPoint on_page(double lat, double lon, const PageBox &box) const
    {
        const double r = kScale * std::tan((90.0 - lat) / 2.0 / kDegree);
        const double x = r * std::sin((lon - kLon) / kDegree);
        const double y = -r * std::cos((lon - kLon) / kDegree) - centre;
        return {(box.x0 + box.x1) / 2.0 + x / 55.2 * (box.x1 - box.x0),
                (box.y0 + box.y1) / 2.0 + y / 36.8 * (box.y1 - box.y0)};
    }
};

bool lies_in(const PsPoint &p, const PageBox &box)
{
    return p[0] > box.x0 && p[0] < box.x1 && p[1] > box.y0 && p[1] < box.y1;
}

RunResult draw_map(const TempDir &dir, const std::string &file, std::vector<std::string> words)
{
    words.insert(words.begin(), {"-va", "wbrb", "-le", std::to_string(kHeight) + "m_ag", "-de",
                                 "p," + dir.file("map.ps")});
    words.push_back(file);
    return run_profiler(words);
}

bool has_text(const PsPage &page, const std::string &text)
{
    return std::any_of(page.texts.begin(), page.texts.end(),
                       [&text](const PsText &t) { return t.text == text; });
}

TEST(LevelMap, ShowsEveryWindOfItsFile)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    const RunResult result = draw_map(dir, files[0], {"-re", "us"});
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const PsPage page = read_ps(read_file(dir.file("map.ps")));
    ASSERT_EQ(page.error, "");
    const auto box = find_border(page);
    ASSERT_TRUE(box);
    EXPECT_NEAR((box->x1 - box->x0) / (box->y1 - box->y0), 1.5, 0.01);

    const UsMap map;
    const std::vector<StationWind> winds = winds_in_file(files[0]);
    ASSERT_GT(winds.size(), 25U);
    std::vector<PsPoint> places;
    for (const StationWind &w : winds) {
        places.push_back(map.on_page(w.lat, w.lon, *box));
    }
    const auto barbs = read_barbs(page, places);
    int shown = 0;
    for (size_t i = 0; i < winds.size(); ++i) {
        SCOPED_TRACE(winds[i].name);
        const bool is_inside = lies_in(places[i], *box);
        ASSERT_EQ(barbs[i].has_value(), is_inside);
        if (!is_inside) {
            continue;
        }
        ++shown;
        EXPECT_TRUE(barbs[i]->oddities.empty()) << barbs[i]->oddities[0];
        // north leans by the longitude east of the central meridian
        const double expected = winds[i].direction - (winds[i].lon - UsMap::kLon);
        EXPECT_NEAR(std::remainder(barbs[i]->direction - expected, 360.0), 0.0, 0.5);
        EXPECT_NEAR(barbs[i]->knots, winds[i].knots, 3.01);
    }
    EXPECT_GT(shown, 20);
    EXPECT_TRUE(has_text(page, "1200Z 21 NOV 26") || has_text(page, "0000Z 22 NOV 26"));
    EXPECT_TRUE(std::any_of(page.texts.begin(), page.texts.end(), [](const PsText &t) {
        return t.text.find("2500 m") != std::string::npos;
    }));
}

TEST(LevelMap, CoastStandsInItsPlace)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    ASSERT_EQ(draw_map(dir, files[0], {"-re", "us"}).code, 0);
    const PsPage page = read_ps(read_file(dir.file("map.ps")));
    ASSERT_EQ(page.error, "");
    const auto box = find_border(page);
    ASSERT_TRUE(box);
    const struct {
        const char *name;
        double lat, lon;
    } places[] = {
        // capes and corners, from the US Geological Survey's place names and state boundaries
        {"Cape Hatteras", 35.22, -75.53},   {"Cape Mendocino", 40.44, -124.41},
        {"Cape Flattery", 48.38, -124.72},  {"Point Conception", 34.45, -120.47},
        {"Four Corners", 36.999, -109.045}, {"Cape Canaveral", 28.46, -80.53},
        {"Point Pelee", 41.91, -82.51},
    };
    const UsMap map;
    for (const auto &p : places) {
        const PsPoint at = map.on_page(p.lat, p.lon, *box);
        double nearest = 1e9;
        for (const PsStroke &s : page.strokes) {
            for (const PsPoint &q : s.points) {
                if (s.message.rfind("Map: ", 0) == 0) {
                    nearest = std::min(nearest, std::hypot(q[0] - at[0], q[1] - at[1]));
                }
            }
        }
        // a point is some 8 km; the map's points lie up to 10 km apart
        EXPECT_LT(nearest, 2.5) << p.name;
    }
}

TEST(LevelMap, DomainsOfAllKindsAndBadOnes)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    const struct {
        std::vector<std::string> words;
        int code;
        const char *said;
    } cases[] = {
        {{}, 0, ""}, // the first region
        {{"-re", "world", "-pp", "lalo:30:30"}, 0, ""},
        {{"-re", "west"}, 0, ""},
        {{"-pd", "ps:-90:0,-90,0,25,17,5,5"}, 0, ""},
        {{"-pd", "merc,0,180,25,17,9,9"}, 0, ""},
        {{"-pd", "latlon,0,0,1e30,1e30"}, 0, nullptr},
        {{"-pd", "latlon,0,0,999999999,2,1,1"}, 0, nullptr},
        {{"-pd", "39,-97,1e-30"}, 0, nullptr},
        {{"-re", "us", "-pp", "lalo:1e-9:1e-9"},
         0,
         "MAP_draw_lalo: no lines at intervals 1e-09, 1e-09\n"},
        {{"-re", "nowhere"}, 43, "region: nowhere is not known\nInvalid domain\n"},
        {{"-pd", "39,-97,0"}, 43, "Invalid domain\n"},
        {{"-pd", "39,-97,25,1,1"}, 43, "Invalid domain\n"},
        {{"-pd", "none"}, 43, "Invalid domain\n"},
        {{"-pd", "miss"}, 43, "Invalid domain\n"},
        {{"-pd", "39,x"}, 43, "DOM_decode: Invalid plot domain\nInvalid domain\n"},
        {{"-pd", "39,inf,nan"}, 43, "DOM_decode: Invalid plot domain\nInvalid domain\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.words.empty() ? "no domain" : c.words.back());
        const RunResult result = draw_map(dir, files[0], c.words);
        EXPECT_EQ(result.code, c.code);
        if (c.said) {
            EXPECT_EQ(result.err, c.said);
        }
    }
}

TEST(LevelMap, TellsEachStationItDraws)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    const RunResult map = draw_map(dir, files[0], {"-re", "us", "-me", "out4"});
    EXPECT_NE((map.out + map.err).find("PLTC2   40.18 -104.71 - "), std::string::npos);
    const RunResult section = run_profiler(
        {"-va", "wbrb", "-id", "PLTC2", "-me", "out4", "-de", "p," + dir.file("s.ps"), files[0]});
    EXPECT_NE((section.out + section.err).find("ID: PLTC2\n"), std::string::npos);
    EXPECT_EQ((section.out + section.err).find("PLTC2   40.18 -104.71 - "), std::string::npos);
}

TEST(LevelMap, MarkedMapsLieUnderAndOverTheData)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    ASSERT_EQ(draw_map(dir, files[0], {"-re", "us", "-mf=-cont.map:blue,+country.map:red"}).code,
              0);
    const std::string bytes = read_file(dir.file("map.ps"));
    const size_t under = bytes.find("Map: cont.map");
    const size_t over = bytes.find("Map: country.map");
    const size_t data = bytes.find("%%PL:2\n", under);
    ASSERT_NE(under, std::string::npos);
    ASSERT_NE(over, std::string::npos);
    EXPECT_LT(under, data);
    EXPECT_LT(data, over);
}

} // namespace
