// Projections both ways, in millions of places a second, over a grid of the whole earth.
//
//   build/bin/bench_map

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "tyr/geo/projection.h"
#include "tyr/geo/projection_rows_private.h"
#include "tyr/place/domain_text.h"

using namespace tyr;

namespace {

struct Place {
    float a, b;
};

std::vector<Place> earth()
{
    std::vector<Place> places;
    for (float lat = -89.75F; lat < 90.0F; lat += 0.5F) {
        for (float lon = -179.75F; lon < 180.0F; lon += 0.5F) {
            places.push_back({lat, lon});
        }
    }
    return places;
}

/// Millions a second of the best of five rounds.
template <class Routine>
double rate(const std::vector<Place> &places, std::vector<Place> &out, Routine routine)
{
    double best = 0.0;
    for (int round = 0; round < 5; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (size_t i = 0; i < places.size(); ++i) {
            routine(&out[i].a, &out[i].b, places[i].a, places[i].b);
        }
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        best = std::max(best, static_cast<double>(places.size()) / time.count() / 1e6);
    }
    return best;
}

/// The same of whole arrays.
double row_rate(const std::vector<Place> &places)
{
    std::vector<float> lat, lon;
    for (const Place &p : places) {
        lat.push_back(p.a);
        lon.push_back(p.b);
    }
    std::vector<float> x(lat.size());
    std::vector<float> y(lat.size());
    double best = 0.0;
    for (int round = 0; round < 5; ++round) {
        const auto start = std::chrono::steady_clock::now();
        project_places(lat.data(), lon.data(), lat.size(), x.data(), y.data());
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        best = std::max(best, static_cast<double>(places.size()) / time.count() / 1e6);
    }
    return best;
}

} // namespace

int main()
{
    const char *domains[] = {
        "ps:90:-97,39,-97,2",         "latlon,0,0,2",      "merc:0:0,0,0,2",
        "lamb:50:-97:30:60,50,-97,2", "ortho,35,-95,2",    "moll,0,0,2",
        "la:40:130,40,130,2",         "sat:0:-75,0,-75,2", "sat:e:0:-75,0,-75,2"};
    const std::vector<Place> places = earth();
    std::vector<Place> plane(places.size());
    std::vector<Place> back(places.size());
    std::printf("%-28s %12s %12s %12s\n", "domain", "forward M/s", "rows M/s", "inverse M/s");
    for (const char *text : domains) {
        DomainRec domain;
        DOM_decode(text, &domain);
        DOM_set(&domain);
        const double forward = rate(places, plane, MAP_ll_to_xy);
        const double rows = row_rate(places);
        const double inverse = rate(plane, back, MAP_xy_to_ll);
        std::printf("%-28s %12.1f %12.1f %12.1f\n", text, forward, rows, inverse);
    }
    return 0;
}
