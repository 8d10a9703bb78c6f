// Real files by other hands against another decoder's values and places.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/shared_data.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/geo/projection.h"
#include "tyr/grib/grib_stream_private.h"

using namespace tyr;

namespace {

struct File {
    const char *name;
    int messages; ///< that the file holds
    int read;     ///< of them read whole
    const char *reason;
};
constexpr File kFiles[] = {
    {"CMC_reg_WIND_ISBL_300_ps60km_2010052400_P012.grib", 1, 1, ""},
    {"ECMWF.grib1", 1, 1, ""},
    {"HPPI89_KWBC.grib1", 1, 1, ""},
    {"Z__C_RJTD_20160822020000_NOWC_GPV_Ggis10km_Pphw10_FH0000-0100_grib2.bin", 7, 7, ""},
    {"alternate-scanning.grib", 1, 1, ""},
    {"cosmo-eu.grib2", 1, 0, "rotated"},
    {"ds.sky.grib2", 1, 1, ""},
    {"eccodes_sample_lambert_bf_grib2.grib", 1, 0, "template 63"},
    {"eta.grb", 181, 181, ""},
    {"fields_with_missing_values.grib", 2, 2, ""},
    {"gdas.t12z.pgrb2.0p25.f000.12", 1, 1, ""},
    {"lambert_grid.grib", 1, 1, ""},
    {"regular_ll_msl.grib", 1, 1, ""},
    {"scanning_mode_64.grib", 1, 1, ""},
    {"sref.pds2.grib2", 1, 1, ""},
    {"t_on_different_level_types.grib", 2, 2, ""},
    {"thinGrid.grib1", 1, 1, ""},
};

/// A point as the other decoder has it.
struct Point {
    float lat, lon;
    double value;
};

/// Runs grib_get_data over a file: its points message by message; empty where it can't.
std::vector<std::vector<Point>> decode_by_other(const std::string &path)
{
    std::vector<std::vector<Point>> messages;
    const std::string command =
        "grib_get_data -m -9999 -F %.9e -L '%.5f %.5f' '" + path + "' 2>/dev/null";
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    char line[200];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe.get()) != nullptr) {
        if (line[0] == 'L') {
            messages.emplace_back();
            continue;
        }
        char *end = line;
        Point p{};
        p.lat = std::strtof(end, &end);
        p.lon = std::strtof(end, &end);
        while (*end == ' ' || *end == ',') {
            ++end;
        }
        p.value = std::strtod(end, &end);
        if (!messages.empty()) {
            messages.back().push_back(p);
        }
    }
    return messages;
}

/// Column and row of a place on the domain in force, as fractions.
bool find_cell(const DomainRec &d, const Point &p, double *column, double *row)
{
    float w[4];
    DOM_get_window(w);
    float x = 0.0F;
    float y = 0.0F;
    if (MAP_ll_to_xy(&x, &y, p.lat, p.lon) != 1) {
        return false;
    }
    *column = (static_cast<double>(x) - w[0]) / d.dx;
    if (d.proj == kProjLatLon) { // the date line, or the seam of a whole turn
        const double turn = 360.0 / d.dx;
        *column -= *column > d.nx - 0.5 ? turn : 0.0;
        *column += *column < -0.5 ? turn : 0.0;
    }
    *row = (static_cast<double>(w[3]) - y) / d.dy;
    return true;
}

