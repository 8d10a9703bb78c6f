#pragma once

/// What part of what plot space a picture shows. One record serves a map and a time-height section
/// alike: the projection code tells them apart, and the fields change meaning with it.

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

/// All fields Missing, `ellipsoid` 0.
void DOM_init(DomainRec *domain);

/// Makes a domain current: works out the constants of its projection and its window.
/// @return 0; -1 for null, which leaves no projection
int DOM_set(const DomainRec *domain);

/// Copies the current domain out and returns `out`; returns the current record itself for null.
DomainRec *DOM_get(DomainRec *out);

/// Window of the current domain in plot units: x minimum, x maximum, y minimum, y maximum.
void DOM_get_window(float out[4]);

int DOM_get_proj();
float DOM_get_clat();
float DOM_get_clon();

/// Width to height ratio of the picture, (nx - 1) / (ny - 1); 1.0 where one of them isn't above 1.
float DOM_aspect(const DomainRec *domain);

/// 1 if a plot point lies in the window widened by 3 dx and 3 dy on each side; always 1 without a
/// projection.
int DOM_near_window(float x, float y);

/// 1 if two domains show the same; a Missing pole counts as equal to the other's centre.
int DOM_equal(const DomainRec *a, const DomainRec *b);

/// Stores the viewport (normalised, x0, x1, y0, y1) that skewed plot spaces need.
void DOM_set_viewport(const float in[4]);
