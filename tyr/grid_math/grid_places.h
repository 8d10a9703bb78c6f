#pragma once

// Where the points of a grid lie: shared by the routines that walk a grid on its projection.

#include <cstddef>
#include <limits>

#include "tyr/geo/domain.h"

namespace tyr {

/// Makes a domain current for as long as it lives, and then the one that was current before.
class DomainScope {
  public:
    explicit DomainScope(const DomainRec &domain);
    ~DomainScope();
    DomainScope(const DomainScope &) = delete;
    DomainScope &operator=(const DomainScope &) = delete;

  private:
    DomainRec before_{};
};

/// The largest value of a float: what is beyond it, or no number, becomes Missing.
inline constexpr float kLargest = std::numeric_limits<float>::max();

/// Number of points of a domain; 0 where a side is below 1.
size_t point_count(const DomainRec &domain);

/// Plot position of the north-west point of the current domain, which `domain` is: half the sides
/// away from the centre.
struct Corner {
    float x = 0.0F;
    float y = 0.0F;
};
Corner north_west(const DomainRec &domain);

/// Latitude of row r of a latitude-longitude grid, row 0 the northernmost.
double row_latitude(const DomainRec &domain, int row);

/// Turns plot positions of the current domain into latitudes (to x) and longitudes (to y), or the
/// other way round; Missing stays, and a place that can't be shown becomes Missing.
void to_earth(float *x, float *y, size_t count);
void to_plot(float *lat, float *lon, size_t count);

/// Latitude and longitude of the points of one row of the domain, which must be current; Missing
/// off the earth.
void row_places(const DomainRec &domain, Corner corner, int row, float *lat, float *lon);

/// Plot positions in `to` of the points in rows `first` to `last` - 1 of `from`. The current
/// domain afterwards is `to`.
void places_in(const DomainRec &from, int first, int last, const DomainRec &to, float *x, float *y);

/// A value at a place between grid points: Missing outside or beside a Missing point.
float bilinear(const float *values, int nx, int ny, float column, float row);

} // namespace tyr
