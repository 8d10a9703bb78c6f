// Bands of made fields on paper, rendered: the colour of each pixel is that of its value's band,
// the field is covered wholly, and lines lie over the bands.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/run.h"
#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/field/contour.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/area.h"
#include "tyr/plot/view.h"

namespace {

using Rgb = std::array<int, 3>;
struct Colour {
    const char *name;
    Rgb rgb; ///< in data/tyr.clr
};
constexpr Colour kBands[] = {
    {"red", {0xE6, 0x26, 0x1F}},  {"green", {0x1F, 0xA8, 0x3D}},   {"blue", {0x3A, 0x6B, 0xE8}},
    {"cyan", {0x12, 0xA5, 0xB5}}, {"magenta", {0xC6, 0x3B, 0xC6}}, {"yellow", {0xD9, 0xA9, 0x0B}},
};
constexpr int kPaper = -1, kLine = -2, kOther = -3; ///< pixels that are no band
constexpr int kDotsPerInch = 100;

/// Value at a place in grid lengths from the lower left.
using Value = std::function<float(double x, double y)>;

/// The rendered grid: pixels by columns and rows from its lower left.
class Picture {
  public:
    Picture(int nx, int ny) : nx_(nx), ny_(ny) {}

    /// Reads a page that lies on its side.
    void read(const std::string &ppm)
    {
        std::istringstream in(ppm);
        std::string magic, remark;
        in >> magic >> std::ws;
        if (in.peek() == '#')
            std::getline(in, remark);
        in >> across_ >> down_;
        const size_t count = 3U * static_cast<size_t>(across_) * static_cast<size_t>(down_);
        ASSERT_TRUE(magic == "P6" && count > 0 && ppm.size() > count) << magic;
        bytes_ = ppm.substr(ppm.size() - count);
    }

    int columns() const { return columns_; }
    int rows() const { return rows_; }
    double x(int column) const { return (column + 0.5) * (nx_ - 1) / columns_; }
    double y(int row) const { return (row + 0.5) * (ny_ - 1) / rows_; }

    /// Band, kPaper, kLine or kOther.
    int band(int column, int row) const
    {
        const Rgb c = pixel(column, row);
        const auto is = [&c](const Rgb &o) {
            return std::abs(c[0] - o[0]) < 3 && std::abs(c[1] - o[1]) < 3 &&
                   std::abs(c[2] - o[2]) < 3;
        };
        for (size_t i = 0; i < std::size(kBands); ++i)
            if (is(kBands[i].rgb))
                return static_cast<int>(i);
        return is({255, 255, 255}) ? kPaper : is({0, 0, 0}) ? kLine : kOther;
    }

    /// Finds the grid's rectangle: all that isn't paper.
    void find_place()
    {
        int low[2] = {across_, down_};
        int high[2] = {-1, -1};
        for (int j = 0; j < down_; ++j)
            for (int i = 0; i < across_; ++i)
                if (raw(i, j) != Rgb{255, 255, 255}) {
                    low[0] = std::min(low[0], i);
                    high[0] = std::max(high[0], i);
                    low[1] = std::min(low[1], j);
                    high[1] = std::max(high[1], j);
                }
        left_ = low[0];
        top_ = low[1];
        rows_ = high[0] - low[0] + 1;
        columns_ = high[1] - low[1] + 1;
    }

  private:
    Rgb raw(int i, int j) const
    {
        const size_t at =
            3 * (static_cast<size_t>(j) * static_cast<size_t>(across_) + static_cast<size_t>(i));
        const auto byte = [this, at](size_t k) {
            return static_cast<int>(static_cast<unsigned char>(bytes_[at + k]));
        };
        return {byte(0), byte(1), byte(2)};
    }
    /// The plot's x runs up the page, its y to the left.
    Rgb pixel(int column, int row) const
    {
        return raw(left_ + rows_ - 1 - row, top_ + columns_ - 1 - column);
    }

