#include <algorithm>
#include <cmath>

#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/grib/geometry_private.h"

// Grid definition section of edition 2: WMO Manual on Codes, Volume I.2, FM 92-XIII, section 3.

namespace tyr {
namespace {

constexpr std::uint32_t kAllOnes32 = 0xFFFFFFFFU;
constexpr double kMicro = 1e-6;
constexpr double kMilli = 1e-3;
constexpr unsigned kSouthPole = 0x80;
constexpr unsigned kDiGiven = 0x20;
constexpr unsigned kDjGiven = 0x10;
constexpr int kMostSide = 1 << 24;

enum Template3 : unsigned { kLatLon = 0, kMercator = 10, kPolar = 20, kLambert = 30 };

struct TemplateName {
    unsigned number;
    const char *name;
};
constexpr TemplateName kOthers[] = {
    {1,   "rotated lat-lon"             },
    {2,   "stretched lat-lon"           },
    {3,   "stretched rotated lat-lon"   },
    {4,   "variable resolution lat-lon" },
    {12,  "transverse Mercator"         },
    {31,  "Albers equal area"           },
    {40,  "Gaussian"                    },
    {41,  "rotated Gaussian"            },
    {42,  "stretched Gaussian"          },
    {50,  "spherical harmonics"         },
    {63,  "bi-Fourier coefficients"     },
    {90,  "space view"                  },
    {100, "triangular on an icosahedron"},
    {101, "unstructured"                },
    {110, "equatorial azimuthal"        },
    {140, "Lambert azimuthal equal area"},
};

const char *template_name(unsigned number)
{
    for (const TemplateName &known : kOthers) {
        if (known.number == number) {
            return known.name;
        }
    }
    return "not listed";
}

bool is_listed(unsigned number)
{
    return number == kLatLon || number == kMercator || number == kPolar || number == kLambert;
}

/// Code table 3.2, and for the shapes that carry one the radius beside it.
void read_earth(Section s, GridShape *shape)
{
    constexpr double kWmoKm = 6371.229;
    constexpr double kLowestKm = 1000.0;
    const double unit = std::pow(10.0, -s.s8(16)) * kMilli;
    switch (s.u8(15)) {
    case 0:
        shape->earth_km = kGribEarthKm;
        break;
    case 1:
        shape->earth_km = s.u32(17) * unit;
        break;
    case 6:
        shape->earth_km = kWmoKm;
        break;
    case 8:
        shape->earth_km = 6371.2;
        break;
    default: // spheroids: the sphere of their mean radius
        shape->earth_km = kEarthRadius * 100.0;
        shape->is_spheroid = true;
        break;
    }
    if (!(shape->earth_km > kLowestKm)) {
        shape->earth_km = kWmoKm;
    }
}

bool read_row_lengths(Section s, size_t first, Product *product)
{
    Layout &layout = product->layout;
    const size_t width = s.u8(11);
    const auto rows = static_cast<size_t>(layout.ny);
    if (width < 1 || width > 4 || first + rows * width > s.size() + 1U) {
        return product->origin.refuse("a thinned grid without the lengths of its %d rows",
                                      layout.ny);
    }
    layout.shape = RowShape::kThinned;
    layout.row_lengths.clear();
    for (size_t j = 0; j < rows; ++j) {
        const size_t octet = first + j * width;
        std::uint32_t n = 0;
        for (size_t k = 0; k < width; ++k) {
            n = n << 8 | s.u8(octet + k);
        }
        if (n > kMostSide) {
            return product->origin.refuse("a row of %u points", n);
        }
        layout.row_lengths.push_back(static_cast<int>(n));
    }
    layout.nx = *std::max_element(layout.row_lengths.begin(), layout.row_lengths.end());
    return layout.nx > 0 || product->origin.refuse("a thinned grid whose rows are empty");
}

bool read_layout(Section s, size_t scanning_octet, Product *product)
{
    Layout &layout = product->layout;
    layout = Layout{};
    layout.set_scanning(s.u8(scanning_octet) & 0xF0U);
    if ((s.u8(scanning_octet) & 0x0FU) != 0) {
        return product->origin.refuse("rows of points set off by half a step (scanning mode %u)",
                                      s.u8(scanning_octet));
    }
    const std::uint32_t nx = s.u32(31);
    const std::uint32_t ny = s.u32(35);
    if (ny < 1 || ny > kMostSide || nx < 1 || (nx > kMostSide && nx != kAllOnes32)) {
        return product->origin.refuse("a grid of %u by %u points", nx, ny);
    }
    layout.ny = static_cast<int>(ny);
    if (nx == kAllOnes32) {
        return read_row_lengths(s, scanning_octet + 1, product);
    }
    layout.nx = static_cast<int>(nx);
    return true;
}

GridShape read_latlon(Section s)
{
    GridShape shape;
    shape.proj = kProjLatLon;
    const bool has_unit =
        s.u32(39) != 0 && s.u32(39) != kAllOnes32 && s.u32(43) != 0 && s.u32(43) != kAllOnes32;
    const double unit = has_unit ? static_cast<double>(s.u32(39)) / s.u32(43) : kMicro;
    shape.lat1 = s.s32(47) * unit;
    shape.lon1 = s.s32(51) * unit;
    shape.lat2 = s.s32(56) * unit;
    shape.lon2 = s.s32(60) * unit;
    shape.di = s.u32(64) * unit;
    shape.dj = s.u32(68) * unit;
    shape.has_di = (s.u8(55) & kDiGiven) != 0 && s.u32(64) != kAllOnes32;
    shape.has_dj = (s.u8(55) & kDjGiven) != 0 && s.u32(68) != kAllOnes32;
    shape.resolution = std::max(unit, kMicro);
    return shape;
}

GridShape read_mercator(Section s)
{
    GridShape shape;
    shape.proj = kProjMercator;
    shape.lat1 = s.s32(39) * kMicro;
    shape.lon1 = s.s32(43) * kMicro;
    shape.lat2 = s.s32(52) * kMicro;
    shape.lon2 = s.s32(56) * kMicro;
    shape.true_latitude = s.s32(48) * kMicro;
    shape.di = s.u32(65) * kMilli;
    shape.dj = s.u32(69) * kMilli;
    shape.has_di = s.u32(65) != 0 && s.u32(65) != kAllOnes32;
    shape.has_dj = s.u32(69) != 0 && s.u32(69) != kAllOnes32;
    return shape;
}

GridShape read_plane(Section s, unsigned number)
{
    GridShape shape;
    shape.proj = number == kPolar ? kProjPolar : kProjLambert;
    shape.lat1 = s.s32(39) * kMicro;
    shape.lon1 = s.s32(43) * kMicro;
    shape.true_latitude = s.s32(48) * kMicro;
    shape.lov = s.s32(52) * kMicro;
    shape.di = s.u32(56) * kMilli;
    shape.dj = s.u32(60) * kMilli;
    shape.is_south = (s.u8(64) & kSouthPole) != 0;
    shape.latin1 = s.s32(66) * kMicro;
    shape.latin2 = s.s32(70) * kMicro;
    return shape;
}

size_t scanning_octet(unsigned number)
{
    switch (number) {
    case kLatLon:
        return 72;
    case kMercator:
        return 60;
    default:
        return 65;
    }
}

} // namespace

bool read_grid2(Section s, Product *product, GridRec *grid)
{
    const unsigned number = s.u16(13);
    if (s.u8(6) != 0) {
        return product->origin.refuse("a grid that its section doesn't define (source %u)",
                                      s.u8(6));
    }
    if (!is_listed(number)) {
        return product->origin.refuse("grid template %u (%s) isn't known", number,
                                      template_name(number));
    }
    const size_t scanning = scanning_octet(number);
    if (s.size() < scanning || (number == kLambert && s.size() < 73)) {
        return product->origin.refuse("a grid definition of %zu octets", s.size());
    }
    if (!read_layout(s, scanning, product)) {
        return false;
    }
    GridShape shape = number == kLatLon     ? read_latlon(s)
                      : number == kMercator ? read_mercator(s)
                                            : read_plane(s, number);
    read_earth(s, &shape);
    if (product->layout.shape == RowShape::kThinned) {
        shape.has_di = false;
    }
    if (product->layout.stored_points() != s.u32(7) && s.u32(7) != 0) {
        return product->origin.refuse("%u points for a grid of %d by %d", s.u32(7),
                                      product->layout.nx, product->layout.ny);
    }
    return make_domain(shape, *product, &grid->domain);
}

} // namespace tyr
