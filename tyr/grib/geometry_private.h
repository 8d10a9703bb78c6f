#pragma once

#include "tyr/grib/product_private.h"

// The grid descriptions of both editions on their common road to a domain.

namespace tyr {

/// A grid as its section describes it. Angles in degrees, lengths in metres.
struct GridShape {
    int proj = 0;
    double lat1 = 0, lon1 = 0; ///< first point
    double lat2 = 0, lon2 = 0; ///< last point, of latitude-longitude and Mercator grids
    double di = 0, dj = 0;     ///< increments: degrees on latitude-longitude grids, else metres
    bool has_di = true, has_dj = true;
    double resolution = 0;    ///< of the angles
    double lov = 0;           ///< orientation
    double true_latitude = 0; ///< of polar grids
    double latin1 = 0, latin2 = 0;
    bool is_south = false;     ///< the south pole is on the plane
    double earth_km = 6367.47; ///< radius
    bool is_spheroid = false;
};

/// Radius of the sphere that edition 1 stands on, and edition 2's shape 0.
inline constexpr double kGribEarthKm = 6367.47;

/// Sets the projection, the spacing and the centre of a domain whose nx and ny stand in the layout.
/// The domain in force stays. @return false, told, for a grid that has none
bool make_domain(const GridShape &shape, const Product &product, DomainRec *domain);

/// Reads an edition 1 grid description (section 2) into layout and domain.
bool read_grid1(Section s, Product *product, GridRec *grid);
/// The layout of a grid that edition 1 knows by its number alone.
void set_numbered_layout(Product *product, const GridRec &grid);

/// Reads an edition 2 grid definition (section 3) into layout and domain.
bool read_grid2(Section s, Product *product, GridRec *grid);

} // namespace tyr
