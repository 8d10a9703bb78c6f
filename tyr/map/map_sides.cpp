#include <cmath>

#include "tyr/geo/domain.h"
#include "tyr/map/map_sides_private.h"

using namespace tyr;

namespace {

constexpr float kHalfTurn = 180.0F;

} // namespace

bool tyr::crosses_cone_cut(float from_lon, float to_lon)
{
    const DomainRec &domain = *DOM_get(nullptr);
    if (domain.proj != kProjLambert) {
        return false;
    }
    const float from = std::remainder(from_lon - domain.plon, 2.0F * kHalfTurn);
    const float to = std::remainder(to_lon - domain.plon, 2.0F * kHalfTurn);
    return std::fabs(to - from) > kHalfTurn;
}
