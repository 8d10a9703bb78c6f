// Grid math on 3,600 by 1,801 points: seconds of the best of five runs. bench/grid_math.py times
// the same beside it.

#include "tyr/grid_math/grid_math.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/grid_math/remap.h"
#include "tyr/grid_math/row_bands.h"

using namespace tyr;

namespace {

constexpr int kColumns = 3600;
constexpr int kRows = 1801;
constexpr size_t kPoints = size_t{kColumns} * kRows;

GridRec make_grid(float low, float span)
{
    GridRec grid;
    GRD_init(&grid);
    grid.source = 1;
    grid.domain.proj = kProjLatLon;
    grid.domain.clat = 0.0F;
    grid.domain.clon = 0.0F;
    grid.domain.dx = grid.domain.dy = 0.1F;
    grid.domain.nx = kColumns;
    grid.domain.ny = kRows;
    if (GRD_alloc(&grid) == 0)
        std::exit(1);
    for (size_t i = 0; i < kPoints; ++i)
        grid.values[i] = i % 1009 == 0
                             ? kMissing
                             : low + span * static_cast<float>(i * 2654435761U % 1000U) / 1000.0F;
    return grid;
}

template <class Work> double best_of_five(Work work)
{
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        best = std::min(best, took.count());
    }
    return best;
}

double time_math(const char *name, std::initializer_list<GridRec *> operands, GridRec *out)
{
    std::array<GridRec *, 22> grids{};
    std::array<float, 22> constants{};
    constants.fill(kMissing);
    std::copy(operands.begin(), operands.end(), grids.begin() + 1);
    grids[0] = out;
    return best_of_five([&] { GRD_math(name, grids.data(), constants.data()); });
}

} // namespace

int main()
{
    RES_put("file_path", "data");
    GridRec t = make_grid(250.0F, 50.0F);
    GridRec h = make_grid(5.0F, 90.0F);
    GridRec u = make_grid(-30.0F, 60.0F);
    GridRec out = make_grid(0.0F, 0.0F);
    for (int threads : {1, 2}) {
        GRD_set_threads(threads);
        // 8 bytes a point; an addition moves 12
        const double copy = best_of_five([&] {
            std::memcpy(out.values, t.values, kPoints * 4);
            asm volatile("" : : "r"(out.values) : "memory");
        });
        std::printf("%d thread(s)\n", threads);
        std::printf("plain copy of a grid     %9.4f\n", copy);
        for (const char *name : {"add", "mul", "wspd", "atan2", "wdir", "uwnd"})
            std::printf("%-24s %9.4f\n", name, time_math(name, {&u, &h}, &out));
        std::printf("%-24s %9.4f\n", "grad's half (dx)", time_math("dx", {&u}, &out));
        std::printf("%-24s %9.4f\n", "dy", time_math("dy", {&u}, &out));
        std::printf("%-24s %9.4f\n", "lapl", time_math("lapl", {&u}, &out));
        std::printf("%-24s %9.4f\n", "rvort", time_math("rvort", {&u, &h}, &out));
        std::printf("%-24s %9.4f\n", "adv", time_math("adv", {&u, &h, &t}, &out));
        std::printf("%-24s %9.4f\n", "thetae", time_math("thetae", {&t, &h}, &out));
        std::printf("%-24s %9.4f\n", "wetblb", time_math("wetblb", {&t, &h}, &out));
        DomainRec domain = t.domain;
        domain.proj = kProjLambert;
        domain.clat = 40.0F;
        domain.clon = -95.0F;
        domain.dx = domain.dy = 0.03F;
        GridRec there;
        GRD_init(&there);
        std::printf("%-24s %9.4f\n", "remap to Lambert", best_of_five([&] {
                        GRD_remap(&there, &domain, &t);
                        GRD_free(&there);
                    }));
    }
    return 0;
}
