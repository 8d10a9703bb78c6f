#pragma once

// The current domain with all that is worked out from it: domain.cpp fills it, projection.cpp reads
// it, a projection's formulas get it as an argument.

#include "tyr/base/missing.h"
#include "tyr/geo/domain_rec.h"
#include "tyr/geo/earth.h"

namespace tyr {

struct ProjectionForm;

struct CurrentDomain {
    DomainRec rec = {kProjNone, kMissing, kMissing,    kMissing,    kMissing,
                     kMissing,  kMissing, kMissing,    kMissing,    kMissing,
                     kMissing,  kMissing, kMissingInt, kMissingInt, 0};
    const ProjectionForm *form = nullptr; ///< of rec.proj; null for a code that isn't one
    double std1 = 30.0, std2 = 60.0;      ///< standard latitudes
    double distance = kSatelliteDistance; ///< of the satellite from the earth's centre, 100 km
    float window[4] = {0.0F, 0.0F, 0.0F, 0.0F};
    float viewport[4] = {0.0F, 0.0F, 0.0F, 0.0F};
    double fx = 1.0, fy = 1.0; ///< window units for a unit of data
    double sign = 1.0;         ///< of the hemisphere, as the projection's formulas want it
    double cone = 1.0;         ///< cone constant
    double radius = 1.0;       ///< factor of the radius from the pole
    double sin_pole = 0.0, cos_pole = 1.0;
    double skew = 0.0; ///< shift of x for a unit of y
};

CurrentDomain &current_domain();

} // namespace tyr
