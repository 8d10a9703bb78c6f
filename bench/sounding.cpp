// How many soundings a second one core analyses: all indices, the lift of the parcel, shear,
// helicity and the bulk measures; and how many it lifts alone. The analytic sounding of Weisman and
// Klemp (1982, Mon. Wea. Rev. 110) is taken with as many levels as reports have, from those of
// standard levels to those of high resolution; the temperature differs from round to round.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/met/thermo.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/sounding_store.h"

namespace {

constexpr double kTop = 16000.0; // m

std::vector<SoundLevel> sounding(int n)
{
    constexpr double kTropopause = 12000.0; // m
    constexpr double kGravity = 9.8;
    constexpr double kHeat = 1004.0; // J/(kg K)
    std::vector<SoundLevel> levels;
    double exner = 1.0;
    double last_theta = 300.0;
    for (int i = 0; i < n; ++i) {
        const double z = kTop * i / (n - 1);
        const double part = std::pow(std::min(z / kTropopause, 1.0), 1.25);
        const double above = std::max(z - kTropopause, 0.0);
        const double theta = (300.0 + 43.0 * part) * std::exp(kGravity / (kHeat * 213.0) * above);
        if (i > 0)
            exner -= kGravity / kHeat * (kTop / (n - 1)) * 2.0 / (theta + last_theta);
        last_theta = theta;
        const auto p = static_cast<float>(1000.0 * std::pow(exner, 3.5));
        const auto t = static_cast<float>(theta * exner);
        const float td = std::min(MET_dew_from_rh(t, static_cast<float>(100.0 - 75.0 * part)),
                                  MET_dew_from_mix(14.0F, p));
        levels.push_back({p, static_cast<float>(z), static_cast<float>(t - kZeroCelsius),
                          static_cast<float>(td - kZeroCelsius),
                          static_cast<float>(180.0 + 80.0 * part),
                          static_cast<float>(10.0 + 40.0 * part)});
    }
    return levels;
}

double rate_of(int rounds, const std::function<void(int)> &round)
{
    const std::clock_t start = std::clock(); // of the processor: other work doesn't count
    for (int i = 0; i < rounds; ++i)
        round(i);
    return rounds * double{CLOCKS_PER_SEC} / static_cast<double>(std::clock() - start);
}

} // namespace

int main(int argc, char **argv)
{
    const int rounds = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 2000;
    std::printf("%8s %14s %14s %10s\n", "levels", "analysed/s", "lifted/s", "CAPE");
    for (const int n : {25, 75, 150, 300}) {
        std::vector<SoundLevel> temps = sounding(n);
        std::vector<SoundLevel> winds = temps;
        double cape = 0.0;
        const auto warm = [&temps](int i) { temps[0].t += i % 2 == 0 ? 0.01F : -0.01F; };
        const double analysed = rate_of(rounds, [&](int i) {
            warm(i);
            THERM_setup(temps.data(), n, winds.data(), n, temps[0].p);
            THERM_compute();
            cape += THERM_results().parcel.cape;
        });
        const double lifted = rate_of(rounds, [&](int i) {
            warm(i);
            ParcelRec lift;
            MET_parcel(temps.data(), n, nullptr, 100, &lift, temps[0].p, 100.0F);
        });
        std::printf("%8d %14.0f %14.0f %10.0f\n", n, analysed, lifted, cape / rounds);
    }
    return 0;
}
