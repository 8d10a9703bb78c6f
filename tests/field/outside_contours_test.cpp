// Real fields drawn on paper against another contourer: lengths of lines and areas of bands, read
// back from the page in grid lengths.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/run.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/field/contour.h"
#include "tyr/gks/gks.h"
#include "tyr/grid_files/grid_file.h"
#include "tyr/grid_math/sample.h"
#include "tyr/plot/area.h"
#include "tyr/plot/view.h"

namespace {

constexpr const char *kPython = "/usr/bin/python3"; // Debian's, which has Debian's contourpy
constexpr int kLevels = 10;
constexpr double kWithin = 0.01;
/// A saddle that the other contourer joins the other way, which goes by the mean of its corners.
constexpr double kSaddle = 1.0;

constexpr const char *kColours[kLevels] = {"red",    "green", "blue", "cyan",   "magenta",
                                           "yellow", "brown", "LRed", "LGreen", "LBlue"};

struct Field {
    const char *file;
    int index;
};
constexpr Field kFields[] = {
    {"CMC_reg_WIND_ISBL_300_ps60km_2010052400_P012.grib", 0},
    {"ECMWF.grib1", 0},
    {"HPPI89_KWBC.grib1", 0},
    {"alternate-scanning.grib", 0},
    {"ds.sky.grib2", 0},
    {"eta.grb", 0},
    {"eta.grb", 107},
    {"eta.grb", 131},
    {"fields_with_missing_values.grib", 0},
    {"gdas.t12z.pgrb2.0p25.f000.12", 0},
    {"lambert_grid.grib", 0},
    {"regular_ll_msl.grib", 0},
    {"scanning_mode_64.grib", 0},
    {"sref.pds2.grib2", 0},
    {"thinGrid.grib1", 0},
};

class Grid {
  public:
    Grid(const std::string &path, int index)
    {
        GRD_init(&g);
        int kind = kGridUnknown;
        const int handle = GRD_open(path.c_str(), 0, &kind);
        read_ = GRD_read(handle, &g, 0, &index) == 0;
        GRD_close(handle);
    }
    ~Grid() { GRD_free(&g); }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;
    bool read() const { return read_; }
    size_t count() const
    {
        return static_cast<size_t>(g.domain.nx) * static_cast<size_t>(g.domain.ny);
    }
    GridRec g;

  private:
    bool read_ = false;
};

/// Lengths of lines and areas of bands by level.
struct Measure {
    std::vector<double> lengths = std::vector<double>(kLevels);
    std::vector<double> areas = std::vector<double>(kLevels);
};

/// Levels over the field's range that lie off the steps of packed values: what lies on a level
/// belongs to the band above it here and to the one below there.
std::vector<float> levels_of(GridRec *grid)
{
    float high = kMissing, low = kMissing;
    GRD_max_min(grid, &high, &low);
    std::vector<float> levels;
    for (int i = 0; i < kLevels; ++i)
        levels.push_back(low + (high - low) * (static_cast<float>(i) + 0.3713F) / kLevels);
    return levels;
}

Measure by_other(const Grid &grid, const std::vector<float> &levels)
{
    const TempDir folder;
    const std::string bytes(reinterpret_cast<const char *>(grid.g.values), 4 * grid.count());
    std::vector<std::string> words = {kPython,
                                      TYR_SOURCE_DIR "/tests/field/outside_contours.py",
                                      folder.write("field", bytes),
                                      std::to_string(grid.g.domain.nx),
                                      std::to_string(grid.g.domain.ny),
                                      std::to_string(kMissing)};
    for (const float level : levels) {
        char text[32];
        std::snprintf(text, sizeof text, "%.9g", static_cast<double>(level));
        words.push_back(text);
    }
    const RunResult result = run(words);
    EXPECT_EQ(result.code, 0) << result.err;
    std::istringstream in(result.out);
    Measure m;
    for (size_t i = 0; i < kLevels; ++i)
        in >> m.lengths[i] >> m.areas[i];
    EXPECT_FALSE(in.fail()) << result.out;
    return m;
}

/// A page of the grid on its own map, in grid lengths.
PsPage drawn(GridRec *grid, const char *format)
{
    RES_put("plot_format", format);
    PLT_set_margins(0.05F, 0.05F, 0.05F, 0.05F);
    PlotSession session(DOM_aspect(&grid->domain));
    EXPECT_EQ(session.begun(), 0);
    PLT_set_domain(&grid->domain);
    float view[4];
    PLT_get_viewport(view);
    CONT_setup(0, -1, grid, nullptr, nullptr);
    EXPECT_EQ(CONT_draw(grid), 0);
    PsPage page = session.finish();
    EXPECT_EQ(page.error, "");
    for (PsStroke &s : page.strokes)
        for (PsPoint &p : s.points)
            p = {(p[0] - view[0]) / (view[1] - view[0]) * (grid->domain.nx - 1),
                 (p[1] - view[2]) / (view[3] - view[2]) * (grid->domain.ny - 1)};
    return page;
}

double length_of(const PsStroke &s)
{
    double length = 0.0;
    const size_t last = s.points.size() - (s.closed ? 0 : 1);
    for (size_t i = 0; i < last; ++i) {
        const PsPoint &q = s.points[(i + 1) % s.points.size()];
        length += std::hypot(q[0] - s.points[i][0], q[1] - s.points[i][1]);
    }
    return length;
}

double area_of(const PsStroke &s)
{
    double sum = 0.0;
    for (size_t i = 0; i < s.points.size(); ++i) {
        const PsPoint &q = s.points[(i + 1) % s.points.size()];
        sum += s.points[i][0] * q[1] - q[0] * s.points[i][1];
    }
    return std::fabs(sum) / 2.0;
}

/// Levels come in order and each in a colour of its own: a new colour is the next level that the
/// other contourer has found anything at.
class LevelCounter {
  public:
    explicit LevelCounter(const std::vector<double> &expected) : expected_(expected) {}
    size_t level(const PsStroke &s)
    {
        const auto known = std::find(seen_.begin(), seen_.end(), s.rgb);
        if (known == seen_.end()) {
            seen_.push_back(s.rgb);
            do
                ++next_;
            while (next_ < kLevels && expected_[static_cast<size_t>(next_)] == 0.0);
            order_.push_back(static_cast<size_t>(std::min(next_, kLevels - 1)));
            return order_.back();
        }
        return order_[static_cast<size_t>(known - seen_.begin())];
    }

