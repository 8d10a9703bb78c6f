#include <algorithm>
#include <cmath>

#include "base/missing.h"
#include "map/domain.h"
#include "map/projection.h"
#include "tyr/grib/geometry_private.h"

namespace tyr {
namespace {

constexpr double kDegrees = 180.0 / 3.14159265358979323846;
constexpr double kMetresPerUnit = 100000.0;
constexpr double kEarthKm = kEarthRadius * 100.0; ///< our own sphere

/// Puts the domain in force back at its end.
class KeepDomain {
  public:
    KeepDomain() { DOM_get(&kept_); }
    ~KeepDomain() { DOM_set(&kept_); }
    KeepDomain(const KeepDomain &) = delete;
    KeepDomain &operator=(const KeepDomain &) = delete;

  private:
    DomainRec kept_{};
};

/// Degrees eastward from one longitude to another, [0, 360]: a span of nothing is a whole turn
/// where the increments say so.
double span_east(double from, double to, double by_increments)
{
    double span = std::fmod(to - from, 360.0);
    span += span < 0.0 ? 360.0 : 0.0;
    return span == 0.0 && by_increments > 180.0 ? 360.0 : span;
}

double wrap(double lon)
{
    lon = std::fmod(lon, 360.0);
    if (lon > 180.0) {
        return lon - 360.0;
    }
    return lon <= -180.0 ? lon + 360.0 : lon;
}

/// Spacing from the corners where it agrees with the increment as far as that was rounded: the
/// last point then stands where it was said to.
double settle(double increment, bool is_given, double span, int intervals, double resolution)
{
    if (intervals < 1) {
        return is_given ? increment : 0.0;
    }
    const double even = span / intervals;
    if (!is_given || std::fabs(even - increment) <= 2.0 * resolution) {
        return even;
    }
    return increment;
}

bool make_latlon(const GridShape &s, const Product &product, DomainRec *d)
{
    const Layout &layout = product.layout;
    const double east = layout.from_east ? s.lon1 : s.lon2;
    const double west = layout.from_east ? s.lon2 : s.lon1;
    const double guess = s.has_di ? s.di * (layout.nx - 1) : 0.0;
    const double span = span_east(west, east, s.has_di ? guess : 360.0);
    const double dx = settle(s.di, s.has_di, span, layout.nx - 1, s.resolution);
    const double height = std::fabs(s.lat2 - s.lat1);
    const double dy = settle(s.dj, s.has_dj, height, layout.ny - 1, s.resolution);
    const double half = dx * (layout.nx - 1) / 2.0;
    const double up = layout.from_south ? 1.0 : -1.0;
    // one row or column has no spacing: the other's serves
    d->dx = static_cast<float>(dx > 0.0 ? dx : dy);
    d->dy = static_cast<float>(dy > 0.0 ? dy : dx);
    d->clon = static_cast<float>(wrap(layout.from_east ? s.lon1 - half : s.lon1 + half));
    d->clat = static_cast<float>(s.lat1 + up * dy * (layout.ny - 1) / 2.0);
    return true;
}

double mercator_y(double lat)
{
    return kEarthRadius * std::log(std::tan((45.0 + lat / 2.0) / kDegrees));
}

/// From the first point by the increments, which hold at the latitude of true scale; without them
/// between the corners.
bool make_mercator(const GridShape &s, const Product &product, DomainRec *d)
{
    const Layout &layout = product.layout;
    if (std::fabs(s.lat1) >= 89.9 || std::fabs(s.lat2) >= 89.9 || layout.nx < 2 || layout.ny < 2 ||
        std::fabs(s.true_latitude) >= 89.9) {
        return product.origin.refuse("a Mercator grid from latitude %.3f to %.3f", s.lat1, s.lat2);
    }
    const double east = layout.from_east ? s.lon1 : s.lon2;
    const double west = layout.from_east ? s.lon2 : s.lon1;
    const double scale =
        kEarthKm / s.earth_km / kMetresPerUnit / std::cos(s.true_latitude / kDegrees);
    const double y1 = mercator_y(s.lat1);
    const double even_x = span_east(west, east, 360.0) / kDegrees * kEarthRadius / (layout.nx - 1);
    const double even_y = std::fabs(mercator_y(s.lat2) - y1) / (layout.ny - 1);
    const double dx = s.has_di ? s.di * scale : even_x;
    const double dy = s.has_dj ? s.dj * scale : even_y;
    const double half = dx * (layout.nx - 1) / 2.0 / kEarthRadius * kDegrees;
    const double y = y1 + (layout.from_south ? 1.0 : -1.0) * dy * (layout.ny - 1) / 2.0;
    d->dx = static_cast<float>(dx);
    d->dy = static_cast<float>(dy);
    d->clon = static_cast<float>(wrap(s.lon1 + (layout.from_east ? -half : half)));
    d->clat = static_cast<float>(2.0 * std::atan(std::exp(y / kEarthRadius)) * kDegrees - 90.0);
    return true;
}

/// Finds the centre of a plane's grid from its first point.
bool centre_plane(const GridShape &s, const Product &product, DomainRec *d)
{
    const Layout &layout = product.layout;
    const double scale = kEarthKm / s.earth_km / kMetresPerUnit;
    d->dx = static_cast<float>(s.di * scale);
    d->dy = static_cast<float>(s.dj * scale);
    if (!(d->dx > 0.0F) || !(d->dy > 0.0F)) {
        return product.origin.refuse("a grid spacing of %g by %g m", s.di, s.dj);
    }
    if (s.is_spheroid) {
        product.origin.note(
            "the earth is a spheroid, the map a sphere: places are off by up to 0.2 "
            "degrees");
    }
    const KeepDomain kept;
    d->clat = d->plat;
    d->clon = d->plon;
    DOM_set(d);
    float x = 0.0F;
    float y = 0.0F;
    float lat = 0.0F;
    float lon = 0.0F;
    const double half_x = s.di * scale * (layout.nx - 1) / 2.0;
    const double half_y = s.dj * scale * (layout.ny - 1) / 2.0;
    if (MAP_ll_to_xy(&x, &y, static_cast<float>(s.lat1), static_cast<float>(s.lon1)) != 1 ||
        MAP_xy_to_ll(&lat, &lon, static_cast<float>(x + (layout.from_east ? -half_x : half_x)),
                     static_cast<float>(y + (layout.from_south ? half_y : -half_y))) != 1) {
        return product.origin.refuse("its first point isn't on the map");
    }
    d->clat = lat;
    d->clon = static_cast<float>(wrap(static_cast<double>(lon)));
    return true;
}

bool make_polar(const GridShape &s, const Product &product, DomainRec *d)
{
    d->plat = s.is_south ? -90.0F : 90.0F;
    d->plon = static_cast<float>(wrap(s.lov));
    d->parm1 = static_cast<float>(std::copysign(std::fabs(s.true_latitude), d->plat));
    return centre_plane(s, product, d);
}

/// The projection has an inverse where both parallels stand on the side of its pole.
bool make_lambert(const GridShape &s, const Product &product, DomainRec *d)
{
    if (s.latin1 * s.latin2 <= 0.0 || std::fabs(s.latin1) >= 90.0 || std::fabs(s.latin2) >= 90.0) {
        return product.origin.refuse("no Lambert cone stands on the parallels %.3f and %.3f",
                                     s.latin1, s.latin2);
    }
    d->plat = s.latin1 < 0.0 ? -90.0F : 90.0F;
    d->plon = static_cast<float>(wrap(s.lov));
    d->parm1 = static_cast<float>(s.latin1);
    d->parm2 = static_cast<float>(s.latin2);
    d->parm3 = 1.0F;
    return centre_plane(s, product, d);
}

} // namespace

bool make_domain(const GridShape &shape, const Product &product, DomainRec *domain)
{
    DOM_init(domain);
    domain->proj = shape.proj;
    domain->nx = product.layout.nx;
    domain->ny = product.layout.ny;
    if (!(std::fabs(shape.lat1) <= 90.0) || !(std::fabs(shape.lat2) <= 90.0)) {
        return product.origin.refuse("a latitude of %.3f", std::max(shape.lat1, shape.lat2));
    }
    switch (shape.proj) {
    case kProjLatLon:
        return make_latlon(shape, product, domain);
    case kProjMercator:
        return make_mercator(shape, product, domain);
    case kProjPolar:
        return make_polar(shape, product, domain);
    default:
        return make_lambert(shape, product, domain);
    }
}

} // namespace tyr
