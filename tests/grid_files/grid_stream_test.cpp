// Standard streams, number formats, known grids, wrapped rows, and other decoders' values.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "support/capture.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid/known_domain.h"
#include "tyr/grid_files/grid_out.h"

using namespace tyr;

namespace {

struct Grid : GridRec {
    Grid() { GRD_init(this); }
    ~Grid() { GRD_free(this); }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;
};

const std::string kOne = "TYRGRID\n12Z  6 MAR 99\n0-a\nLL 40 100 2 3 2 2\n1 2 3 4\n";
const std::string kTwo = "12Z  7 MAR 99\n0-b\nLL 40 100 2 3 2 2\n5 6 7 8\n";

void make_small(Grid *grid)
{
    STR_copy(grid->date, sizeof grid->date, "12Z  6 MAR 99");
    DomainRec &d = grid->domain;
    d.proj = kProjLatLon;
    d.clat = d.clon = d.plon = 10.0F;
    d.dx = d.dy = 1.0F;
    d.nx = 2;
    d.ny = 1;
    ASSERT_EQ(GRD_alloc(grid), 1);
    grid->values[0] = 1.25F;
    grid->values[1] = -1234.5F;
}

/// Values of a decode in the order of the file; "M" is Missing.
std::vector<double> decode_of(const std::string &path)
{
    std::vector<double> values;
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen(path.c_str(), "r"), gzclose);
    char line[200];
    while (file != nullptr && gzgets(file.get(), line, sizeof line) != nullptr) {
        if (line[0] != '#') {
            values.push_back(line[0] == 'M' ? kMissing : std::strtod(line, nullptr));
        }
    }
    return values;
}

} // namespace

TEST(GridStream, StandardInputGivesItsGridsInOrder)
{
    type_in(kOne + kTwo);
    int kind = kGridUnknown;
    const int handle = GRD_open("-", 0, &kind);
    ASSERT_EQ(kind, kGridText);
    GridFileInfo info;
    ASSERT_EQ(GRD_read_header(handle, &info), 0);
    EXPECT_EQ(info.date.day, 6); // and the grid behind it isn't lost
    EXPECT_EQ(GRD_rewind(handle), 0);
    for (int place = 0; place < 2; ++place) {
        Grid grid;
        int index = place;
        ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
        EXPECT_STREQ(grid.info, place == 0 ? "a" : "b");
        EXPECT_EQ(grid.values[3], place == 0 ? 4.0F : 8.0F);
    }
    EXPECT_EQ(GRD_close(handle), 0);
}

TEST(GridStream, StandardOutputTakesGridsInTheFormatWanted)
{
    const struct {
        const char *name, *format, *numbers;
    } cases[] = {
        {"usual", "%14.8e\n", "1.25000000e+00\n-1.23450000e+03\n"},
        {"short", "%.1f ", "1.2 -1234.5 "},
        {"nothing behind", "%g", "1.25\n-1234.5\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string shown = shown_by([&] {
            GRD_set_number_format(c.format);
            int kind = kGridText;
            const int handle = GRD_open("", 1, &kind);
            GridFileInfo info = {};
            EXPECT_EQ(GRD_write_header(handle, &info), 0);
            Grid grid;
            make_small(&grid);
            int index = 0;
            EXPECT_EQ(GRD_write(handle, &grid, 0, &index), 0);
            EXPECT_EQ(GRD_close(handle), 0);
        });
        EXPECT_EQ(shown.rfind("TYRGRID\n12Z  6 MAR 99\n2-", 0), 0U) << shown;
        const std::string numbers = c.numbers;
        ASSERT_GT(shown.size(), numbers.size());
        EXPECT_EQ(shown.substr(shown.size() - numbers.size()), numbers);
    }
    for (const char *format : {"%d\n", "%s", "%f %f", "none", "%n"}) {
        EXPECT_NE(told_by([&] { GRD_set_number_format(format); }), "") << format;
    }
}

TEST(GridStream, KnownGridsHaveTheirDomains)
{
    const struct {
        int id, proj, nx, ny;
        float dx, dy, clat, clon;
    } cases[] = {
        {21, 2, 37, 37, 5.0F, 2.5F, 45.0F, 90.0F},
        {26, 2, 73, 19, 5.0F, 5.0F, -45.0F, 180.0F},
        {40, 2, 73, 73, 1.5F, 1.5F, 45.0F, -75.0F},
        {41, 2, 73, 73, 1.5F, 1.5F, -45.0F, 15.0F},
        {50, 2, 36, 33, 2.5F, 1.25F, 40.0F, -96.25F},
        {64, 2, 91, 46, 2.0F, 2.0F, -45.0F, -90.0F},
        {212, 4, 185, 129, 0.4063F, 0.4063F, 40.606F, -100.554F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.id);
        DomainRec d;
        DOM_init(&d);
        EXPECT_EQ(GRD_grid_domain(c.id, &d), 1);
        EXPECT_EQ(d.proj, c.proj);
        EXPECT_EQ(d.nx, c.nx);
        EXPECT_EQ(d.ny, c.ny);
        EXPECT_EQ(d.dx, c.dx);
        EXPECT_EQ(d.dy, c.dy);
        EXPECT_EQ(d.clat, c.clat);
        EXPECT_EQ(d.clon, c.clon);
        EXPECT_EQ(d.parm1, c.proj == 4 ? 25.0F : kMissing);
    }
    DomainRec left;
    DOM_init(&left);
    left.nx = 12;
    EXPECT_EQ(GRD_grid_domain(999, &left), 1);
    EXPECT_EQ(left.nx, 12);
}

