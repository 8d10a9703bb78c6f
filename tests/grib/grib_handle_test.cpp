// GRIB streams by the handle of an open file; the texts of ensembles; cones of the south.

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/grib_message.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/geo/projection.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/geometry_private.h"
#include "tyr/grib/grib.h"
#include "tyr/grib/grib_stream_private.h"

using namespace tyr;

namespace {

std::span<const std::uint8_t> bytes_of(const std::string &text)
{
    return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

TEST(GribHandle, SectionsReadOneAtATime)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    const std::string one = grib1_message();
    const std::string two =
        grib2_message(grib2_ident() + grib2_grid() + grib2_product() + grib2_packing(12, 100.0F) +
                      grib2_bitmap(255) + grib2_data(std::string(12, '\1')));
    const std::string text = "head" + one + two;
    tyr::GribStream stream(bytes_of(text), "test.grb");
    EXPECT_EQ(GRD_next_product(3), -1);
    tyr::grib_bind(3, &stream);
    GridRec grid;
    GRD_init(&grid);
    ASSERT_EQ(GRD_next_product(3), 0);
    EXPECT_EQ(GRIB_read_header1(3, &grid, 0), 1);
    EXPECT_EQ(GRIB_read_grid1(3, &grid), 1);
    EXPECT_EQ(GRIB_read_bitmap1(3, &grid), 1);
    EXPECT_EQ(GRIB_read_data1(3, &grid), 1);
    EXPECT_EQ(grid.values[11], 111.0F);
    GRD_free(&grid);
    EXPECT_EQ(GRD_product_end(3, 1), static_cast<long>(4 + one.size()));
    ASSERT_EQ(GRD_next_product(3), 0);
    std::vector<int> numbers;
    while (GRIB_read_section(3) == 1) {
        numbers.push_back(GRIB_section_number(3));
        switch (numbers.back()) {
        case 1:
            EXPECT_EQ(GRIB_read_ident(3, &grid), 1);
            break;
        case 3:
            EXPECT_EQ(GRIB_read_grid2(3, &grid), 1);
            break;
        default:
            EXPECT_EQ(GRIB_skip_section(3), 1);
        }
    }
    EXPECT_EQ(numbers, (std::vector<int>{1, 3, 4, 5, 6, 7}));
    EXPECT_EQ(grid.domain.nx, 4);
    EXPECT_EQ(GRIB_section_number(3), -1);
    stream.rewind();
    void *buffer = nullptr;
    int length = 0;
    ASSERT_EQ(GRIB_read_product(3, &buffer, &length), 0);
    ASSERT_EQ(static_cast<size_t>(length), one.size());
    EXPECT_EQ(std::memcmp(buffer, one.data(), one.size()), 0);
    std::free(buffer);
    buffer = nullptr;
    ASSERT_EQ(GRIB_read_product(3, &buffer, &length), 0);
    EXPECT_EQ(static_cast<size_t>(length), two.size());
    std::free(buffer);
    tyr::grib_bind(3, nullptr);
    EXPECT_EQ(GRIB_read_section(3), -1);
}

TEST(GribHandle, EnsemblesAndProbabilitiesAreNamed)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    struct Case {
        const char *name;
        int kind, product_class, var, probability_kind;
        const char *part; ///< of the text
    };
    const Case cases[] = {
        {"control", 1, 1, 11, 0, "500 mb Ens[4] Temperature"},
        {"negative", 2, 1, 11, 0, "Ens[-4] "},
        {"positive", 3, 1, 11, 0, "Ens[+4] "},
        {"mean", 0, 2, 11, 0, "Ens mean Temperature"},
        {"deviation", 0, 11, 11, 0, "Ens std dev "},
        {"below", 0, 0, 191, 1, "Ens prob (%) Temperature below 273.00 K"},
        {"above", 0, 0, 192, 2, "Ens norm prob (%) Temperature above 273.00 K"},
        {"in", 0, 0, 191, 6, " Prob (%) Temperature in 273.00-280.00 K"},
        {"plain", 0, 0, 11, 0, "500 mb Temperature"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        tyr::Ensemble ensemble;
        ensemble.kind = c.kind;
        ensemble.member = 4;
        ensemble.product_class = c.product_class;
        ensemble.probability_kind = c.probability_kind;
        ensemble.variable = 11;
        ensemble.low = 273.0F;
        ensemble.high = 280.0F;
        GridRec grid;
        GRD_init(&grid);
        grid.ltype = 100;
        grid.level = 500;
        grid.var = c.var;
        std::strcpy(grid.units, "K");
        tyr::make_info(ensemble, &grid);
        EXPECT_NE(std::string(grid.info).find(c.part), std::string::npos) << grid.info;
    }
}

TEST(GribHandle, PlanesOfBothHemispheresKeepTheirFirstPoint)
{
    struct Case {
        const char *name;
        int proj;
        double lat1, lon1, latin1, latin2;
        bool is_south, is_good;
    };
    const Case cases[] = {
        {"north cone", 4, 12.19, -133.459, 25.0, 25.0, false, true},
        {"south cone", 4, -50.0, 110.0, -20.0, -40.0, false, true},
        {"no cone", 4, -50.0, 110.0, -20.0, 20.0, false, false},
        {"north plane", 1, 20.0, -120.0, 0.0, 0.0, false, true},
        {"south plane", 1, -20.0, 170.0, 0.0, 0.0, true, true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        tyr::Product product;
        product.origin.is_quiet = true;
        product.layout.nx = 41;
        product.layout.ny = 31;
        product.layout.from_south = true;
        tyr::GridShape shape;
        shape.proj = c.proj;
        shape.lat1 = c.lat1;
        shape.lon1 = c.lon1;
        shape.lov = c.lon1 + 30.0;
        shape.di = shape.dj = 80000.0;
        shape.true_latitude = 60.0;
        shape.latin1 = c.latin1;
        shape.latin2 = c.latin2;
        shape.is_south = c.is_south;
        DomainRec domain;
        ASSERT_EQ(tyr::make_domain(shape, product, &domain), c.is_good);
        if (!c.is_good) {
            continue;
        }
        DOM_set(&domain);
        float w[4];
        DOM_get_window(w);
        float lat = 0.0F;
        float lon = 0.0F;
        MAP_xy_to_ll(&lat, &lon, w[0], w[2]);
        EXPECT_NEAR(lat, c.lat1, 0.001);
        EXPECT_NEAR(std::remainder(static_cast<double>(lon) - c.lon1, 360.0), 0.0, 0.001);
    }
}

} // namespace
