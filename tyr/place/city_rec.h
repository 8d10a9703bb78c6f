#pragma once

/// One record. Aligned so that it is the 80 bytes that tables of whole records hold.
struct alignas(16) CityRec {
    char name[21];
    char state[3];
    char country[3]; ///< "B_": the WMO text begins with "b"
    char id[10];
    int priority;    ///< 0 (shown first) to 9, kMissingInt for none
    char first_mark; ///< '*' or ' '
    char second_mark;
    float lat, lon; ///< degrees
    float elev;     ///< metres, or Missing
    int wmo;
    int number;
};
static_assert(sizeof(CityRec) == 80);