/// Every point of the other decoder stands where ours does, with its value.
void expect_same(const GridRec &grid, const std::vector<Point> &points, bool is_thinned,
                 bool is_alternating)
{
    const DomainRec &d = grid.domain;
    DOM_set(&d);
    int strays = 0;
    int different = 0;
    std::string first;
    for (const Point &p : points) {
        double column = 0.0;
        double row = 0.0;
        if (!find_cell(d, p, &column, &row)) {
            ++strays;
            continue;
        }
        const long i = std::lround(column);
        const long j = std::lround(row);
        const bool is_between =
            std::fabs(column - static_cast<double>(i)) > (is_thinned ? 1e-3 : 0.02);
        if (i < 0 || j < 0 || i >= d.nx || j >= d.ny ||
            std::fabs(row - static_cast<double>(j)) > 0.02 || (is_between && !is_thinned)) {
            ++strays;
            first = first.empty() ? std::to_string(column) + " " + std::to_string(row) : first;
            continue;
        }
        if (is_between) {
            continue; // a thinned row's points stand between the grid's
        }
        // the other decoder doesn't turn every other row of a lat-lon grid
        const bool is_mirrored = is_alternating && j % 2 == 1;
        const double ours = grid.values[j * d.nx + (is_mirrored ? d.nx - 1 - i : i)];
        if (std::fabs(ours - p.value) > 1e-6 * std::fabs(p.value) + 1e-12) {
            ++different;
            first =
                first.empty() ? std::to_string(ours) + " for " + std::to_string(p.value) : first;
        }
    }
    EXPECT_EQ(strays, 0) << first << " of " << points.size();
    EXPECT_EQ(different, 0) << first << " of " << points.size();
}

/// The four corners and the middle point, from the plot's side, against the nearest of the other's.
void expect_corners(const GridRec &grid, const std::vector<Point> &points)
{
    const DomainRec &d = grid.domain;
    DOM_set(&d);
    float w[4];
    DOM_get_window(w);
    const int columns[] = {0, d.nx - 1, 0, d.nx - 1, d.nx / 2};
    const int rows[] = {0, 0, d.ny - 1, d.ny - 1, d.ny / 2};
    for (int k = 0; k < 5; ++k) {
        float lat = 0.0F;
        float lon = 0.0F;
        MAP_xy_to_ll(&lat, &lon, w[0] + d.dx * static_cast<float>(columns[k]),
                     w[3] - d.dy * static_cast<float>(rows[k]));
        double best = 1e9;
        for (const Point &p : points) {
            const double turn = std::remainder(static_cast<double>(lon) - p.lon, 360.0);
            best = std::min(best,
                            std::max(std::fabs(turn), std::fabs(static_cast<double>(lat) - p.lat)));
        }
        EXPECT_LT(best, 0.01) << "point " << k << " at " << lat << " " << lon;
    }
}

struct ReadAll {
    int messages = 0, read = 0;
};

TEST(GribShared, EveryMessageReadsAsTheOtherDecoderReadsIt)
{
    if (shared_data("grib/ECMWF.grib1").empty()) {
        GTEST_SKIP() << "no folder of shared data";
    }
    if (std::system("grib_get_data -V >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "no grib_get_data";
    }
    for (const File &file : kFiles) {
        SCOPED_TRACE(file.name);
        const std::string path = shared_data(std::string("grib/") + file.name);
        const FilePtr stream(FILE_open(path.c_str(), "r"));
        ASSERT_NE(stream, nullptr);
        const auto other = decode_by_other(path);
        tyr::GribStream grib(stream.get(), file.name);
        ReadAll count;
        GridRec grid;
        GRD_init(&grid);
        std::string told;
        int result = 0;
        for (int index = 0; result >= 0; ++index) {
            told += told_by([&] { result = grib.read_grid(&grid, 0, &index); });
            count.messages += result >= 0 ? 1 : 0;
            count.read += result == 0 ? 1 : 0;
            const auto message = static_cast<size_t>(index);
            if (result == 0 && message < other.size()) {
                SCOPED_TRACE(index);
                const bool is_thinned = std::string(file.name) == "HPPI89_KWBC.grib1" ||
                                        std::string(file.name) == "thinGrid.grib1";
                const bool is_alternating = std::string(file.name) == "alternate-scanning.grib";
                expect_same(grid, other[message], is_thinned, is_alternating);
                if (index < 3 && !is_thinned) {
                    expect_corners(grid, other[message]);
                }
            }
            GRD_free(&grid);
        }
        EXPECT_EQ(count.messages, file.messages);
        EXPECT_EQ(count.read, file.read);
        EXPECT_NE(told.find(file.reason), std::string::npos) << told;
        EXPECT_EQ(told.find("GRIB:") == std::string::npos, file.messages == file.read) << told;
    }
}

} // namespace
