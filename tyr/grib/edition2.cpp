#include <algorithm>
#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grib/coding_private.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/grib.h"

// Identification and product sections of edition 2: WMO Manual on Codes, Volume I.2, FM 92-XIII,
// sections 1 and 4.

namespace tyr {
namespace {

constexpr unsigned kDebugSection = 0x40000000U;
constexpr int kProbability = 191;

/// Where a template has what goes beyond the forecast and its level; 0: nowhere.
struct Template4 {
    unsigned number;
    size_t ensemble;    ///< kind of the member, octet
    size_t derived;     ///< derived forecast
    size_t probability; ///< type of the probability, 2 octets behind the number
    size_t statistic;   ///< statistic; 2 further the unit, 3 the length of its period
    size_t length;      ///< octets that must be there
};
constexpr Template4 kTemplates[] = {
    {0,     0,  0,  0,  0,  34},
    {1,     35, 0,  0,  0,  37},
    {2,     0,  35, 0,  0,  36},
    {5,     0,  0,  37, 0,  47},
    {8,     0,  0,  0,  47, 53},
    {9,     0,  0,  37, 60, 66},
    {11,    35, 0,  0,  50, 56},
    {12,    0,  35, 0,  49, 55},
    {50008, 0,  0,  0,  47, 53},
};
constexpr unsigned kJapanLocal = 50008;

const Template4 *find_template(unsigned number)
{
    for (const Template4 &known : kTemplates) {
        if (known.number == number) {
            return &known;
        }
    }
    return nullptr;
}

double scaled(Section s, size_t octet)
{
    constexpr unsigned kNoValue = 0xFFFF;
    return s.u16(octet + 1) == kNoValue ? static_cast<double>(kMissing)
                                        : s.s32(octet + 1) * std::pow(10.0, -s.s8(octet));
}

FixedSurface surface(Section s, size_t octet)
{
    constexpr int kNoScale = -127;
    FixedSurface result;
    result.type = static_cast<int>(s.u8(octet));
    result.value = scaled(s, octet + 1);
    if (s.s8(octet + 1) == kNoScale) {
        result.value = static_cast<double>(kMissing);
    }
    return result;
}

void read_member(Section s, size_t octet, Ensemble *e)
{
    // code table 4.6: two controls, negatively and positively perturbed members, other models
    constexpr int kKinds[] = {1, 1, 2, 3, 4};
    const unsigned kind = s.u8(octet);
    e->kind = kind < 5 ? kKinds[kind] : 5;
    e->member = static_cast<int>(s.u8(octet + 1));
    e->count = static_cast<int>(s.u8(octet + 2));
    e->product_class = 1;
}

void read_derived(Section s, size_t octet, Ensemble *e)
{
    constexpr int kMean = 2;
    constexpr int kDeviation = 11;
    // code table 4.7: 0, 1, 6 means; 2, 3, 4 deviations and spread
    constexpr int kClasses[] = {kMean, kMean, kDeviation, kDeviation, kDeviation, 0, kMean};
    const unsigned kind = s.u8(octet);
    e->product_class = kind < 7 ? kClasses[kind] : 0;
    e->count = static_cast<int>(s.u8(octet + 1));
}

void read_probability(Section s, size_t octet, Ensemble *e, GridRec *grid)
{
    // code table 4.9: below the lower, above the upper, between, above the lower, below the upper
    constexpr int kKinds[] = {1, 2, 3, 2, 1};
    const unsigned kind = s.u8(octet);
    const double low = scaled(s, octet + 1);
    const double high = scaled(s, octet + 6);
    e->probability_kind = kind < 5 ? kKinds[kind] : 0;
    const bool is_upper = kind == 1 || kind == 4;
    e->low = static_cast<float>(is_upper ? high : low);
    e->high = static_cast<float>(high);
    e->variable = grid->var;
    grid->var = kProbability;
}

} // namespace

bool read_ident2(Section s, Product *product, GridRec *grid)
{
    constexpr size_t kShortest = 19;
    if (s.size() < kShortest) {
        return product->origin.refuse("an identification of %zu octets", s.size());
    }
    grid->source = static_cast<int>(s.u16(6));
    grid->version = product->edition;
    grid->grid_id = 0;
    DateRec &date = product->date;
    date = DateRec{};
    date.year = static_cast<int>(s.u16(13));
    date.month = static_cast<int>(s.u8(15));
    date.day = static_cast<int>(s.u8(16));
    date.hour = static_cast<int>(s.u8(17));
    date.minute = static_cast<int>(s.u8(18));
    date.second = static_cast<int>(s.u8(19));
    set_date_text(date, grid);
    return true;
}

bool read_product2(Section s, Product *product, GridRec *grid)
{
    const unsigned number = s.u16(8);
    const Template4 *known = find_template(number);
    product->ensemble = Ensemble{};
    if (known == nullptr) {
        return product->origin.refuse("product template %u isn't known", number);
    }
    if (s.size() < known->length) {
        return product->origin.refuse("a product definition of %zu octets", s.size());
    }
    if (number == kJapanLocal) {
        MSG_out(kDebugSection, "JMA local sect 50008\n");
    }
    MSG_out(kDebugSection, "GRIB_read_product2: template %u\n", number);
    GRIB_find_param(grid, grid->source, static_cast<int>(product->discipline),
                    static_cast<int>(s.u8(10)), static_cast<int>(s.u8(11)));
    grid->model = static_cast<int>(s.u8(14));
    const size_t statistic = known->statistic;
    const int unit = static_cast<int>(s.u8(18));
    const int first = s.s32(19);
    grid->time = statistic == 0
                     ? grib_time2(unit, first, -1, 0, 0)
                     : grib_time2(unit, first, static_cast<int>(s.u8(statistic)),
                                  static_cast<int>(s.u8(statistic + 2)), s.s32(statistic + 3));
    set_date_text(product->date, grid); // it tells the time that the forecast is valid for
    grib_level2(surface(s, 23), surface(s, 29), &grid->ltype, &grid->level);
    if (known->ensemble != 0) {
        read_member(s, known->ensemble, &product->ensemble);
    }
    if (known->derived != 0) {
        read_derived(s, known->derived, &product->ensemble);
    }
    if (known->probability != 0) {
        read_probability(s, known->probability, &product->ensemble, grid);
    }
    return true;
}

} // namespace tyr
