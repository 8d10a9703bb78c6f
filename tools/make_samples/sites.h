#pragma once

/// A site of the sample network.
struct SampleSite {
    const char *id;
    int wmo;   ///< block and station number
    float lat; ///< degrees north
    float lon; ///< degrees east
    float elev;
};

/// 35 sites of the NOAA profiler network (public list of the U.S. National Oceanic and Atmospheric
/// Administration: identifier, WMO number, place, elevation).
inline constexpr SampleSite kSampleSites[] = {
    {"AZCN5", 74630, 36.84F, -107.90F, 1902.0F},
    {"BLMM7", 74662, 36.88F, -89.97F,  130.0F },
    {"BLRW3", 74357, 43.22F, -90.53F,  226.0F },
    {"CENA2", 70197, 65.49F, -144.66F, 272.0F },
    {"CNWM7", 74550, 37.52F, -92.70F,  390.0F },
    {"DQUA4", 74752, 34.11F, -94.29F,  195.0F },
    {"FBYN1", 74440, 40.09F, -97.34F,  433.0F },
    {"GDAC2", 74530, 37.77F, -102.17F, 1155.0F},
    {"GNAA2", 70268, 62.11F, -145.97F, 573.0F },
    {"HBRK1", 74546, 38.30F, -97.29F,  447.0F },
    {"HKLO2", 74648, 35.68F, -95.86F,  219.0F },
    {"HVLK1", 74541, 37.65F, -99.09F,  648.0F },
    {"JTNT2", 74735, 33.00F, -100.98F, 707.0F },
    {"LDBT2", 72246, 30.09F, -96.78F,  122.0F },
    {"LMNO2", 74647, 36.68F, -97.48F,  306.0F },
    {"LTHM7", 74551, 39.57F, -94.18F,  297.0F },
    {"MBWW4", 74431, 41.90F, -106.18F, 1997.0F},
    {"MRRN1", 74437, 42.90F, -101.69F, 991.0F },
    {"NDSK1", 74542, 37.37F, -95.63F,  255.0F },
    {"NLGN1", 74445, 42.20F, -97.79F,  524.0F },
    {"OKOM6", 74769, 34.08F, -88.86F,  125.0F },
    {"PATT2", 74750, 31.77F, -95.71F,  119.0F },
    {"PLTC2", 74533, 40.18F, -104.71F, 1524.0F},
    {"PRCO2", 74649, 34.97F, -97.51F,  331.0F },
    {"RWDN1", 74433, 40.08F, -100.65F, 800.0F },
    {"SLAI4", 74449, 41.90F, -93.69F,  315.0F },
    {"TCUN5", 74731, 35.08F, -103.60F, 1241.0F},
    {"TLKA2", 70252, 62.31F, -150.42F, 151.0F },
    {"VBGC1", 74604, 34.75F, -120.53F, 149.0F },
    {"VCIO2", 74640, 36.07F, -99.21F,  648.0F },
    {"WDLM5", 74341, 44.67F, -95.44F,  319.0F },
    {"WLCI3", 74466, 40.81F, -87.05F,  212.0F },
    {"WNCI2", 74556, 39.65F, -90.48F,  170.0F },
    {"WNFL1", 74753, 31.89F, -92.78F,  93.0F  },
    {"WSMN5", 74629, 32.40F, -106.34F, 1224.0F},
};
