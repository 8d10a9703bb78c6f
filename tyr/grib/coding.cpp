#include <algorithm>
#include <cmath>

#include "base/missing.h"
#include "tyr/grib/coding_private.h"
#include "var/time_range.h"

namespace tyr {
namespace {

constexpr int kDayCode = 800;
constexpr int kMonthCode = 900;
constexpr double kMostLevel = 2.0e9;

/// Units of code table 4 of both editions.
struct TimeUnit {
    int code;
    int times;  ///< hours in one
    int divide; ///< or parts of an hour
    int add;    ///< code of longer units
};
constexpr TimeUnit kUnits[] = {
    {0,   1,  60,   0         },
    {1,   1,  1,    0         },
    {2,   1,  1,    kDayCode  },
    {3,   1,  1,    kMonthCode},
    {10,  3,  1,    0         },
    {11,  6,  1,    0         },
    {12,  12, 1,    0         },
    {13,  1,  3600, 0         },
    {254, 1,  3600, 0         },
};

int hours(int unit, long long count)
{
    for (const TimeUnit &known : kUnits) {
        if (known.code == unit) {
            count = count * known.times / known.divide + known.add;
            break;
        }
    }
    return static_cast<int>(std::clamp<long long>(count, -kRangeUnit, kRangeUnit));
}

int range_time(int code, int first, int second)
{
    const long long time = static_cast<long long>(code) * kRangeUnit + first * 1000LL + second;
    return static_cast<int>(std::clamp<long long>(time, -2147483647LL, 2147483647LL));
}

/// How edition 2's statistics become kinds of range.
int range_of(int statistic)
{
    constexpr int kRanges[] = {kRangeAverage, kRangeAccumulation, kRangeMaximum, kRangeMinimum,
                               kRangeDifference};
    return statistic >= 0 && statistic < 5 ? kRanges[statistic] : kRangePlain;
}

int whole(double value)
{
    return static_cast<int>(std::clamp(value, -kMostLevel, kMostLevel));
}

/// Factors of edition 2's values on the way to edition 1's, by the type of the first surface.
enum class LevelRule { kZero, kSingle, kDivided, kTimes, kRounded };

struct LevelRow {
    int type;         ///< of the first surface
    int single;       ///< kind without a second surface
    int layer;        ///< kind with one; -1: the second surface doesn't matter
    LevelRule rule;   ///< for the single one
    double factor;    ///< of the single one
    double top, base; ///< factors of a layer's two numbers; 0 takes the first value alone
};
constexpr LevelRow kLevels[] = {
    {100, 100, 101, LevelRule::kDivided, 100.0,     0.001, 0.001},
    {101, 102, -1,  LevelRule::kZero,    0.0,       0.0,   0.0  },
    {102, 103, 104, LevelRule::kSingle,  1.0,       0.01,  0.01 },
    {103, 105, 106, LevelRule::kRounded, 1.0,       0.01,  0.01 },
    {104, 107, 108, LevelRule::kTimes,   10000.0,   100.0, 100.0},
    {105, 109, -1,  LevelRule::kSingle,  1.0,       0.0,   0.0  },
    {106, 111, 112, LevelRule::kTimes,   100.0,     100.0, 100.0},
    {107, 113, 114, LevelRule::kSingle,  1.0,       0.0,   0.0  },
    {108, 115, 116, LevelRule::kDivided, 100.0,     0.01,  0.01 },
    {109, 117, -1,  LevelRule::kTimes,   1000000.0, 0.0,   0.0  },
    {111, 119, 120, LevelRule::kSingle,  1.0,       0.0,   0.0  },
};

constexpr double kNudge = 0.01; ///< added to a product before it is cut off

int single_level(const LevelRow &row, double value)
{
    switch (row.rule) {
    case LevelRule::kZero:
        return 0;
    case LevelRule::kDivided:
        return whole(value / row.factor);
    case LevelRule::kTimes:
        return whole(value * row.factor + kNudge);
    case LevelRule::kRounded:
        return whole(std::round(value));
    case LevelRule::kSingle:
        break;
    }
    return whole(value);
}

int layer_part(double value, double factor)
{
    return factor < 1.0 ? whole(value / std::round(1.0 / factor)) : whole(value * factor + kNudge);
}

} // namespace

int grib_time1(int unit, int p1, int p2, int range, int averaged)
{
    const int first = hours(unit, p1);
    const int second = hours(unit, p2);
    switch (range) {
    case 1:
        return 0;
    case 2:
    case 3:
    case 4:
    case 5:
        return range_time(range, first, second);
    case 10:
        return hours(unit, p1 * 256 + p2);
    case 113:
        return range_time(kRangeInitialAverage, first, second * averaged);
    case 118:
        return range_time(kRangeVariance, first, second * averaged);
    case 123:
        return range_time(kRangeUninitialAverage, 0, second * averaged);
    default:
        return first;
    }
}

int grib_time2(int unit, int first, int statistic, int length_unit, int length)
{
    const int start = hours(unit, first);
    if (statistic < 0) {
        return start;
    }
    const int end = length_unit == unit ? hours(unit, static_cast<long long>(first) + length)
                                        : start + hours(length_unit, length);
    return range_time(range_of(statistic), start, end);
}

bool grib_level1(int ltype, int octet11, int octet12, int *level)
{
    switch (ltype) {
    case 1:
    case 4:
    case 6:
    case 7:
    case 102:
    case 200:
        *level = 0;
        return true;
    case 5:
    case 100:
    case 103:
    case 105:
    case 107:
    case 109: // hybrid levels and those below count in the same two octets (code table 3)
    case 111:
    case 113:
    case 115:
    case 117:
    case 119:
    case 125:
    case 160:
        *level = octet11 * 256 + octet12;
        return true;
    case 101:
    case 104:
    case 106:
    case 108:
    case 110:
    case 112:
    case 114:
    case 116:
    case 120:
        *level = octet11 * 1000 + octet12;
        return true;
    default:
        return false;
    }
}

void grib_level2(const FixedSurface &first, const FixedSurface &second, int *ltype, int *level)
{
    constexpr int kNoSurface = 255;
    constexpr double kNone = kMissing;
    for (const LevelRow &row : kLevels) {
        if (row.type != first.type) {
            continue;
        }
        const bool is_layer = row.layer >= 0 && second.type != kNoSurface;
        *ltype = is_layer ? row.layer : row.single;
        if (first.value == kNone && row.rule != LevelRule::kZero) {
            *level = kMissingInt;
        } else if (is_layer && row.top != 0.0) {
            const double top = second.value == kNone ? 0.0 : second.value;
            *level = 1000 * layer_part(first.value, row.top) + layer_part(top, row.base);
        } else {
            *level = single_level(row, first.value);
        }
        return;
    }
    *ltype = first.type;
    *level = first.value == kNone ? kMissingInt : whole(first.value);
}

} // namespace tyr
