#pragma once

#include <vector>

#include "tyr/met/sounding.h"

/// The analytic sounding of Weisman and Klemp (1982, Mon. Wea. Rev. 110, equations 1 and 2) with a
/// mixing ratio of 14 g/kg in its boundary layer, at every kilometre; the wind veers from 180
/// degrees at 10 knots by 10 degrees and 5 knots a kilometre up to 8 km.
inline std::vector<SoundLevel> warm_sounding()
{
    constexpr float kRows[][4] = {
        {1000.0F, 0.0F, 26.85F, 19.04F},      {891.0F, 1000.0F, 18.98F, 17.20F},
        {791.6F, 2000.0F, 11.74F, 10.49F},    {701.1F, 3000.0F, 4.76F, 2.74F},
        {619.1F, 4000.0F, -2.08F, -4.90F},    {545.0F, 5000.0F, -8.84F, -12.49F},
        {478.2F, 6000.0F, -15.56F, -20.05F},  {418.1F, 7000.0F, -22.27F, -27.62F},
        {364.2F, 8000.0F, -28.99F, -35.23F},  {316.1F, 9000.0F, -35.74F, -42.91F},
        {273.1F, 10000.0F, -42.52F, -50.71F}, {235.0F, 11000.0F, -49.35F, -58.67F},
        {201.3F, 12000.0F, -56.25F, -66.90F}, {172.0F, 13000.0F, -56.07F, -66.74F},
        {147.0F, 14000.0F, -55.88F, -66.57F}, {125.6F, 15000.0F, -55.67F, -66.39F},
        {107.4F, 16000.0F, -55.46F, -66.21F},
    };
    std::vector<SoundLevel> levels;
    for (const auto &r : kRows) {
        const float km = r[1] < 8000.0F ? r[1] / 1000.0F : 8.0F;
        levels.push_back({r[0], r[1], r[2], r[3], 180.0F + 10.0F * km, 10.0F + 5.0F * km});
    }
    return levels;
}
