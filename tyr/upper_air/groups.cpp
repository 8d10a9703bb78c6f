#include "tyr/upper_air/groups.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "base/missing.h"
#include "base/str.h"
#include "var/number.h"

namespace {

struct State {
    std::array<char, kUpaGroupRoom> group = {};
};
State state;

constexpr int kFullPlace = 500; // hhh above this belongs to the lower of two ranges
constexpr int kNoPressure = 99;
constexpr int kNoTemperature = 999;
constexpr int kNoDepression = 99;
constexpr int kNoDirection = 999;
constexpr float kMaxSpeed = 250.0F;
constexpr float kMaxDirection = 360.0F;

/// Height of hhh: scale * hhh + (hhh above 500 ? high : low).
struct HeightRow {
    int p;
    int scale;
    int high;
    int low;
};
constexpr HeightRow kHeights[] = {
    {850, 1,  1000,  1000 },
    {700, 1,  2000,  3000 },
    {500, 10, 0,     0    },
    {400, 10, 0,     0    },
    {300, 10, 0,     10000},
    {250, 10, 0,     10000},
    {200, 10, 10000, 10000},
    {150, 10, 10000, 10000},
    {100, 10, 10000, 10000},
    {70,  10, 10000, 10000},
    {50,  10, 10000, 20000},
    {30,  10, 20000, 20000},
    {20,  10, 20000, 20000},
    {10,  10, 20000, 30000},
    {7,   10, 30000, 30000},
    {5,   10, 30000, 30000},
    {3,   10, 30000, 40000},
    {2,   10, 30000, 40000},
    {1,   10, 40000, 50000},
};

/// Takes a number of at most `width` characters, its sign among them.
std::optional<int> take(std::string_view *text, size_t width)
{
    std::string_view field = text->substr(0, width);
    const bool negative = !field.empty() && field.front() == '-';
    size_t used = negative ? 1 : 0;
    const size_t first = used;
    int value = 0;
    while (used < field.size() && std::isdigit(static_cast<unsigned char>(field[used])) != 0) {
        value = 10 * value + (field[used++] - '0');
    }
    if (used == first) {
        return std::nullopt;
    }
    text->remove_prefix(used);
    return negative ? -value : value;
}

float height_of(int p, int hhh)
{
    if (p == 1000) {
        return static_cast<float>(hhh >= kFullPlace ? kFullPlace - hhh : hhh);
    }
    for (const HeightRow &row : kHeights) {
        if (row.p == p) {
            return static_cast<float>(row.scale * hhh + (hhh > kFullPlace ? row.high : row.low));
        }
    }
    return static_cast<float>(hhh);
}

bool says_nothing(const char *group)
{
    return group == nullptr || *group == '\0' || *group == 'X';
}

int put_nothing()
{
    state.group[0] = '\0';
    return -1;
}

int put(const std::string &group)
{
    STR_copy(state.group.data(), state.group.size(), group);
    return 0;
}

} // namespace

int UPA_decode_pz(const char *group, float *p, float *z)
{
    *p = *z = kMissing;
    if (says_nothing(group)) {
        return -1;
    }
    std::string_view text = group;
    const std::optional<int> tens = take(&text, 2);
    if (!tens || *tens == kNoPressure) {
        return -1;
    }
    int pressure = *tens > 0 ? 10 * *tens : -*tens;
    if (pressure == 0) {
        pressure = 1000;
    } else if (pressure == 920) {
        pressure = 925;
    }
    *p = static_cast<float>(pressure);
    const std::optional<int> hhh = take(&text, 3);
    if (!hhh) {
        return -1;
    }
    *z = height_of(pressure, *hhh);
    return 0;
}

int UPA_decode_td(const char *group, float *t, float *td)
{
    *t = *td = kMissing;
    if (says_nothing(group)) {
        return -1;
    }
    std::string_view text = group;
    const std::optional<int> tenths = take(&text, 3);
    if (!tenths || *tenths == kNoTemperature || *tenths < 0) {
        return -1;
    }
    const double warm = *tenths / 10.0;
    const double temperature = *tenths % 2 == 0 ? warm : -warm;
    *t = static_cast<float>(temperature);
    const std::optional<int> depression = take(&text, 2);
    if (!depression || *depression < 0 || *depression == kNoDepression) {
        return 0;
    }
    *td = static_cast<float>(*depression < 51 ? temperature - *depression / 10.0
                                              : temperature - *depression + 50.0);
    return 0;
}

int UPA_decode_wind(const char *group, float *dir, float *spd)
{
    *dir = *spd = kMissing;
    if (says_nothing(group)) {
        return -1;
    }
    std::string_view text = group;
    const std::optional<int> ddd = take(&text, 3);
    const std::optional<int> ff = ddd ? take(&text, 2) : std::nullopt;
    if (!ff || *ddd < 0 || *ff < 0) {
        return -1;
    }
    if (*ddd == kNoDirection) {
        return 0;
    }
    const auto speed = static_cast<float>(*ff + *ddd % 5 * 100);
    const int fives = *ddd / 5;
    const auto direction = static_cast<float>(5 * fives);
    if (speed <= kMaxSpeed && direction <= kMaxDirection) {
        *dir = direction;
        *spd = speed;
    }
    return 0;
}

int UPA_encode_pz(float p, float z)
{
    if (!(p >= 1)) {
        return put_nothing();
    }
    const int pressure = VAR_whole(p);
    const std::string place =
        p < 10 ? STR_print("-%1d", pressure) : STR_print("%2.2d", pressure % 1000 / 10);
    if (is_missing(z)) {
        return put(place + "/");
    }
    const int height = VAR_whole(z < 0 ? 500.0 - z : z);
    return put(place + STR_print("%3.3d", p <= 500 ? height % 10000 / 10 : height % 1000));
}

int UPA_encode_td(float t, float td)
{
    if (is_missing(t)) {
        return put_nothing();
    }
    int depression = kNoDepression;
    if (!is_missing(td)) {
        depression = std::max(0, VAR_whole((double{t} - td + 0.01) * 10));
        if (depression >= 60) {
            depression = std::min(kNoDepression, depression / 10 + 50);
        } else if (depression >= 50) {
            depression = 50;
        }
    }
    const int tenths = std::clamp(VAR_whole((double{t} + 0.01) * 10), -998, 998);
    const int coded = tenths < 0 ? -tenths / 2 * 2 + 1 : tenths / 2 * 2;
    return put(STR_print("%3.3d%2.2d", coded, depression));
}

int UPA_encode_wind(float dir, float spd)
{
    if (!(dir >= 0) || !(spd >= 0)) {
        return put_nothing();
    }
    const int speed = std::min(VAR_whole(spd + 0.01), 499);
    const int direction = std::min(VAR_whole(double{dir} + 2.5), 994) / 5 * 5;
    return put(STR_print("%3.3d%2.2d", direction + speed / 100, speed % 100));
}

const char *UPA_group()
{
    return state.group.data();
}
