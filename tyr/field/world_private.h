#pragma once

// Fields that go round the world, and what their seam must not draw twice.

#include <unordered_set>

#include "tyr/field/contour_trace_private.h"
#include "tyr/geo/domain_rec.h"

namespace tyr {

/// How many columns of a latitude-longitude grid make the way round the world; 0 for a grid that
/// doesn't go round. One less than its columns where the last repeats the first.
int columns_round(const DomainRec &domain);

/// Places that have been taken by a sign.
class TakenPlaces {
  public:
    /// @param apart  places closer than this count as one
    explicit TakenPlaces(float apart) : apart_(apart) {}
    /// Takes a place. @return false if one next to it is taken
    bool take(FieldPoint p);

  private:
    float apart_;
    std::unordered_set<unsigned long long> taken_;
};

} // namespace tyr
