// What a large field costs on paper: bench_contour [POINTS_A_SIDE] [FOLDER]. Lines and bands of 20
// levels, to PostScript: time, the process's largest memory, and size of the file. Peers with the
// same field stand at 503 ms and more.

#include "tyr/field/contour.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/resource.h>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/plot/plot_session.h"

namespace {

/// Waves of several lengths between about -3 and 3 on a linear plot.
GridRec waves(int points)
{
    GridRec g;
    GRD_init(&g);
    g.domain.proj = kProjXY;
    g.domain.clat = g.domain.clon = 0.0F;
    g.domain.nx = g.domain.ny = points;
    g.domain.dx = g.domain.dy = 1.0F;
    if (GRD_alloc(&g) == 0) {
        return g;
    }
    for (int row = 0; row < points; ++row) {
        for (int column = 0; column < points; ++column) {
            const double x = column * 12.0 / points;
            const double y = row * 12.0 / points;
            g.values[row * points + column] = static_cast<float>(
                std::sin(x) * std::cos(y) + std::sin(0.5 * x + y) + std::cos(2.0 * x - 0.7 * y));
        }
    }
    return g;
}

void measure(const std::string &folder, int points, const char *kind)
{
    const std::string path = folder + "/contour.ps";
    std::filesystem::remove(path);
    RES_put("device", ("p," + path + ",color").c_str());
    RES_put("plot_format", kind);
    RES_put("con_interval", "0.3"); // 20 levels
    GridRec g = waves(points);
    DomainRec domain = g.domain;
    const auto start = std::chrono::steady_clock::now();
    CONT_plot_grid(&g, &domain, nullptr);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    GRD_free(&g);
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);
    std::printf("%4d x %-4d  %-4s %8.1f ms %6ld MB %8.2f MB of paper\n", points, points, kind,
                taken.count(), usage.ru_maxrss / 1024,
                failed ? 0.0 : static_cast<double>(size) / 1e6);
}

} // namespace

int main(int argc, char **argv)
{
    const int points = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::string folder = argc > 2 ? argv[2] : "/tmp";
    if (points < 8 || points > 20000) {
        std::fprintf(stderr, "usage: bench_contour [POINTS_A_SIDE] [FOLDER]\n");
        return 1;
    }
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    MSG_set_mask(0, kMsgError);
    RES_put("file_path", "data");
    for (const int n : {points / 4, points / 2, points}) {
        for (const char *kind : {"ln", "cf", "lcf"}) {
            measure(folder, n, kind);
        }
    }
    return 0;
}
