// Draws a made field on PostScript, to look at: field_page FILE OPTIONS PROJECTION [POINTS]
// OPTIONS are those of contours, or of winds where they begin with vect, barb or strm.

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/resource.h>

#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/geo/domain.h"
#include "tyr/plot/plot_session.h"

namespace {

GridRec world_grid(int points, double (*value)(double lat, double lon))
{
    GridRec g;
    GRD_init(&g);
    g.domain.proj = kProjLatLon;
    g.domain.clat = g.domain.clon = 0.0F;
    g.domain.nx = points;
    g.domain.ny = points / 2 + 1;
    g.domain.dx = g.domain.dy = 360.0F / static_cast<float>(points - 1);
    std::snprintf(g.info, sizeof g.info, "made field");
    if (GRD_alloc(&g) == 0) {
        return g;
    }
    const int middle = g.domain.ny / 2;
    for (int row = 0; row < g.domain.ny; ++row) {
        for (int column = 0; column < points; ++column) {
            const double lat = (middle - row) * static_cast<double>(g.domain.dy);
            const double lon = -180.0 + column * static_cast<double>(g.domain.dx);
            g.values[row * points + column] =
                static_cast<float>(value(lat * M_PI / 180.0, lon * M_PI / 180.0));
        }
    }
    return g;
}

double height(double lat, double lon)
{
    return 5500.0 - 500.0 * std::sin(lat) * std::sin(lat) +
           150.0 * std::cos(lat) * std::sin(3.0 * lon) * std::sin(4.0 * lat);
}

double west_wind(double lat, double lon)
{
    return 25.0 * std::cos(lat) * std::cos(lat) + 8.0 * std::sin(3.0 * lon);
}

double south_wind(double lat, double lon)
{
    return 12.0 * std::cos(3.0 * lon) * std::cos(lat);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: field_page FILE OPTIONS PROJECTION [POINTS]\n");
        return 1;
    }
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0); // a batch plot ends in a child, after this program
    RES_put("file_path", "data");
    RES_put("device", ("p," + std::string(argv[1]) + ",color").c_str());
    const int points = argc > 4 ? std::atoi(argv[4]) : 73;
    const bool is_wind = std::strpbrk(argv[2], "vbs") == argv[2];
    DomainRec domain = world_grid(3, height).domain;
    domain.proj = std::atoi(argv[3]);
    domain.clat = domain.proj == kProjPolar || domain.proj == kProjLambert ? 50.0F : 0.0F;
    domain.clon = domain.proj == kProjLatLon ? 180.0F : -90.0F;
    const bool in_degrees = domain.proj == kProjLatLon;
    domain.nx = 101;
    domain.ny = 61;
    domain.dx = domain.dy = in_degrees ? 3.4F : domain.proj == kProjMollweide ? 3.6F : 2.0F;
    GridRec a = world_grid(points, is_wind ? west_wind : height);
    GridRec b = world_grid(points, south_wind);
    const auto start = std::chrono::steady_clock::now();
    if (is_wind) {
        VECT_set_kind(kVectArrows, argv[2]);
        VECT_plot(&a, &b, &domain, nullptr);
    } else {
        RES_put("plot_format", argv[2]);
        RES_put("con_interval", "50");
        CONT_plot_grid(&a, &domain, nullptr);
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%.0f ms, %ld MB\n", taken.count() * 1e3, usage.ru_maxrss / 1024);
    GRD_free(&a);
    GRD_free(&b);
    return 0;
}
