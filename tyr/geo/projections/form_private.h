#pragma once

// What a projection or plot space is made of. Each stands in a file of its own, as one record of
// pure functions of the domain, and in the table of table.cpp.

#include <cmath>
#include <span>

#include "tyr/base/angle.h"
#include "tyr/geo/current_domain_private.h"

namespace tyr {

/// A point on either side: x or latitude, y or longitude.
struct MapPoint {
    double a = kMissing;
    double b = kMissing;
    bool shown = true;
};

inline constexpr MapPoint kNowhere = {kMissing, kMissing, false};

/// How the window of the picture follows from the record.
enum class WindowForm {
    map,       ///< nx by ny points dx, dy apart round the centre
    linear,    ///< a window of its own, that the span of the data fills
    plain,     ///< the record's corner and span
    skewed,    ///< as projected, without the skew
    projected, ///< the projected corners
};

/// Places side by side, kMostPlaces at most.
struct Places {
    int count;
    const double *lat, *lon; ///< degrees
    double *x, *y;
};
inline constexpr int kMostPlaces = 256;

/// A null function is one that the projection has no need of.
struct ProjectionForm {
    int code;
    const char *name;     ///< printed
    const char *words[4]; ///< by which users name it: beginnings, or "=word" for the whole word
    WindowForm window;
    void (*set_up)(CurrentDomain &d); ///< works out the constants
    /// Earth (degrees, wrapped to +-180) or data to plot units.
    MapPoint (*forward)(const CurrentDomain &d, double lat, double lon);
    /// The same of many places, within a float's accuracy; Missing for what isn't shown.
    void (*forward_all)(const CurrentDomain &d, Places places);
    MapPoint (*inverse)(const CurrentDomain &d, double x, double y);
    /// A direction relative to north at a plot point, relative to the plot's up direction.
    float (*rotate)(const CurrentDomain &d, float direction, float x, float y);
    float (*scale)(const CurrentDomain &d, float lat); ///< length factor
    float (*wrap_width)(float y);           ///< width of the world at y, where its sides meet
    double (*skew)(const CurrentDomain &d); ///< by window and viewport, which both have an extent
};

/// Nothing is projected.
extern const ProjectionForm kNoneForm;

/// All forms. Null for a code without one.
std::span<const ProjectionForm *const> projection_forms();
const ProjectionForm *projection_form(int code);

inline constexpr double kHalfTurn = 180.0;
inline constexpr double kTurn = 360.0;

/// A longitude into -180 to 180, both ends kept.
double wrap_longitude(double lon);

/// The angle of a sine that rounding may have carried past 1.
double asin_degrees(double value);

} // namespace tyr
