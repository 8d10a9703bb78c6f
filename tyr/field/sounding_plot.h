#pragma once

#include "tyr/geo/domain.h"
#include "tyr/met/parcel.h"
#include "tyr/met/sounding.h"

// A sounding on a thermodynamic diagram: skew-T log-p (kProjSkewT), tephigram (kProjTephigram) or
// the tephigram with upright axes (kProjRotatedTephigram). All is drawn on an open plot
// (plot/session.h) into a viewport in normalised coordinates, x0, x1, y0, y1; labels stand outside
// of its left and lower edge, some 0.05 and 0.03 wide. Sounding levels are ordered from the ground
// up, temperatures in degrees Celsius.
//
// The look of each thing is an attribute text of plot/attributes.h:
//
// | resource       | default           | what                                            |
// |----------------|-------------------|-------------------------------------------------|
// | color_isobar   | "#909090"         | isobars; the frame                              |
// | color_isotherm | "#B8B8B8"         | isotherms                                       |
// | color_zero     | "#5070C0:w2"      | the isotherm of 0 degrees                       |
// | color_dry      | "#D8B080"         | dry adiabats, every 10 K                        |
// | color_moist    | "#80B890:s2"      | moist adiabats, every 4 K at 1000 hPa           |
// | color_mixing   | "#7890C8:s5"      | mixing ratios, with their numbers in g/kg       |
// | color_temp     | "#D02020:w3"      | temperature                                     |
// | color_dewp     | "#108030:w3"      | dew point                                       |
// | color_parcel   | ":w2:s3"          | path of the parcel                              |
// | color_cape     | "#F8C8C0"         | where it is warmer than its surroundings        |
// | color_cin      | "#C8DCF4"         | where it is colder below free convection        |
// | color_wind     | ""                | barbs and the line that they stand on           |
// | color_text     | ""                | numbers                                         |
//
// A text without a colour means black on a light ground and white on a dark one.

/// A parcel's path, for the plot: the level that it starts from, and the result of its lift.
struct ParcelPath {
    SoundLevel start;
    ParcelRec lift;
};

/// The plot space of a diagram for a viewport: some -40 to 45 degrees at 1050 hPa, and 100 hPa at
/// the top.
/// @return 0; -1 for a code that is no thermodynamic diagram or an empty viewport, with a message
int THERM_diagram_domain(int proj, const float viewport[4], DomainRec *domain);

/// Draws the diagram with its lines and, on it, the temperature, the dew point and the parcel.
/// The diagram's domain is current afterwards, in transformation 2; transformation 1 is selected.
///
/// @param path  may be null
/// @return 0; -1 as THERM_diagram_domain, with nothing drawn. A sounding without levels gives the
///         empty diagram
int THERM_plot_diagram(int proj, const float viewport[4], const SoundLevel *sound, int n,
                       const ParcelPath *path);

/// Marks the parcel's condensation level, level of free convection and equilibrium level ("LCL",
/// "LFC", "EL") at the right edge of the diagram drawn last, and, given a sounding, the heights of
/// its isobars at the left edge, in metres.
void THERM_plot_levels(const float viewport[4], const SoundLevel *sound, int n,
                       const ParcelPath *path);

/// Draws the barbs of a wind sounding on an upright line at x (normalised), each at the height of
/// its pressure on the diagram drawn last. Levels nearer than `gap` (normalised) to the one below
/// are left out, and those off the diagram.
///
/// @param temps  the sounding on the diagram, which tells the heights on a tephigram
/// @return how many were drawn
int THERM_plot_barbs(float x, float staff, float gap, const SoundLevel *winds, int m,
                     const SoundLevel *temps, int n);
