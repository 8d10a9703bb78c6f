// The analysis equals its definition, point by point and station by station.

#include <cmath>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"
#include "tyr/analysis/barnes.h"
#include "tyr/analysis/observations.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/row_bands.h"

namespace {

constexpr int kNx = 17;
constexpr int kNy = 13;

DomainRec flat_domain(float dx = 1.5F, float dy = 0.75F)
{
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjLatLon;
    domain.clat = 40.0F;
    domain.clon = -90.0F;
    domain.dx = dx;
    domain.dy = dy;
    domain.nx = kNx;
    domain.ny = kNy;
    return domain;
}

struct Case {
    const char *name;
    float filter, radius;
    int passes;
    float convergence;
    int minimum;
    float replacement;
};

struct Stations {
    std::vector<float> x, y, value;
};

/// Stations in and around the window, some without a value, one without a place.
Stations make_stations(int count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> x(-14.0F, 14.0F);
    std::uniform_real_distribution<float> y(34.0F, 46.0F);
    std::uniform_real_distribution<float> value(-20.0F, 30.0F);
    Stations s;
    for (int i = 0; i < count; i++) {
        s.x.push_back(x(random));
        s.y.push_back(y(random));
        s.value.push_back(i % 9 == 4 ? kMissing : value(random));
    }
    s.x[1] = kMissing;
    return s;
}

/// The definition in plain loops: the point outside, the station inside.
class Plain {
  public:
    Plain(const Case &c, const DomainRec &domain, Stations s) : c_(c), d_(domain), s_(std::move(s))
    {
        const float left = -d_.dx * (kNx - 1) / 2.0F; // the window's corner, from the centre
        const float top = 40.0F + d_.dy * (kNy - 1) / 2.0F;
        for (size_t k = 0; k < s_.x.size(); k++) {
            s_.y[k] = is_missing(s_.x[k]) ? kMissing : (top - s_.y[k]) / d_.dy;
            s_.x[k] = is_missing(s_.x[k]) ? kMissing : (s_.x[k] - left) / d_.dx;
        }
    }

    std::vector<double> analyse()
    {
        std::vector<double> grid(kNx * kNy, 0.0);
        std::vector<double> values(s_.value.begin(), s_.value.end());
        double filter = c_.filter;
        for (int n = 1; n <= c_.passes; n++) {
            pass(n, filter, values, &grid);
            values = residuals(grid);
            filter *= c_.convergence;
        }
        return grid;
    }

  private:
    void pass(int n, double filter, const std::vector<double> &values, std::vector<double> *grid)
    {
        const double reach = double{c_.radius} * c_.radius * d_.dx * d_.dx;
        for (int j = 0; j < kNy; j++) {
            for (int i = 0; i < kNx; i++) {
                double sum = 0.0, weight = 0.0;
                int count = 0;
                for (size_t k = 0; k < values.size(); k++) {
                    const double a = (s_.x[k] - static_cast<float>(i)) * d_.dx;
                    const double b = (s_.y[k] - static_cast<float>(j)) * d_.dy;
                    if (is_missing(s_.x[k]) || a * a + b * b > reach) {
                        continue;
                    }
                    double value = values[k];
                    if (n == 1 && value == kMissing) {
                        value = c_.replacement;
                        s_.value[k] = c_.replacement;
                    }
                    if (value != kMissing) {
                        const double w = std::exp(-(a * a + b * b) / filter);
                        sum += value * w;
                        weight += w;
                        count++;
                    }
                }
                double &point = (*grid)[static_cast<size_t>(j * kNx + i)];
                point = weight == 0.0 || count < c_.minimum ? kMissing
                        : n == 1                            ? sum / weight
                                                            : point + sum / weight;
            }
        }
    }

    std::vector<double> residuals(const std::vector<double> &grid) const
    {
        std::vector<double> out;
        for (size_t k = 0; k < s_.x.size(); k++) {
            double residual = kMissing;
            const float x = s_.x[k], y = s_.y[k];
            if (!is_missing(x) && x >= 0 && y >= 0 && x < kNx - 1 && y < kNy - 1 &&
                !is_missing(s_.value[k])) {
                const auto at = [&](int i, int j) {
                    return grid[static_cast<size_t>(j * kNx + i)];
                };
                const int i = static_cast<int>(x), j = static_cast<int>(y);
                const double p = x - static_cast<float>(i), q = y - static_cast<float>(j);
                if (at(i, j) != kMissing && at(i + 1, j) != kMissing && at(i, j + 1) != kMissing &&
                    at(i + 1, j + 1) != kMissing) {
                    residual =
                        s_.value[k] - (at(i, j) * (1 - q) * (1 - p) + at(i + 1, j) * (1 - q) * p +
                                       at(i, j + 1) * (1 - p) * q + at(i + 1, j + 1) * p * q);
                }
            }
            out.push_back(residual);
        }
        return out;
    }

