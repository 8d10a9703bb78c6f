#pragma once

#include "tyr/base/date.h"

// Codes of the storage forms of upper-air reports, and what files of all forms share.

enum UpaType : int {
    kUpaNoType = 0,
    kUpaShort = 1,     ///< short text, to 500 hPa
    kUpaLonger = 2,    ///< longer text, to 100 hPa
    kUpaFixed = 3,     ///< "TYRUPA" text, fixed rows
    kUpaFree = 4,      ///< "TYRUPA+" text, rows to a '$'
    kUpaPlaced = 5,    ///< "TYRUPAx" text, as 4 with the position in the heading
    kUpaNetcdf1 = 11,  ///< netCDF, first layout
    kUpaNetcdf2 = 12,  ///< netCDF, second layout
    kUpaDigest = 41,   ///< binary digest, written only
    kUpaXml = 51,      ///< XML, written only
    kUpaBulletin = 61, ///< WMO TEMP bulletins, read only
    kUpaWyoming = 62,  ///< tables of the University of Wyoming, text or html, read only
    kUpaSpc = 63       ///< text of the Storm Prediction Center, read only
};

inline constexpr int kUpaDateRoom = 40;
inline constexpr int kUpaShortDateRoom = 24;

struct UpaFileHeader {
    char date_text[kUpaDateRoom];       ///< "12Z 06 MAR 99" and what else TIME_parse reads
    char short_date[kUpaShortDateRoom]; ///< netCDF attribute `yymmddhh`
    const char *history;                ///< netCDF attribute; null for a standard text
    DateRec date;                       ///< the file date
};

/// How much UPA_read reads. 0 to 23 is one slot of UpaSlot, into mand[0].
enum UpaWhat : int {
    kUpaWhole = 30,
    kUpaHeading = 31, ///< id and what the heading of a text form holds; netCDF: id and wmo
    kUpaPlace = 32    ///< netCDF: id, region, wmo, lat, lon, elev; text forms: as kUpaHeading
};
