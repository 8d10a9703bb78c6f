#include <algorithm>
#include <cmath>
#include <cstring>

#include "tyr/geo/domain.h"
#include "tyr/grib/geometry_private.h"

// Grid description section of edition 1: WMO Manual on Codes, Volume I.2, FM 92-IX, section 2.

namespace tyr {
namespace {

constexpr unsigned kAllOnes16 = 0xFFFF;
constexpr unsigned kIncrementsGiven = 0x80;
constexpr unsigned kSpheroid = 0x40;
constexpr unsigned kSouthPole = 0x80;
constexpr double kMilli = 1e-3;
constexpr double kTrueLatitude = 60.0; ///< of edition 1's polar grids
constexpr double kPoleStep = 1e-3;

enum GridType1 : unsigned { kLatLon1 = 0, kMercator1 = 1, kLambert1 = 3, kPolar1 = 5 };

struct TypeName {
    unsigned type;
    const char *name;
};
constexpr TypeName kOtherTypes[] = {
    {2,  "gnomonic"           },
    {4,  "Gaussian"           },
    {8,  "Albers"             },
    {10, "rotated lat-lon"    },
    {13, "oblique Lambert"    },
    {14, "rotated Gaussian"   },
    {20, "stretched lat-lon"  },
    {50, "spherical harmonics"},
    {90, "space view"         },
};

const char *type_name(unsigned type)
{
    for (const TypeName &known : kOtherTypes) {
        if (known.type == type) {
            return known.name;
        }
    }
    return "not listed";
}

/// Points of each row, behind the vertical coordinates. The list may have rows of no points.
bool read_row_lengths(Section s, Layout *layout, const Origin &origin)
{
    const size_t start = s.u8(5) + 4U * s.u8(4);
    const auto rows = static_cast<size_t>(layout->ny);
    if (rows < 1 || s.u8(5) == 0 || s.u8(5) == 255 || start + 2U * rows - 1U > s.size()) {
        return origin.refuse("a thinned grid without the lengths of its %d rows", layout->ny);
    }
    layout->shape = RowShape::kThinned;
    layout->row_lengths.clear();
    for (size_t j = 0; j < rows; ++j) {
        layout->row_lengths.push_back(static_cast<int>(s.u16(start + 2U * j)));
    }
    layout->nx = *std::max_element(layout->row_lengths.begin(), layout->row_lengths.end());
    return layout->nx > 0 || origin.refuse("a thinned grid whose rows are empty");
}

bool read_layout(Section s, Product *product)
{
    Layout &layout = product->layout;
    layout = Layout{};
    layout.set_scanning(s.u8(28) & 0xE0U);
    layout.nx = static_cast<int>(s.u16(7));
    layout.ny = static_cast<int>(s.u16(9));
    const size_t lengths = s.u8(5) + 4U * s.u8(4);
    const bool has_lengths = s.u8(5) != 0 && s.u8(5) != 255 && layout.ny > 0 &&
                             lengths + 2U * static_cast<unsigned>(layout.ny) - 1U <= s.size();
    const bool is_flat = s.u8(6) == kLatLon1;
    if (s.u16(9) == kAllOnes16) {
        return product->origin.refuse("a grid thinned along its columns");
    }
    if (is_flat && (s.u16(7) == kAllOnes16 || (has_lengths && s.u8(4) == 0))) {
        if (!read_row_lengths(s, &layout, product->origin)) {
            return false;
        }
    }
    return (layout.nx > 0 && layout.ny > 0) ||
           product->origin.refuse("a grid of %d by %d points", layout.nx, layout.ny);
}

GridShape read_shape(Section s)
{
    GridShape shape;
    shape.lat1 = s.s24(11) * kMilli;
    shape.lon1 = s.s24(14) * kMilli;
    shape.resolution = kMilli;
    shape.is_spheroid = (s.u8(17) & kSpheroid) != 0;
    // Mercator grids of this edition stand between their corners
    const bool is_given = (s.u8(17) & kIncrementsGiven) != 0 && s.u8(6) == kLatLon1;
    switch (s.u8(6)) {
    case kLatLon1:
    case kMercator1:
        shape.proj = s.u8(6) == kLatLon1 ? kProjLatLon : kProjMercator;
        shape.lat2 = s.s24(18) * kMilli;
        shape.lon2 = s.s24(21) * kMilli;
        shape.di = s.u16(24) * kMilli;
        shape.dj = s.u16(26) * kMilli;
        shape.has_di = is_given && s.u16(24) != kAllOnes16;
        shape.has_dj = is_given && s.u16(26) != kAllOnes16;
        break;
    default:
        shape.proj = s.u8(6) == kLambert1 ? kProjLambert : kProjPolar;
        shape.lov = s.s24(18) * kMilli;
        shape.di = s.u24(21);
        shape.dj = s.u24(24);
        shape.is_south = (s.u8(27) & kSouthPole) != 0;
        shape.true_latitude = kTrueLatitude;
        shape.latin1 = s.s24(29) * kMilli;
        shape.latin2 = s.s24(32) * kMilli;
        break;
    }
    return shape;
}

/// Grid 50 of the United States: places without a value at both ends of row `r` from the north.
int indent50(int r)
{
    return r < 1 ? 0 : (r - 1) / 4;
}

bool is_pole_grid(int number)
{
    return (number >= 21 && number <= 26) || (number >= 61 && number <= 64);
}

} // namespace

bool read_grid1(Section s, Product *product, GridRec *grid)
{
    constexpr size_t kShortest = 28;
    const unsigned type = s.u8(6);
    if (s.size() < kShortest) {
        return product->origin.refuse("a grid description of %zu octets", s.size());
    }
    if (type != kLatLon1 && type != kMercator1 && type != kLambert1 && type != kPolar1) {
        return product->origin.refuse("grid type %u (%s) isn't known", type, type_name(type));
    }
    if (!read_layout(s, product)) {
        return false;
    }
    GridShape shape = read_shape(s);
    if (product->layout.shape == RowShape::kThinned) {
        shape.has_di = false;
    }
    return make_domain(shape, *product, &grid->domain);
}

void set_numbered_layout(Product *product, const GridRec &grid)
{
    constexpr int kGrid50 = 50;
    const int number = product->grid_number;
    const DomainRec &d = grid.domain;
    Layout &layout = product->layout;
    layout = Layout{};
    layout.from_south = true;
    layout.nx = d.nx > 0 ? d.nx : 0;
    layout.ny = d.ny > 0 ? d.ny : 0;
    if (number != kGrid50 && !is_pole_grid(number)) {
        return;
    }
    layout.shape = RowShape::kPlaced;
    const bool is_north =
        number == 21 || number == 22 || number == 25 || number == 61 || number == 62;
    for (int j = 0; j < layout.ny; ++j) {
        const double lat = (is_north ? 0.0 : -90.0) + j * static_cast<double>(d.dy);
        const bool is_pole = std::fabs(std::fabs(lat) - 90.0) < kPoleStep;
        int length = number == 25 || number == 26 ? layout.nx - 1 : layout.nx;
        if (number == kGrid50) {
            length = layout.nx - 2 * indent50(layout.ny - 1 - j);
        } else if (is_pole) {
            length = 1;
        }
        layout.row_lengths.push_back(length);
    }
}

} // namespace tyr
