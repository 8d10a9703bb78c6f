// Weather operations against published formulas (tools/make_weather_table.py).

#include <array>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "grid_math/math_grids.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/grid_math.h"
#include "tyr/var/catalogue.h"

using namespace tyr;

namespace {

constexpr int kSide = 5;
constexpr int kPoints = kSide * kSide;

/// Reads an operand behind its variable and unit.
void read_operand(std::istringstream *words, const std::string &variable, GridRec *grid)
{
    std::string unit;
    *words >> unit;
    STR_copy(grid->units, sizeof grid->units, unit);
    const CatalogueEntry *entry = VAR_find_abbr(variable.c_str());
    ASSERT_NE(entry, nullptr) << variable;
    grid->var = entry->numbers[0];
    for (int i = 0; i < kPoints; ++i) {
        ASSERT_TRUE(*words >> grid->values[i]);
    }
}

void set_domain(int proj, DomainRec *domain)
{
    DOM_init(domain);
    domain->proj = proj;
    domain->clat = proj == kProjPolar ? 60.0F : 40.0F;
    domain->clon = domain->plon = -95.0F;
    domain->plat = proj == kProjLatLon ? kMissing : 90.0F;
    if (proj == kProjLambert) {
        domain->parm1 = domain->parm2 = 45.0F;
    }
    domain->nx = domain->ny = kSide;
    domain->dx = domain->dy = 2.0F;
}

/// Difference of two results; of directions and longitudes the short way round.
double difference(const std::string &name, double a, double b)
{
    const double plain = std::fabs(a - b);
    return name == "ewdir" || name == "lon" ? std::fmin(plain, std::fabs(360.0 - plain)) : plain;
}

TEST(Weather, AgreesWithPublishedFormulas)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    std::ifstream table(std::string(TYR_SOURCE_DIR) + "/tests/data/grid_weather.txt");
    std::string line;
    int cases = 0;
    while (std::getline(table, line)) {
        std::istringstream words(line);
        std::string name;
        double allowed = 0.0;
        int proj = 0;
        int ltype = 0;
        int level = 0;
        int count = 0;
        words >> name >> allowed >> proj >> ltype >> level >> count;
        SCOPED_TRACE("line " + std::to_string(++cases) + " " + name);
        std::array<MathGrid, 3> operands;
        MathGrid out;
        out.rec.ltype = ltype;
        out.rec.level = level;
        MathArguments call{&out.rec};
        for (size_t k = 0; k < static_cast<size_t>(count); ++k) {
            std::string variable;
            words >> variable;
            if (variable == "const") {
                words >> call.constants.at(k + 1);
                continue;
            }
            GridRec &grid = operands.at(k).rec;
            grid.source = 1;
            set_domain(proj, &grid.domain);
            ASSERT_EQ(GRD_alloc(&grid), 1);
            ASSERT_NO_FATAL_FAILURE(read_operand(&words, variable, &grid));
            grid.ltype = ltype;
            grid.level = level;
            call.grids.at(k + 1) = &grid;
        }
        ASSERT_EQ(GRD_math(name.c_str(), call.grids.data(), call.constants.data()), 1);
        for (int i = 0; i < kPoints; ++i) {
            double expected = 0.0;
            ASSERT_TRUE(words >> expected);
            EXPECT_LE(difference(name, static_cast<double>(out.rec.values[i]), expected), allowed)
                << "point " << i << ": " << out.rec.values[i] << " for " << expected;
        }
    }
    EXPECT_EQ(cases, 50);
}

} // namespace
