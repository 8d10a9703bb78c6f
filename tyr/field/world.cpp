#include <cmath>

#include "tyr/field/world_private.h"

namespace tyr {

namespace {

constexpr float kFullTurn = 360.0F;
constexpr float kTolerance = 0.25F; ///< grid lengths; a spacing is written with few digits

unsigned long long key_of(float x, float y)
{
    const auto part = [](float v) {
        return static_cast<unsigned long long>(static_cast<unsigned>(static_cast<int>(v)));
    };
    return part(x) << 32U | part(y);
}

} // namespace

int columns_round(const DomainRec &domain)
{
    if (domain.proj != kProjLatLon || domain.nx < 3 || !(domain.dx > 0.0F)) {
        return 0;
    }
    const float columns = kFullTurn / domain.dx;
    for (const int n : {domain.nx, domain.nx - 1}) {
        if (std::fabs(columns - static_cast<float>(n)) < kTolerance) {
            return n;
        }
    }
    return 0;
}

bool TakenPlaces::take(FieldPoint p)
{
    constexpr float kFar = 1e9F;
    const float x = std::floor(p.x / apart_);
    const float y = std::floor(p.y / apart_);
    if (!(std::fabs(x) < kFar && std::fabs(y) < kFar)) {
        return true; // too far out to be seen
    }
    for (int i = -1; i <= 1; ++i) {
        for (int j = -1; j <= 1; ++j) {
            if (taken_.count(key_of(x + static_cast<float>(i), y + static_cast<float>(j))) != 0) {
                return false;
            }
        }
    }
    taken_.insert(key_of(x, y));
    return true;
}

} // namespace tyr
