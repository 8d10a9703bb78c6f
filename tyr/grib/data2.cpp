#include <algorithm>
#include <bit>
#include <cmath>

#include "tyr/grib/edition_private.h"
#include "tyr/grib/packing_private.h"

// Representation, bit map and data sections of edition 2: WMO Manual on Codes, Volume I.2,
// FM 92-XIII, sections 5, 6 and 7.

namespace tyr {
namespace {

constexpr int kMostScale = 1000;

void read_complex(Section s, PackingRec *p)
{
    p->missing_management = static_cast<int>(s.u8(23));
    p->groups = s.u32(32);
    p->width_reference = s.u8(36);
    p->width_bits = s.u8(37);
    p->length_reference = s.u32(38);
    p->length_step = s.u8(42);
    p->last_length = s.u32(43);
    p->length_bits = s.u8(47);
}

void read_run_length(Section s, PackingRec *p)
{
    p->bits = s.u8(12);
    p->max_level = s.u16(13);
    const double unit = std::pow(10.0, -s.s8(17));
    const size_t levels = std::min<size_t>(s.u16(15), (s.size() - 17U) / 2U);
    p->levels.clear();
    for (size_t i = 0; i < levels; ++i) {
        p->levels.push_back(static_cast<float>(s.u16(18U + 2U * i) * unit));
    }
}

struct Template5 {
    unsigned number;
    Packing kind;
    size_t length; ///< octets that must be there
};
constexpr Template5 kTemplates[] = {
    {0,     Packing::kSimple,    20},
    {2,     Packing::kComplex,   47},
    {3,     Packing::kComplex,   49},
    {40,    Packing::kJpeg2000,  20},
    {200,   Packing::kRunLength, 17},
    {40000, Packing::kJpeg2000,  20},
};

size_t unpack(const PackingRec &p, Octets data, float *out, size_t count)
{
    switch (p.kind) {
    case Packing::kSimple:
        return unpack_simple(p, data, out, count);
    case Packing::kComplex:
        return unpack_complex(p, data, out, count);
    case Packing::kJpeg2000:
        return unpack_jpeg2000(p, data, out, count);
    case Packing::kRunLength:
        return unpack_run_length(p, data, out, count);
    case Packing::kNone:
        break;
    }
    return 0;
}

} // namespace

double Section::ieee(size_t octet) const
{
    const float value = std::bit_cast<float>(u32(octet));
    return std::isfinite(value) ? static_cast<double>(value) : 0.0;
}

bool read_packing2(Section s, Product *product)
{
    PackingRec &p = product->packing;
    p = PackingRec{};
    const unsigned number = s.u16(10);
    const Template5 *known = std::find_if(std::begin(kTemplates), std::end(kTemplates),
                                          [=](const Template5 &t) { return t.number == number; });
    if (known == std::end(kTemplates)) {
        return product->origin.refuse("packing template %u isn't known", number);
    }
    if (s.size() < known->length) {
        return product->origin.refuse("a packing description of %zu octets", s.size());
    }
    p.kind = known->kind;
    p.points = s.u32(6);
    p.reference = s.ieee(12);
    p.binary_scale = std::ldexp(1.0, std::clamp(s.s16(16), -kMostScale, kMostScale));
    p.decimal_scale = std::pow(10.0, -std::clamp(s.s16(18), -300, 300));
    p.bits = s.u8(20);
    if (p.kind == Packing::kComplex) {
        read_complex(s, &p);
    }
    if (number == 3) {
        p.order = static_cast<int>(s.u8(48));
        p.extra_octets = s.u8(49);
    }
    if (p.kind == Packing::kRunLength) {
        read_run_length(s, &p);
    }
    return p.bits <= 32 || product->origin.refuse("values of %u bits", p.bits);
}

bool read_bitmap2(Section s, Product *product)
{
    enum Indicator : unsigned { kGiven = 0, kKept = 254, kNone = 255 };
    switch (s.u8(6)) {
    case kGiven: {
        const Octets bits = s.bytes().subspan(std::min<size_t>(6, s.size()));
        product->bitmap.assign(bits.begin(), bits.end());
        product->has_map = true;
        return true;
    }
    case kKept:
        product->has_map = !product->bitmap.empty();
        return product->has_map || product->origin.refuse("it keeps a bit map that none gave");
    case kNone:
        product->has_map = false;
        return true;
    default:
        return product->origin.refuse("a bit map known by its number %u alone", s.u8(6));
    }
}

bool read_data2(Section s, Product *product, GridRec *grid)
{
    constexpr size_t kHead = 5;
    if (s.size() < kHead || !alloc_values(*product, s.size(), grid)) {
        return false;
    }
    const Layout &layout = product->layout;
    const PackingRec &packing = product->packing;
    const size_t points = layout.stored_points();
    std::vector<float> stored(layout.shape == RowShape::kEven ? 0 : points);
    float *out = stored.empty() ? grid->values : stored.data();
    const size_t wanted = std::min<size_t>(points, packing.points);
    const size_t count = unpack(packing, s.bytes().subspan(kHead), out, wanted);
    if (count == 0 && wanted > 0) {
        return product->origin.refuse("its data can't be unpacked");
    }
    if (count < wanted) {
        product->origin.refuse("its data end after %zu of %zu values", count, wanted);
    }
    return place_values(*product, &stored, count, grid);
}

} // namespace tyr
