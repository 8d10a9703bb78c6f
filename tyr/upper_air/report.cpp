#include "tyr/upper_air/report.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "tyr/base/missing.h"

namespace {

constexpr float kPressures[] = {kMissing, 1000, 925, 850, 700, 500, 400, 300, 250, 200, 150,
                                100,      70,   50,  30,  20,  10,  7,   5,   3,   2,   1};

} // namespace

void UPA_clear_report(UpaReport *report)
{
    *report = UpaReport{};
    report->wmo = report->extra = kMissingInt;
    report->lat = report->lon = report->elev = kMissing;
    std::for_each(std::begin(report->mand), std::end(report->mand),
                  [](SoundLevel &level) { MET_clear_level(&level); });
    std::fill(std::begin(report->sig), std::end(report->sig),
              UpaSigLevel{kMissing, kMissing, kMissing});
    std::fill(std::begin(report->wnd), std::end(report->wnd),
              UpaWindLevel{kMissing, kMissing, kMissing});
}

int UPA_mand_index(float p)
{
    for (int slot = kUpa1000; slot <= kUpa10; ++slot) {
        if (kPressures[static_cast<size_t>(slot)] == p) {
            return slot;
        }
    }
    return 0;
}

float UPA_mand_pressure(int slot)
{
    return slot >= kUpa1000 && slot <= kUpa1 ? kPressures[static_cast<size_t>(slot)] : kMissing;
}
