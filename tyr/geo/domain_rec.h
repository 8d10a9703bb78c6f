#pragma once

// The record of a domain and the codes of the projections.

/// Codes of the projections and plot spaces.
enum Projection : int {
    kProjNone = -9999, ///< identity
    kProjPolar = 1,    ///< polar stereographic
    kProjLatLon = 2,
    kProjMercator = 3,
    kProjLambert = 4,  ///< Lambert conformal conic
    kProjOrtho = 5,    ///< orthographic
    kProjGnomonic = 6, ///< name only
    kProjMollweide = 7,
    kProjLambertAzimuthal = 8, ///< equal area
    kProjSatellite = 9,        ///< geostationary view
    kProjXY = 20,
    kProjXZ = 21,         ///< name only
    kProjXLogP = 22,      ///< x against -ln(p)
    kProjPolarPlot = 23,  ///< angle and radius: a hodograph
    kProjTimeHeight = 24, ///< linear; the section
    kProjXP = 25,         ///< linear, y running downward
    kProjSkewT = 40,
    kProjStuve = 41, ///< x against -p to the power R/cp
    kProjEmagram = 42,
    kProjTephigram = 43,
    kProjRotatedTephigram = 44,
    kProjZoom = 50, ///< name only
    kProjSize = 51, ///< name only, a form of domain text
    kProjPixel = 99
};

/// True of the map projections, 1 to 9.
inline constexpr bool is_map_projection(int proj)
{
    return proj >= kProjPolar && proj <= kProjSatellite;
}

/// Fields that aren't set hold Missing. Map projections count in plot units of 100 km (latitude-
/// longitude maps in degrees); in the linear plot spaces 20, 24 and 25 the span of the data and
/// the size of the window are independent.
struct DomainRec {
    int proj;         ///< Projection
    float plat, plon; ///< pole or origin of the projection; the centre where Missing
    float parm1;      ///< standard latitude (1, 4); distance from the earth's centre (9)
    float parm2;      ///< second standard latitude (4); 1.0: scan angles (9)
    float parm3;      ///< length factor (4)
    float parm4, parm5;
    float clat, clon; ///< centre of a map; x at the left edge and y at the bottom of a plot space
    float dx, dy;     ///< grid spacing of a map; span of data in x and y of a plot space
    int nx, ny;       ///< grid size of a map; window size in plot units of a plot space
    int ellipsoid;    ///< 1: spheroid model of projection 9
};
