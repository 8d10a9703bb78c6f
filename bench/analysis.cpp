// The analysis of scattered values: bench_analysis [stations [side [passes [radius]]]]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "tyr/analysis/barnes.h"
#include "tyr/base/msg.h"

int main(int count, char **words)
{
    const auto number = [&](int i, double otherwise) {
        return i < count ? std::atof(words[i]) : otherwise;
    };
    const int stations = static_cast<int>(number(1, 2000));
    const int side = static_cast<int>(number(2, 300));
    GridRec grid;
    GRD_init(&grid);
    grid.domain.proj = kProjLatLon;
    grid.domain.clat = 0.0F;
    grid.domain.clon = 0.0F;
    grid.domain.dx = grid.domain.dy = 0.1F;
    grid.domain.nx = grid.domain.ny = side;
    if (GRD_alloc(&grid) != 1) {
        return 1;
    }
    const float half = 0.05F * static_cast<float>(side);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> place(-half, half);
    std::vector<float> x, y, value;
    for (int i = 0; i < stations; i++) {
        x.push_back(place(random));
        y.push_back(place(random));
        value.push_back(x.back() + y.back());
    }
    MSG_set_mask(0, kMsgWarn);
    OBJ_reset();
    OBJ_set_filter(4.0F);
    OBJ_set_passes(static_cast<int>(number(3, 3)));
    OBJ_set_radius(static_cast<float>(number(4, 1000)));
    float *values[] = {value.data()};
    const auto start = std::chrono::steady_clock::now();
    OBJ_analyze(x.data(), y.data(), values, stations, 1, &grid);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::printf("%d stations to %d by %d: %.1f ms\n", stations, side, side, time.count());
    GRD_free(&grid);
}
