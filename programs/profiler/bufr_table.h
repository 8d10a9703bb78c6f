#pragma once

#include <cstdint>

/// One row of the element table.
struct BufrElement {
    int32_t x;         ///< class of the descriptor; 0 ends the table
    int32_t y;         ///< element in the class
    char name[20];     ///< used in traces
    char units[20];    ///< used in traces
    int32_t type;      ///< 1 number, 2 code or flag
    int32_t bits;      ///< data width
    float scale;       ///< multiplier
    int32_t reference; ///< added before the multiplier
};

/// The elements of profiler reports: WMO BUFR table B, and local class 21 element 192.
inline constexpr BufrElement kBufrTable[] = {
    {1,  1,   "WMO block",         "",        1, 7,  1.0F,  0     },
    {1,  2,   "WMO stat",          "",        1, 10, 1.0F,  0     },
    {5,  2,   "Lat",               "",        1, 15, 0.01F, -9000 },
    {6,  2,   "Lon",               "",        1, 16, 0.01F, -18000},
    {7,  1,   "Elev",              "",        1, 15, 1.0F,  -400  },
    {4,  1,   "Year",              "",        1, 12, 1.0F,  0     },
    {4,  2,   "Month",             "",        1, 4,  1.0F,  0     },
    {4,  3,   "Day",               "",        1, 6,  1.0F,  0     },
    {4,  4,   "Hour",              "",        1, 5,  1.0F,  0     },
    {4,  5,   "Min",               "",        1, 6,  1.0F,  0     },
    {8,  21,  "Time Sig",          "",        2, 5,  1.0F,  0     },
    {4,  25,  "Time Disp",         "min",     1, 12, 1.0F,  -2048 },
    {11, 2,   "Wind Spd",          "m/s",     1, 12, 0.1F,  0     },
    {11, 1,   "Wind Dir",          "deg",     1, 9,  1.0F,  0     },
    {10, 51,  "SL Press",          "Pas",     1, 14, 10.0F, 0     },
    {12, 1,   "Temp",              "K",       1, 12, 0.1F,  0     },
    {13, 14,  "Rain Rate",         "kg/m2/s", 1, 12, 1e-7F, 0     },
    {13, 3,   "Rel Hum",           "%",       1, 7,  1.0F,  0     },
    {7,  5,   "Hght incr",         "m",       1, 12, 1.0F,  -400  },
    {25, 33,  "Prof Submode",      "",        2, 2,  1.0F,  0     },
    {25, 32,  "Prof H/L mode",     "",        2, 2,  1.0F,  0     },
    {25, 34,  "Prof QC test",      "",        2, 4,  1.0F,  0     },
    {8,  22,  "Total Number",      "",        1, 16, 1.0F,  0     },
    {11, 3,   "U wind",            "m/s",     1, 13, 0.1F,  -4096 },
    {11, 4,   "V wind",            "m/s",     1, 13, 0.1F,  -4096 },
    {11, 50,  "Std dev Hor Wnd",   "m/s",     1, 12, 1.0F,  0     },
    {21, 192, "Spectral Pk 0 Mom", "Db",      1, 7,  1.0F,  0     },
    {11, 6,   "W wind",            "m/s",     1, 13, 0.1F,  -4096 },
    {11, 51,  "Std dev Ver Wnd",   "m/s",     1, 8,  1.0F,  0     },
    {0,  0,   "",                  "",        0, 0,  0.0F,  0     },
};
