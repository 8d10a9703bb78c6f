// What a large field costs: bench_contour [POINTS_A_SIDE] [FOLDER [FLOATS]]. Lines and bands of 20
// levels, to PostScript: time, the process's largest memory, and size of the file; with DISPLAY set
// also to a window, up to the PNG of what it shows. FLOATS is a file of a square field of floats,
// the southern row first, drawn with an interval of 5, as the peers draw theirs.

#include "tyr/field/contour.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
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

/// A square field of floats from a file.
GridRec read_field(const std::string &path)
{
    GridRec g;
    GRD_init(&g);
    std::error_code failed;
    const auto bytes = std::filesystem::file_size(path, failed);
    const int side = failed ? 0 : static_cast<int>(std::sqrt(static_cast<double>(bytes) / 4.0));
    std::ifstream in(path, std::ios::binary);
    if (side < 2 || !in) {
        return g;
    }
    g.domain.proj = kProjXY;
    g.domain.clat = g.domain.clon = 0.0F;
    g.domain.nx = g.domain.ny = side;
    g.domain.dx = g.domain.dy = 1.0F;
    if (GRD_alloc(&g) != 0) {
        for (int row = side - 1; row >= 0; --row) {
            in.read(reinterpret_cast<char *>(g.values + row * side),
                    static_cast<std::streamsize>(sizeof(float)) * side);
        }
    }
    return g;
}

enum class Surface { paper, window };

void measure(const std::string &folder, GridRec g, const char *kind, Surface surface)
{
    const std::string path = folder + (surface == Surface::paper ? "/contour.ps" : "/tyr.png");
    std::filesystem::remove(path);
    RES_put("device", surface == Surface::paper ? ("p," + path + ",color").c_str() : "d");
    if (surface == Surface::window) {
        RES_put("plot_param", "png");
        RES_put("image_path", folder.c_str());
    }
    RES_put("plot_format", kind);
    DomainRec domain = g.domain;
    const auto start = std::chrono::steady_clock::now();
    CONT_plot_grid(&g, &domain, nullptr);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);
    std::printf("%4d x %-4d  %-4s %-6s %8.1f ms %6ld MB %8.2f MB\n", g.domain.nx, g.domain.ny, kind,
                surface == Surface::paper ? "paper" : "window", taken.count(),
                usage.ru_maxrss / 1024, failed ? 0.0 : static_cast<double>(size) / 1e6);
}

void measure_all(const std::string &folder, GridRec g)
{
    for (const char *kind : {"ln", "cf", "lcf"}) {
        measure(folder, g, kind, Surface::paper);
    }
    if (std::getenv("DISPLAY") != nullptr) {
        measure(folder, g, "lcf", Surface::window);
    }
    GRD_free(&g);
}

} // namespace

int main(int argc, char **argv)
{
    const int points = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::string folder = argc > 2 ? argv[2] : "/tmp";
    if (points < 8 || points > 20000) {
        std::fprintf(stderr, "usage: bench_contour [POINTS_A_SIDE] [FOLDER [FLOATS]]\n");
        return 1;
    }
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    MSG_set_mask(0, kMsgError);
    RES_put("file_path", "data");
    if (argc > 3) {
        RES_put("con_interval", "5");
        measure_all(folder, read_field(argv[3]));
        return 0;
    }
    RES_put("con_interval", "0.3"); // 20 levels
    for (const int n : {points / 4, points / 2, points}) {
        measure_all(folder, waves(n));
    }
    return 0;
}
