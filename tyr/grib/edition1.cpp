#include <algorithm>
#include <cmath>

#include "tyr/geo/domain.h"
#include "tyr/grib/coding_private.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/geometry_private.h"
#include "tyr/grib/packing_private.h"
#include "tyr/grid/known_domain.h"
#include "tyr/grid/param.h"

// Sections of editions 0 and 1: WMO Manual on Codes, Volume I.2, FM 92-IX.

namespace tyr {
namespace {

constexpr unsigned kHasGrid = 0x80;
constexpr unsigned kHasBitmap = 0x40;
constexpr size_t kShortest0 = 24;
constexpr size_t kShortest1 = 28;
constexpr int kEnsembleCentre = 7;
constexpr unsigned kEnsembleSubcentre = 2;

int full_year(int year, int century, int edition)
{
    // the century octet tells years from 2000 on apart from those before 1950
    if (edition == 1 && century >= 19 && century <= 22 && year >= 1 && year <= 100) {
        return (century - 1) * 100 + year;
    }
    if (year < 50) {
        return year + 2000;
    }
    return year < 200 ? year + 1900 : year;
}

void read_date(Section s, Product *product)
{
    DateRec &date = product->date;
    date = DateRec{};
    date.year = full_year(static_cast<int>(s.u8(13)), static_cast<int>(s.u8(25)), product->edition);
    date.month = static_cast<int>(s.u8(14));
    date.day = static_cast<int>(s.u8(15));
    date.hour = static_cast<int>(s.u8(16));
    date.minute = static_cast<int>(s.u8(17));
    date.second = 0;
}

/// Number of the variable, before it is turned into the system's.
void read_variable(unsigned table, unsigned number, int *var)
{
    constexpr unsigned kLocalTable = 129;
    if (table == kLocalTable) {
        if (number == 212) {
            *var = 491;
        }
        return;
    }
    *var = number == 177 ? 571 : static_cast<int>(number);
}

void convert(GridRec *grid)
{
    GRD_convert_param(grid);
}

void read_ensemble(Section s, Product *product, const GridRec &grid)
{
    Ensemble &e = product->ensemble;
    e.kind = static_cast<int>(s.u8(42));
    e.member = static_cast<int>(s.u8(43));
    e.product_class = static_cast<int>(s.u8(44));
    e.count = static_cast<int>(s.u8(45));
    if (grid.var != 191 && grid.var != 192) {
        return;
    }
    GridRec question = grid;
    question.values = nullptr;
    read_variable(s.u8(4), s.u8(46), &question.var);
    convert(&question);
    e.variable = question.var;
    e.probability_kind = static_cast<int>(s.u8(47));
    e.low = static_cast<float>(s.ibm(48));
    e.high = static_cast<float>(s.ibm(52));
}

/// Points of each row that the section holds a value for, as the guard counts them.
std::vector<int> present_rows(const Product &product)
{
    const Layout &layout = product.layout;
    std::vector<int> rows = layout.row_lengths;
    if (layout.shape == RowShape::kEven) {
        rows.assign(static_cast<size_t>(layout.ny), layout.nx);
    }
    if (!product.has_map) {
        return rows;
    }
    size_t point = 0;
    for (int &row : rows) {
        int present = 0;
        for (int i = 0; i < row; ++i, ++point) {
            present += point / 8U < product.bitmap.size() &&
                               (product.bitmap[point / 8U] >> (7U - point % 8U) & 1U) != 0
                           ? 1
                           : 0;
        }
        row = present;
    }
    return rows;
}

/// "For the first product that is unpacked" the limit of some kinds of level is twice as wide.
std::int64_t bad_limit(const GridRec &grid, unsigned bits)
{
    static bool is_first = true;
    const bool is_wide = is_first && (grid.ltype == 6 || grid.ltype == 7 || grid.ltype >= 90);
    is_first = false;
    return bits == 0 ? 0 : std::int64_t{1} << (is_wide ? bits : bits - 1U);
}

bool read_packing1(Section s, Product *product)
{
    PackingRec &p = product->packing;
    const unsigned flags = s.u8(4);
    const double decimal = p.decimal_scale;
    p = PackingRec{};
    p.kind = Packing::kSimple;
    p.decimal_scale = decimal;
    p.binary_scale = std::ldexp(1.0, std::clamp(s.s16(5), -1000, 1000));
    p.reference = s.ibm(7);
    p.bits = s.u8(11);
    if ((flags & 0x80U) != 0) {
        return product->origin.refuse("spherical harmonics aren't known");
    }
    if ((flags & 0x40U) != 0) {
        return product->origin.refuse("second-order packing isn't known");
    }
    return p.bits <= 32 || product->origin.refuse("values of %u bits", p.bits);
}

/// Grids with one value at a pole come whole too, from other makers: by the number of values.
void settle_rows(const Section &s, Product *product)
{
    Layout &layout = product->layout;
    const unsigned bits = product->packing.bits;
    if (layout.shape != RowShape::kPlaced || bits == 0 || product->has_map) {
        return;
    }
    const size_t unused = s.u8(4) & 0x0FU;
    const size_t values = ((s.size() - 11U) * 8U - unused) / bits;
    if (values >= layout.grid_points()) {
        layout.shape = RowShape::kEven;
    }
}

} // namespace

bool read_definition1(Section s, Product *product, GridRec *grid)
{
    if (s.size() < (product->edition == 0 ? kShortest0 : kShortest1)) {
        return product->origin.refuse("a product definition of %zu octets", s.size());
    }
    grid->source = static_cast<int>(s.u8(5));
    grid->model = static_cast<int>(s.u8(6));
    grid->grid_id = static_cast<int>(s.u8(7));
    grid->version = product->edition;
    product->grid_number = grid->grid_id;
    product->has_grid = (s.u8(8) & kHasGrid) != 0;
    product->has_bitmap = (s.u8(8) & kHasBitmap) != 0;
    product->has_map = false;
    product->bitmap.clear();
    product->ensemble = Ensemble{};
    grid->ltype = static_cast<int>(s.u8(10));
    read_date(s, product);
    grid->time = grib_time1(static_cast<int>(s.u8(18)), static_cast<int>(s.u8(19)),
                            static_cast<int>(s.u8(20)), static_cast<int>(s.u8(21)),
                            static_cast<int>(s.u16(22)));
    grib_level1(grid->ltype, static_cast<int>(s.u8(11)), static_cast<int>(s.u8(12)), &grid->level);
    read_variable(s.u8(4), s.u8(9), &grid->var);
    convert(grid);
    product->packing.decimal_scale = product->edition == 0 ? 1.0 : std::pow(10.0, -s.s16(27));
    if (product->edition == 1 && grid->ltype == 1 && grid->model == 44 && grid->var == 7) {
        grid->var = 161;
    }
    if (product->edition == 1 && grid->source == kEnsembleCentre &&
        s.u8(26) == kEnsembleSubcentre && s.size() >= 45) {
        read_ensemble(s, product, *grid);
    }
    DOM_init(&grid->domain);
    GRD_grid_domain(product->grid_number, &grid->domain);
    set_numbered_layout(product, *grid);
    set_date_text(product->date, grid);
    return true;
}

bool read_bitmap1(Section s, Product *product)
{
    constexpr size_t kHead = 6;
    if (s.size() < kHead || s.u16(5) != 0) {
        return product->origin.refuse("a bit map known by its number %u alone", s.u16(5));
    }
    const Octets bits = s.bytes().subspan(kHead);
    product->bitmap.assign(bits.begin(), bits.end());
    product->has_map = true;
    return true;
}

bool read_data1(Section s, Product *product, GridRec *grid)
{
    constexpr size_t kHead = 11;
    if (s.size() < kHead) {
        return product->origin.refuse("a data section of %zu octets", s.size());
    }
    if (product->layout.nx < 1) {
        return product->origin.refuse("grid %d has no description", product->grid_number);
    }
    if (!read_packing1(s, product) || !alloc_values(*product, s.size(), grid)) {
        return false;
    }
    settle_rows(s, product);
    const Layout &layout = product->layout;
    const size_t points = layout.stored_points();
    std::vector<float> stored(layout.shape == RowShape::kEven ? 0 : points);
    float *out = stored.empty() ? grid->values : stored.data();
    const Octets data = s.bytes().subspan(kHead);
    size_t count = 0;
    if (product->guard.max_bad >= 1) {
        product->guard.bad_limit = bad_limit(*grid, product->packing.bits);
        count = unpack_guarded(*product, data, present_rows(*product), out, points);
    } else {
        count = unpack_simple(product->packing, data, out, points);
    }
    return place_values(*product, &stored, count, grid);
}

} // namespace tyr