  private:
    const std::vector<double> &expected_;
    std::vector<std::array<double, 3>> seen_;
    std::vector<size_t> order_;
    int next_ = -1;
};

Measure ours(GridRec *grid, const std::vector<float> &levels, const Measure &expected)
{
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    for (const char *name : {"plot_param", "con_interval", "con_base", "color_cont"})
        RES_put(name, nullptr);
    std::string rows;
    for (size_t i = 0; i < kLevels; ++i) {
        char text[64];
        std::snprintf(text, sizeof text, "%s%.9g:%s", i > 0 ? "," : "",
                      static_cast<double>(levels[i]), kColours[i]);
        rows += text;
    }
    RES_put("color_fill", rows.c_str());
    RES_put("color_cont", "none");
    Measure m;
    const PsPage bands = drawn(grid, "cf:lab=0");
    LevelCounter band(expected.areas);
    for (const PsStroke &s : bands.strokes)
        if (s.filled)
            m.areas[band.level(s)] += area_of(s);
    const PsPage lines = drawn(grid, "ln:lab=0");
    LevelCounter line(expected.lengths);
    for (const PsStroke &s : lines.strokes)
        if (!s.filled && s.text < 0)
            m.lengths[line.level(s)] += length_of(s);
    RES_put("color_fill", nullptr);
    RES_put("color_cont", nullptr);
    return m;
}

/// Expects two columns to agree. @return the largest part by which they differ
double compare(const std::vector<double> &found, const std::vector<double> &expected)
{
    double largest = 0.0;
    for (size_t i = 0; i < kLevels; ++i) {
        EXPECT_NEAR(found[i], expected[i], kWithin * expected[i] + kSaddle) << "level " << i;
        largest = expected[i] > 0.0 ? std::max(largest, std::fabs(found[i] / expected[i] - 1.0))
                                    : largest;
    }
    return largest;
}

} // namespace

TEST(OutsideContours, LengthsAndAreasOfRealFields)
{
    if (run({kPython, "-c", "import contourpy"}).code != 0)
        GTEST_SKIP() << "no contourpy for " << kPython;
    if (shared_data("grib").empty())
        GTEST_SKIP() << "no folder ../shared/data/grib";
    for (const Field &f : kFields) {
        SCOPED_TRACE(std::string(f.file) + " " + std::to_string(f.index));
        Grid grid(shared_data(std::string("grib/") + f.file), f.index);
        ASSERT_TRUE(grid.read());
        const std::vector<float> levels = levels_of(&grid.g);
        const Measure expected = by_other(grid, levels);
        const Measure found = ours(&grid.g, levels, expected);
        const double lengths = compare(found.lengths, expected.lengths);
        const double areas = compare(found.areas, expected.areas);
        std::printf("%-52s %4d x %4d  lines %.2f %%, bands %.2f %%\n", f.file, grid.g.domain.nx,
                    grid.g.domain.ny, 100.0 * lengths, 100.0 * areas);
    }
}
