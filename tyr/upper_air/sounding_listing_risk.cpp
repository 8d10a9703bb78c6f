#include <span>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/upper_air/sounding_listing_private.h"

namespace {

using namespace tyr;

/// A risk holds for values beyond the limit; the last of a list holds for all others.
struct Risk {
    float limit;
    const char *text;
};

// of indices that warn by small values, "above the limit"
constexpr Risk kLiftedRisks[] = {
    {2.0F,  "None"                         },
    {0.0F,  "Showers probable"             },
    {-2.0F, "Thunderstorms probable"       },
    {-4.0F, "Severe thunderstorms possible"},
    {0.0F,  "Severe thunderstorms probable"},
};
constexpr Risk kShowalterRisks[] = {
    {3.0F,  "None"                         },
    {1.0F,  "Showers probable"             },
    {-2.0F, "Thunderstorms probable"       },
    {-6.0F, "Severe thunderstorms possible"},
    {0.0F,  "Severe thunderstorms probable"},
};
constexpr Risk kEnergyRisks[] = {
    {0.0F,  "None"                          },
    {-2.0F, "Scattered severe thunderstorms"},
    {0.0F,  "Severe Thunderstorms probable" },
};

// of indices that warn by large values, "below the limit"
constexpr Risk kTotalsRisks[] = {
    {44.0F, "None"                            },
    {49.0F, "Scattered moderate thunderstorms"},
    {55.0F, "Scattered heavy thunderstorms"   },
    {0.0F,  "Severe Thunderstorms probable"   },
};
constexpr Risk kKRisks[] = {
    {15.0F, "None"                           },
    {20.0F, "< 20 % chance of thunderstorms" },
    {25.0F, "20-40 % chance of thunderstorms"},
    {30.0F, "40-60 % chance of thunderstorms"},
    {35.0F, "60-80 % chance of thunderstorms"},
    {0.0F,  "> 80 % chance of thunderstorms" },
};
constexpr Risk kSweatRisks[] = {
    {300.0F, "None"                              },
    {400.0F, "Showers and thunderstorms possible"},
    {0.0F,   "Severe Thunderstorms possible"     },
};

enum class Warns { kWhenSmall, kWhenLarge };

const char *risk_of(float value, std::span<const Risk> risks, Warns warns)
{
    for (const Risk &risk : risks.first(risks.size() - 1))
        if (warns == Warns::kWhenSmall ? value > risk.limit : value < risk.limit)
            return risk.text;
    return risks.back().text;
}

void risk_line(const char *heading, float value, const char *unit, std::span<const Risk> risks,
               Warns warns)
{
    if (!is_missing(value))
        MSG_out(kListMain, "%s%6.2f %s Risk: %s\n", heading, double{value}, unit,
                risk_of(value, risks, warns));
}

void part_line(const char *heading, float value)
{
    if (!is_missing(value))
        MSG_out(kListDetail, "%s%6.2f C\n", heading, double{value});
}

} // namespace

namespace tyr {

void list_pause(unsigned bit)
{
    MSG_pause(bit, "Press return to continue\n");
}

void print_risks(const SoundingResults &r)
{
    risk_line("Lifted Index:            ", r.lifted, "C", kLiftedRisks, Warns::kWhenSmall);
    part_line("Lifted Index @300 mb:    ", r.lifted_300);
    part_line("Lifted Index @700 mb:    ", r.lifted_700);
    risk_line("Showalter Index:         ", r.showalter, "C", kShowalterRisks, Warns::kWhenSmall);
    risk_line("Total Totals Index:      ", r.totals, "C", kTotalsRisks, Warns::kWhenLarge);
    part_line("  Vertical Totals Index: ", r.vertical);
    part_line("  Cross Totals Index:    ", r.cross);
    risk_line("K Index:                 ", r.k, " ", kKRisks, Warns::kWhenLarge);
    risk_line("Sweat Index:             ", r.sweat, " ", kSweatRisks, Warns::kWhenLarge);
    risk_line("Energy Index:            ", r.energy, " ", kEnergyRisks, Warns::kWhenSmall);
}

} // namespace tyr
