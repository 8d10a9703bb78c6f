#include "tyr/map/map_sides.h"

#include <cmath>

#include "tyr/geo/domain.h"

namespace {

constexpr float kLatLonWidth = 360.0F;
constexpr float kMercatorWidth = 400.31555F;
constexpr float kMollweideRadius = 63.713F;
constexpr float kMollweideWidth = 254.852F;
constexpr float kHalfTurn = 180.0F;

} // namespace

float map_wrap_width(int proj, float y)
{
    switch (proj) {
    case kProjLatLon:
        return kLatLonWidth;
    case kProjMercator:
        return kMercatorWidth;
    case kProjMollweide: {
        const float part = y / kMollweideRadius;
        return std::sqrt(std::fmax(1.0F - part * part, 0.0F)) * kMollweideWidth;
    }
    default:
        return 0.0F;
    }
}

bool crosses_cone_cut(float from_lon, float to_lon)
{
    const DomainRec &domain = *DOM_get(nullptr);
    if (domain.proj != kProjLambert) {
        return false;
    }
    const float from = std::remainder(from_lon - domain.plon, 2.0F * kHalfTurn);
    const float to = std::remainder(to_lon - domain.plon, 2.0F * kHalfTurn);
    return std::fabs(to - from) > kHalfTurn;
}