    Case c_;
    DomainRec d_;
    Stations s_;
};

void set(const Case &c)
{
    OBJ_reset();
    OBJ_set_filter(c.filter);
    OBJ_set_radius(c.radius);
    OBJ_set_passes(c.passes);
    OBJ_set_convergence(c.convergence);
    OBJ_set_min_stations(c.minimum);
    OBJ_set_missing(c.replacement);
}

std::vector<float> analyse(const Case &c, const DomainRec &domain, Stations s)
{
    set(c);
    GridRec grid;
    GRD_init(&grid);
    grid.domain = domain;
    GRD_alloc(&grid);
    s.value.reserve(1); // no stations are still a field
    float *values[] = {s.value.data()};
    EXPECT_EQ(OBJ_analyze(s.x.data(), s.y.data(), values, static_cast<int>(s.x.size()), 1, &grid),
              0);
    std::vector<float> out(grid.values, grid.values + kNx * kNy);
    GRD_free(&grid);
    return out;
}

TEST(Barnes, EqualsItsDefinition)
{
    const Case cases[] = {
        {"one wide pass", 4.0F, 1000.0F, 1, 0.2F, 1, kMissing},
        {"three passes", 4.0F, 1000.0F, 3, 0.3F, 1, kMissing},
        {"short radius", 1.0F, 1.4F, 1, 0.2F, 1, kMissing},
        {"radius and passes", 2.0F, 2.5F, 4, 0.5F, 1, kMissing},
        {"two at least", 2.0F, 1.2F, 2, 0.4F, 2, kMissing},
        {"replaced", 3.0F, 3.0F, 2, 0.4F, 1, 5.0F},
        {"narrow filter", 0.05F, 6.0F, 1, 0.2F, 1, kMissing},
        {"points without weight", 0.0005F, 1000.0F, 2, 0.5F, 1, kMissing},
        {"counted without weight", 0.0005F, 1000.0F, 1, 0.2F, 2, kMissing},
    };
    for (const auto &[dx, dy] : {std::pair{1.5F, 0.75F}, std::pair{1.0F, 1.0F}}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(c.name);
            const DomainRec domain = flat_domain(dx, dy);
            const Stations stations = make_stations(60);
            const std::vector<float> ours = analyse(c, domain, stations);
            const std::vector<double> plain = Plain(c, domain, stations).analyse();
            for (size_t k = 0; k < ours.size(); k++) {
                ASSERT_NEAR(ours[k], plain[k], 1e-4 + 1e-5 * std::fabs(plain[k])) << "point " << k;
            }
        }
    }
}

TEST(Barnes, TwoThreadsGiveTheSameBytes)
{
    const Case c = {"", 4.0F, 5.0F, 3, 0.3F, 1, kMissing};
    GRD_set_threads(1);
    const std::vector<float> one = analyse(c, flat_domain(), make_stations(3000));
    GRD_set_threads(2);
    EXPECT_EQ(one, analyse(c, flat_domain(), make_stations(3000)));
    GRD_set_threads(0);
}

TEST(Barnes, FewStationsAndOddOnes)
{
    const DomainRec domain = flat_domain();
    const Case wide = {"", 1000.0F, 1000.0F, 1, 0.2F, 1, kMissing};
    for (const float value : analyse(wide, domain, {{3.0F}, {40.0F}, {7.5F}})) {
        EXPECT_FLOAT_EQ(value, 7.5F);
    }
    for (const float value : analyse(wide, domain, {{3.0F}, {40.0F}, {1e-12F}})) {
        EXPECT_EQ(value, 0.0F);
    }
    const Case three = {"", 1000.0F, 1000.0F, 3, 0.2F, 3, kMissing};
    const Stations odd[] = {
        {{}, {}, {}},                                 // none
        {{3.0F, 4.0F}, {40.0F, 40.0F}, {1.0F, 2.0F}}, // fewer than the minimum
        {{NAN, INFINITY, 1e30F, 1.0F}, {40.0F, 40.0F, -1e30F, 40.0F}, {1.0F, 1.0F, 1.0F, NAN}},
    };
    for (const Stations &stations : odd) {
        for (const float value : analyse(three, domain, stations)) {
            EXPECT_EQ(value, kMissing);
        }
    }
}