    int nx_, ny_;
    int across_ = 0, down_ = 0;
    int left_ = 0, top_ = 0, columns_ = 0, rows_ = 0;
    std::string bytes_;
};

class Grid {
  public:
    Grid(int nx, int ny, const Value &value)
    {
        GRD_init(&g);
        g.domain.proj = kProjLatLon;
        g.domain.clat = g.domain.clon = 0.0F;
        g.domain.dx = g.domain.dy = 1.0F;
        g.domain.nx = nx;
        g.domain.ny = ny;
        GRD_alloc(&g);
        for (int row = 0; row < ny; ++row)
            for (int column = 0; column < nx; ++column)
                g.values[row * nx + column] = value(column, ny - 1 - row);
    }
    ~Grid() { GRD_free(&g); }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;
    GridRec g;
};

/// Draws a field's bands from each of `levels` on, and lines where `format` is "lcf".
Picture rendered(GridRec *grid, const char *format, const std::vector<float> &levels)
{
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    std::string rows;
    for (size_t i = 0; i < levels.size(); ++i)
        rows += std::to_string(levels[i]) + ":" + kBands[i].name + ",";
    for (const char *name : {"plot_param", "con_interval", "con_base"})
        RES_put(name, nullptr);
    RES_put("color_fill", rows.c_str());
    RES_put("color_cont", "black");
    RES_put("plot_format", format);
    PLT_set_margins(0.05F, 0.05F, 0.05F, 0.05F);
    PlotSession session(DOM_aspect(&grid->domain));
    EXPECT_EQ(session.begun(), 0);
    PLT_set_domain(&grid->domain);
    CONT_setup(0, -1, grid, nullptr, nullptr);
    EXPECT_EQ(CONT_draw(grid), 0);
    const PsPage page = session.finish();
    EXPECT_EQ(page.error, "");
    const RunResult gs =
        run({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-sDEVICE=ppmraw",
             "-r" + std::to_string(kDotsPerInch), "-sOutputFile=-", session.path()});
    EXPECT_EQ(gs.code, 0) << gs.err;
    Picture picture(grid->domain.nx, grid->domain.ny);
    picture.read(gs.out);
    picture.find_place();
    return picture;
}

int band_of(float value, const std::vector<float> &levels)
{
    return static_cast<int>(std::upper_bound(levels.begin(), levels.end(), value) -
                            levels.begin()) -
           1;
}

/// Expects each pixel's band to be that of the value at a place within `reach` pixels of it.
void expect_bands(const Picture &p, const Value &value, const std::vector<float> &levels)
{
    constexpr double kReach[] = {-1.5, -0.75, 0.0, 0.75, 1.5};
    const double across = p.x(1) - p.x(0);
    const double up = p.y(1) - p.y(0);
    int wrong = 0;
    for (int row = 0; row < p.rows(); ++row)
        for (int column = 0; column < p.columns(); ++column) {
            const int found = p.band(column, row);
            const auto fits_at = [&](double dx, double dy) {
                const float at = value(p.x(column) + dx * across, p.y(row) + dy * up);
                return found == (is_missing(at) ? kPaper : band_of(at, levels));
            };
            bool fits = fits_at(0.0, 0.0);
            for (size_t i = 0; i < 25 && !fits; ++i)
                fits = fits_at(kReach[i / 5], kReach[i % 5]);
            if (!fits && ++wrong < 4) {
                ADD_FAILURE() << "band " << found << " at " << p.x(column) << ", " << p.y(row)
                              << ", value " << value(p.x(column), p.y(row));
            }
        }
    EXPECT_EQ(wrong, 0);
}

} // namespace

class BandPicture : public testing::Test {
  protected:
    void SetUp() override
    {
        if (!have_program("gs"))
            GTEST_SKIP() << "ghostscript isn't installed";
    }
    void TearDown() override
    {
        RES_put("color_fill", nullptr);
        RES_put("color_cont", nullptr);
    }
};