TEST(GridStream, DescriptionsWithTheLetterBHoldBinaryValues)
{
    const TempDir dir;
    const std::string path =
        dir.write("f", std::string("TYRGRID4B\n12Z  6 MAR 99\nT\n1 3 1 0 0 0 0 0\n"
                                   "latlon:10,40,10,2,2,5,5 ") +
                           std::string("\x3f\x80\0\0\x40\0\0\0\x40\x40\0\0\x40\x80\0\0", 16));
    int kind = 0;
    const int handle = GRD_open(path.c_str(), 0, &kind);
    ASSERT_EQ(kind, kGridDescription);
    Grid grid;
    int index = 0;
    ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
    EXPECT_EQ(grid.values[0], 1.0F);
    EXPECT_EQ(grid.values[3], 4.0F);
    GRD_close(handle);
}

TEST(GridStream, RowsOfAWholeTurnAreClosed)
{
    const TempDir dir;
    std::string cdl = "netcdf m {dimensions: lon=72; lat=2; frtime=1; rtime=1; variables:"
                      "float lat(lat); float lon(lon); int frtime(frtime); int grib_center;"
                      "int grib_model; float RH(frtime,lat,lon); data: lat=40,45;"
                      "grib_center=7; grib_model=69; frtime=84; lon=";
    std::string values = "; RH=";
    for (int i = 0; i < 144; ++i) {
        cdl += i < 72 ? STR_print("%s%d", i == 0 ? "" : ",", -180 + 5 * i) : "";
        values += STR_print("%s%d", i == 0 ? "" : ",", i);
    }
    const std::string path = dir.file("m.nc");
    const std::string source = dir.write("m.cdl", cdl + values + ";}");
    if (std::system(("ncgen -o " + path + " " + source).c_str()) != 0) {
        GTEST_SKIP() << "no ncgen";
    }
    int kind = 0;
    const int handle = GRD_open(path.c_str(), 0, &kind);
    GridFileInfo info;
    GRD_read_header(handle, &info);
    Grid grid;
    int index = 0;
    ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
    EXPECT_EQ(grid.grid_id, 11);
    ASSERT_EQ(grid.domain.nx, 73);
    EXPECT_FLOAT_EQ(grid.domain.clon, 0.0F);
    EXPECT_EQ(grid.values[0], 72.0F); // the file's second row is the northern one
    EXPECT_EQ(grid.values[71], 143.0F);
    EXPECT_EQ(grid.values[72], 72.0F);
    EXPECT_EQ(grid.values[73 + 72], 0.0F);
    GRD_close(handle);
}

TEST(GridStream, FirstMessagesHaveTheValuesOfTheDecodes)
{
    const struct {
        const char *name;
        bool from_south;
        bool is_alternating; ///< every other row of the file runs from the east
    } cases[] = {
        {"CMC_reg_WIND_ISBL_300_ps60km_2010052400_P012.grib", true, false},
        {"ECMWF.grib1", false, false},
        {"ds.sky.grib2", true, true},
        {"eta.grb", true, false},
        {"fields_with_missing_values.grib", false, false},
        {"regular_ll_msl.grib", false, false},
        {"scanning_mode_64.grib", true, false},
        {"sref.pds2.grib2", true, false},
        {"t_on_different_level_types.grib", false, false},
    };
    if (shared_data("grib_decodes/ECMWF.grib1.msg1.txt.gz").empty()) {
        GTEST_SKIP() << "no folder of shared data";
    }
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string name = c.name;
        const auto values = decode_of(shared_data("grib_decodes/" + name + ".msg1.txt.gz"));
        int kind = 0;
        const int handle = GRD_open(shared_data("grib/" + name).c_str(), 0, &kind);
        Grid grid;
        int index = 0;
        ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
        GRD_close(handle);
        const int nx = grid.domain.nx;
        const int ny = grid.domain.ny;
        ASSERT_EQ(values.size(), static_cast<size_t>(nx) * static_cast<size_t>(ny));
        int different = 0;
        for (int i = 0; i < nx * ny; ++i) {
            const int row = c.from_south ? ny - 1 - i / nx : i / nx;
            const double wanted = values[static_cast<size_t>(i)];
            const bool is_turned = c.is_alternating && i / nx % 2 == 1;
            const int column = is_turned ? nx - 1 - i % nx : i % nx;
            const double got = grid.values[row * nx + column];
            different += std::fabs(got - wanted) > 1e-5 * std::fabs(wanted) + 1e-9 ? 1 : 0;
        }
        EXPECT_EQ(different, 0);
    }
}