TEST(Barnes, WordsOfTheUser)
{
    RES_put("object_param", ",2.5,5,1.0,0"); // passes and convergence beyond their limits
    OBJ_reset();
    OBJ_read_params();
    RES_put("plot_param", "miss=3.5");
    GridRec grid;
    GRD_init(&grid);
    grid.domain = flat_domain();
    GRD_alloc(&grid);
    float x[] = {0.0F}, y[] = {40.0F}, value[] = {kMissing};
    float *values[] = {value};
    EXPECT_EQ(OBJ_analyze(x, y, values, 1, 1, &grid), 0);
    EXPECT_EQ(value[0], 3.5F);
    const int centre = kNy / 2 * kNx + kNx / 2;
    EXPECT_FLOAT_EQ(grid.values[centre], 3.5F);
    EXPECT_EQ(grid.values[centre + 3], kMissing); // 2.5 grid lengths
    float *none[] = {nullptr};
    EXPECT_EQ(OBJ_analyze(x, y, none, 1, 1, &grid), -1);
    GRD_free(&grid);
}

TEST(Barnes, AgreesWithNumpysSums)
{
    std::ifstream file(TYR_SOURCE_DIR "/tests/data/analysis.txt");
    std::string comment;
    while (file.peek() == '#') {
        std::getline(file, comment);
    }
    int nx = 0, ny = 0, stations = 0, passes = 0;
    float filter = 0.0F, factor = 0.0F;
    file >> nx >> ny >> stations >> filter >> factor >> passes;
    ASSERT_GT(stations, 0);
    DomainRec domain = flat_domain(1.0F, 1.0F);
    domain.nx = nx;
    domain.ny = ny;
    std::vector<float> x(static_cast<size_t>(stations)), y(x), value(x);
    for (size_t k = 0; k < x.size(); ++k) {
        file >> x[k] >> y[k] >> value[k];
        x[k] -= static_cast<float>(nx - 1) / 2.0F; // from grid to plot coordinates
        y[k] = domain.clat + static_cast<float>(ny - 1) / 2.0F - y[k];
    }
    RES_put("object_param", "");
    RES_put("plot_param", "");
    OBJ_reset();
    OBJ_set_filter(filter);
    OBJ_set_convergence(factor);
    OBJ_set_passes(passes);
    GridRec grid;
    GRD_init(&grid);
    grid.domain = domain;
    ASSERT_EQ(GRD_alloc(&grid), 1);
    float *values[] = {value.data()};
    ASSERT_EQ(OBJ_analyze(x.data(), y.data(), values, stations, 1, &grid), 0);
    for (int i = 0; i < nx * ny; ++i) {
        double expected = 0.0;
        file >> expected;
        EXPECT_NEAR(grid.values[i], expected, 2e-5) << i % nx << ", " << i / nx;
    }
    EXPECT_TRUE(file.good());
    GRD_free(&grid);
}

TEST(Barnes, RawFileToGrid)
{
    const TempDir dir;
    const std::string path = dir.write("temps.raw", "TYRRAW\n2024-05-01 12:00\n!%1.0f\n"
                                                    "id lat lon tmpf $\n"
                                                    "AAA 40.0 -90.0 55\nBBB 41.0 -88.5 -\n"
                                                    "CCC 42.0 -91.5 65\nDDD 37.5 -87.0 60\n\n");
    const DomainRec domain = flat_domain();
    GridRec grid;
    EXPECT_EQ(OBJ_analyze_raw(path.c_str(), 10, &domain, &grid), 3);
    ASSERT_NE(grid.values, nullptr);
    EXPECT_NEAR(grid.values[kNy / 2 * kNx + kNx / 2], 55.0F, 0.5F);
    GRD_free(&grid);
    EXPECT_EQ(OBJ_analyze_raw(dir.file("none.raw").c_str(), 10, &domain, &grid), -1);
}

} // namespace