TEST_F(BandPicture, PixelsHaveTheColourOfTheirValue)
{
    const auto hole = [](double x, double y, double from) { // a corner of four cells is Missing
        return std::fabs(x - from) < 1.0 && std::fabs(y - from) < 1.0;
    };
    const struct {
        const char *name;
        int nx, ny;
        Value field;
        std::vector<float> levels;
    } cases[] = {
        {"a plane aslant",
         31,
         21,
         [](double x, double y) { return static_cast<float>(x + y); },
         {-1.0F, 7.3F, 15.9F, 24.1F, 33.0F, 41.7F}},
        {"a plane through grid values",
         31,
         21,
         [](double x, double) { return static_cast<float>(x); },
         {0.0F, 5.0F, 10.0F, 15.0F, 20.0F, 25.0F}},
        {"circles",
         61,
         61,
         [](double x, double y) { return static_cast<float>(std::hypot(x - 30.0, y - 30.0)); },
         {0.0F, 5.2F, 10.1F, 15.3F, 20.0F, 29.4F}},
        {"a roof",
         31,
         21,
         [](double x, double) { return static_cast<float>(10.0 - std::fabs(x - 15.0)); },
         {-9.0F, 2.5F, 5.0F, 10.0F}},
        {"holes",
         31,
         31,
         [&hole](double x, double y) {
             return hole(x, y, 10.0) || hole(x, y, 20.0) ? kMissing : static_cast<float>(x - y);
         },
         {-99.0F, -20.5F, -10.5F, 0.5F, 10.5F, 20.5F}},
        {"bands thinner than cells",
         5,
         4,
         [](double x, double y) { return static_cast<float>(4.0 * x + y); },
         {0.0F, 0.7F, 1.9F, 2.6F, 9.3F, 9.9F}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Grid grid(c.nx, c.ny, c.field);
        const Picture p = rendered(&grid.g, "cf:lab=0", c.levels);
        ASSERT_GT(std::min(p.columns(), p.rows()), 400);
        const double aspect = static_cast<double>(p.columns()) / p.rows();
        EXPECT_NEAR(aspect, (c.nx - 1.0) / (c.ny - 1.0), 0.01) << "covers the grid";
        expect_bands(p, c.field, c.levels);
    }
}

TEST_F(BandPicture, SaddlesAreCutAsTheirSumTells)
{
    // lower left and upper right are 1, the others 0: the sum of a level's crossings is 4 - 4 level
    const auto corner = [](int i, int j) { return i == j ? 1.0F : 0.0F; };
    for (const double level : {0.3, 0.5, 0.7}) {
        SCOPED_TRACE(level);
        Grid grid(2, 2, [&corner](double x, double y) {
            return corner(static_cast<int>(x), static_cast<int>(y));
        });
        const Picture p = rendered(&grid.g, "cf:lab=0", {-1.0F, static_cast<float>(level)});
        const bool cuts_high = 4.0 - 4.0 * level < 2.0;
        expect_bands(p,
                     [level, cuts_high](double x, double y) {
                         // how far a place is from the two corners that are cut off, along the
                         // sides
                         const double near = cuts_high ? std::min(x + y, 2.0 - x - y)
                                                       : std::min(1.0 - x + y, 1.0 + x - y);
                         const bool is_cut = near < (cuts_high ? 1.0 - level : level);
                         return is_cut == cuts_high ? 1.0F : 0.0F;
                     },
                     {-1.0F, static_cast<float>(level)});
    }
}

TEST_F(BandPicture, PlateauOnALevelBelongsToTheBandAboveIt)
{
    for (const float around : {0.0F, 10.0F}) {
        SCOPED_TRACE(around);
        const auto field = [around](double x, double y) {
            const auto out = [](double d) { return std::max(std::fabs(d - 5.0) - 2.0, 0.0); };
            const double part = std::min(out(x) + out(y), 1.0);
            return 5.0F + (around - 5.0F) * static_cast<float>(part);
        };
        Grid grid(11, 11, field);
        const std::vector<float> levels = {-1.0F, 2.5F, 5.0F, 7.5F};
        expect_bands(rendered(&grid.g, "cf:lab=0", levels), field, levels);
    }
}

TEST_F(BandPicture, LinesLieOverTheBandsOfAllCells)
{
    Grid grid(41, 41, [](double x, double y) {
        return static_cast<float>(std::hypot(x - 20.0, y - 20.0));
    });
    const std::vector<float> levels = {0.0F, 4.0F, 9.5F, 15.0F};
    const Picture p = rendered(&grid.g, "lcf:lab=0:wi=4", levels);
    const double pixel = p.x(1) - p.x(0);
    int gaps = 0;
    for (const double radius : {4.0, 9.5, 15.0})
        for (double angle = 0.0; angle < 2.0 * M_PI; angle += 0.5 * pixel / radius) {
            const double most = 0.5 / radius + pixel; // of a chord across a cell's corner
            bool is_line = false;
            for (double r = radius - most; r <= radius + most; r += 0.5 * pixel)
                is_line |= p.band(static_cast<int>((20.0 + r * std::cos(angle)) / pixel),
                                  static_cast<int>((20.0 + r * std::sin(angle)) / pixel)) == kLine;
            gaps += is_line ? 0 : 1;
        }
    EXPECT_EQ(gaps, 0);
}
