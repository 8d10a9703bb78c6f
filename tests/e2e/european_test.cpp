// A profile of the European network, against the decode that stands beside it.

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"

namespace {

constexpr double kDegree = 57.29577951308232;
constexpr double kKnots = 1.9438445;
constexpr double kStationLat = 43.38;
constexpr double kStationLon = -3.04;
constexpr double kStationHeight = 62.0;

struct Uv {
    double u, v; ///< m/s
};

/// Heights above ground, m, and their winds, of the decode: numbers between commas, 21 of the
/// station and its beam, then nine a gate (height, mark, quality, direction and speed, ...).
std::map<double, Uv> decoded_winds(const std::string &json)
{
    std::map<double, Uv> winds;
    const size_t start = json.find("8, 59, 2, 2014");
    if (start == std::string::npos) {
        return winds;
    }
    std::vector<std::string> words;
    std::istringstream in(json.substr(start, json.find(']', start) - start));
    for (std::string word; std::getline(in, word, ',');) {
        words.push_back(word);
    }
    for (size_t i = 21; i + 4 < words.size(); i += 9) {
        if (words[i + 3].find("null") == std::string::npos) {
            const double direction = std::stod(words[i + 3]) / kDegree;
            const double speed = std::stod(words[i + 4]);
            winds[std::stod(words[i]) - kStationHeight] = {-speed * std::sin(direction),
                                                           -speed * std::cos(direction)};
        }
    }
    return winds;
}

/// The wind at a height, between the winds below and above it.
Uv wind_at(const std::map<double, Uv> &winds, double z)
{
    const auto above = winds.lower_bound(z);
    if (above->first == z) {
        return above->second;
    }
    const auto below = std::prev(above);
    const double part = (z - below->first) / (above->first - below->first);
    return {below->second.u + part * (above->second.u - below->second.u),
            below->second.v + part * (above->second.v - below->second.v)};
}

double direction_of(const Uv &wind)
{
    return std::atan2(-wind.u, -wind.v) * kDegree;
}

double knots_of(const Uv &wind)
{
    return std::hypot(wind.u, wind.v) * kKnots;
}

class European : public testing::Test {
  protected:
    void SetUp() override
    {
        path_ = shared_data("bufr/profiler_european.bufr");
        if (path_.empty()) {
            GTEST_SKIP() << "no shared data beside the checkout";
        }
        winds_ = decoded_winds(read_file(shared_data("bufr/profiler_european.json")));
        ASSERT_GT(winds_.size(), 10U);
        const std::string version = run({TYR_BINARY_DIR "/bin/profiler", "--version"}).out;
        if (version.find("without ecCodes") != std::string::npos) {
            GTEST_SKIP() << "built without ecCodes";
        }
    }

    TempDir dir_;
    std::string path_;
    std::map<double, Uv> winds_;
};

TEST_F(European, SectionShowsTheDecodedWinds)
{
    const RunResult result =
        run_profiler({"-va", "wbrb", "-id", "08059", "-pp", "bottom=0,top=1000,step=50", "-de",
                      "p," + dir_.file("s.ps"), path_});
    ASSERT_EQ(result.code, 0) << result.err;
    const DrawnSection section =
        read_section(read_file(dir_.file("s.ps")), {.bottom = 0.0, .top = 1000.0, .step = 50.0});
    ASSERT_EQ(section.error, "");
    std::map<int, const DrawnBarb *> drawn;
    for (const DrawnBarb &barb : section.barbs) {
        drawn[static_cast<int>(std::lround(barb.height))] = &barb;
    }
    int compared = 0;
    for (int z = 150; z < static_cast<int>(winds_.rbegin()->first); z += 50) {
        SCOPED_TRACE(z);
        const Uv wind = wind_at(winds_, z);
        if (knots_of(wind) < 3.1) {
            continue; // drawn as calm
        }
        ASSERT_EQ(drawn.count(z), 1U);
        ++compared;
        EXPECT_NEAR(std::remainder(drawn[z]->direction - direction_of(wind), 360.0), 0.0, 0.5);
        EXPECT_NEAR(drawn[z]->knots, knots_of(wind), 3.01);
    }
    EXPECT_GT(compared, 5);
    EXPECT_LT(drawn.rbegin()->first, winds_.rbegin()->first + 60.0)
        << "no wind above the last good";
}

/// A conic map that is true at 35 and 65 N, 2.4 units of 100 km a cell of 25 by 17 around 52 N 12
/// E.
struct EuropeMap {
    static constexpr double kLon = 12.0;
    static double tangent(double lat) { return std::tan((45.0 + lat / 2.0) / kDegree); }
    double n = std::log(std::cos(35.0 / kDegree) / std::cos(65.0 / kDegree)) /
               std::log(tangent(65.0) / tangent(35.0));

    double radius(double lat) const
    {
        return 63.7122 * std::cos(35.0 / kDegree) / n * std::pow(tangent(35.0) / tangent(lat), n);
    }
    PsPoint on_page(double lat, double lon, const PageBox &box) const
    {
        const double angle = n * (lon - kLon) / kDegree;
        const double x = radius(lat) * std::sin(angle);
        const double y = radius(52.0) - radius(lat) * std::cos(angle);
        return {(box.x0 + box.x1) / 2.0 + x / 57.6 * (box.x1 - box.x0),
                (box.y0 + box.y1) / 2.0 + y / 38.4 * (box.y1 - box.y0)};
    }
};

TEST_F(European, MapOfEuropeShowsTheDecodedWind)
{
    constexpr double kHeight = 434.0; // of a gate: 496 m above the sea
    ASSERT_EQ(winds_.count(kHeight), 1U);
    const RunResult result = run_profiler(
        {"-va", "wbrb", "-le", "434m_ag", "-re", "eur", "-de", "p," + dir_.file("m.ps"), path_});
    ASSERT_EQ(result.code, 0) << result.err;
    const PsPage page = read_ps(read_file(dir_.file("m.ps")));
    ASSERT_EQ(page.error, "");
    const auto box = find_border(page);
    ASSERT_TRUE(box);
    const EuropeMap map;
    const auto barbs = read_barbs(page, {map.on_page(kStationLat, kStationLon, *box)});
    ASSERT_TRUE(barbs[0]);
    EXPECT_TRUE(barbs[0]->oddities.empty()) << barbs[0]->oddities[0];
    const double lean = map.n * (kStationLon - EuropeMap::kLon);
    const double expected = direction_of(winds_[kHeight]) - lean;
    EXPECT_NEAR(std::remainder(barbs[0]->direction - expected, 360.0), 0.0, 0.5);
    EXPECT_NEAR(barbs[0]->knots, knots_of(winds_[kHeight]), 3.01);
}

} // namespace
