#pragma once

// Codes of the storage forms of upper-air reports.

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
