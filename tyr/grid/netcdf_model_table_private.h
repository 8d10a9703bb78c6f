#pragma once

// Variables that model files of foreign layouts hold, with their codes.

namespace tyr {

struct ModelUnits {
    const char *units;
    int code;
};

struct ModelVariable {
    const char *names[6];
    int code; ///< with units that aren't listed
    ModelUnits known[4];
};

inline constexpr ModelVariable kModelVariables[] = {
    {{"pressure", "Psl", "Ptrop", "Pmaxwind", "P"},   1,  {{"pascals", 101}, {"Pa", 101}}                             },
    {{"gpt_hgt", "H", "Zsfc", "Ztrop", "Zwind", "Z"},
     2,                                                   {{"geopotential meters", 102}, {"gp m", 102}}               },
    {{"temp", "Ttrop", "T"},                          4,  {{"kelvin", 104}, {"degK", 104}}                            },
    {{"rel_hum", "RH"},                               13, {}                                                          },
    {{"lift_indx", "LI"},                             15, {}                                                          },
    {{"u_wind", "Utrop", "Umaxwind", "Usfc", "U"},    23, {}                                                          },
    {{"v_wind", "Vtrop", "Vmaxwind", "Vsfc", "V"},    24, {}                                                          },
    {{"vert_vel", "omega"},                           40, {{"pascals/second", 140}, {"Pa/second", 140}, {"Pa/s", 140}}},
    {{"precip"},                                      50, {}                                                          },
    {{"snow"},                                        51, {}                                                          },
    {{"sea_temp", "SST"},                             61, {{"degC", 62}, {"celsius", 62}, {"degK", 161}}              },
    {{"wave_hgt"},                                    64, {{"meters", 164}}                                           },
    {{"wave_per"},                                    76, {}                                                          },
    {{"wave_dir"},                                    75, {{"degrees", 175}}                                          },
};

/// Files by the start of their title.
struct ModelTitle {
    const char *start;
    int form;
};
inline constexpr ModelTitle kModelTitles[] = {
    {"NMC Earl", 10},
    {"NMC Exte", 20},
    {"ECMWF:",   30},
    {"NMC Glob", 40}
};
/// What a title that holds a word adds.
inline constexpr ModelTitle kTitleWords[] = {
    {"Trop",     1},
    {"Maximum",  2},
    {"72 hours", 3}
};

} // namespace tyr
