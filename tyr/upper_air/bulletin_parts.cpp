#include "tyr/upper_air/bulletin_parts.h"

#include <algorithm>
#include <cctype>

#include "base/missing.h"
#include "tyr/upper_air/groups.h"
#include "var/thermo.h"

namespace tyr {

namespace {

constexpr size_t kGroup = 5;
constexpr float kKnotsOfMetres = 3600.0F / 1852.0F;
constexpr float kMetresOfFoot = 0.3048F;
constexpr int kAllSlots = 24;
const std::string kUnknown = "/////";

/// The groups with what is cut off at the end unknown.
const std::string &group_at(std::span<const std::string> groups, size_t i)
{
    return i < groups.size() ? groups[i] : kUnknown;
}

/// Digits of a group as a number; -1 for slashes.
int digits(const std::string &group, size_t from, size_t count)
{
    int value = 0;
    for (const char c : group.substr(from, count)) {
        if (std::isdigit(static_cast<unsigned char>(c)) == 0) {
            return -1;
        }
        value = 10 * value + (c - '0');
    }
    return value;
}

/// "31313" and its like open the sections behind the levels.
bool opens_section(const std::string &group)
{
    return group.size() == kGroup && group[0] >= '3' && group[0] <= '6' && group[1] == '1' &&
           group[2] == group[0] && group[3] == '1' && group[4] == group[0];
}

void decode_wind(const std::string &group, bool metric, float *dir, float *spd)
{
    UPA_decode_wind(group.c_str(), dir, spd);
    if (metric && !is_missing(*spd)) {
        *spd *= kKnotsOfMetres;
    }
}

/// Pressure of PPP: with the thousand left out below, in tenths above 100 hPa.
float pressure_of(const std::string &group, bool upper)
{
    const int ppp = digits(group, 2, 3);
    if (ppp < 0) {
        return kMissing;
    }
    constexpr int kThousandLeftOut = 100;
    return upper ? static_cast<float>(ppp) / 10.0F
                 : static_cast<float>(ppp < kThousandLeftOut ? ppp + 1000 : ppp);
}

/// Slot of PP and the PPhhh group that tells it below and above 100 hPa alike; 0 for none.
int slot_of(const std::string &group, bool upper, std::string *code)
{
    const int pp = digits(group, 0, 2);
    *code = group;
    float p = pp == 0 ? 1000.0F : pp == 92 ? 925.0F : static_cast<float>(10 * pp);
    if (upper) {
        p = static_cast<float>(pp);
        *code = std::string(pp < 10 ? "-" : "0") + std::to_string(pp < 10 ? pp : pp / 10) +
                group.substr(2);
    }
    for (int slot = upper ? 12 : kUpa1000; slot <= (upper ? kUpa1 : 11); ++slot) {
        if (pp >= 0 && UPA_mand_pressure(slot) == p) {
            return slot;
        }
    }
    return 0;
}

/// Whether a level's wind stands in the part: up to the level that the indicator tells, by table
/// 1734 of the Manual on Codes. Two levels share a digit; the group is then there for both.
bool has_wind(const PartContext &part, int slot)
{
    if (part.last_wind == '/') {
        return false;
    }
    const float p = UPA_mand_pressure(slot);
    const int last = part.last_wind - '0';
    if (part.upper) {
        return p < 10.0F || last < 1 || p >= static_cast<float>(10 * last);
    }
    const float lowest = last == 0 ? 1000.0F : last == 9 ? 925.0F : static_cast<float>(100 * last);
    return p >= (last == 8 ? 850.0F : lowest);
}

size_t decode_surface(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    SoundLevel &level = ascent->report.mand[kUpaSurface];
    level.p = pressure_of(groups[0], false);
    UPA_decode_td(group_at(groups, 1).c_str(), &level.t, &level.td);
    decode_wind(group_at(groups, 2), part.metric, &level.dir, &level.spd);
    return 3;
}

/// 88PPP TTTDD dddff; the first tropopause is the lowest.
size_t decode_tropopause(std::span<const std::string> groups, const PartContext &part,
                         Ascent *ascent)
{
    if (groups[0] == "88999") {
        return 1;
    }
    SoundLevel level;
    MET_clear_level(&level);
    level.p = pressure_of(groups[0], part.upper);
    UPA_decode_td(group_at(groups, 1).c_str(), &level.t, &level.td);
    decode_wind(group_at(groups, 2), part.metric, &level.dir, &level.spd);
    SoundLevel &kept = ascent->report.mand[kUpaTropopause];
    if (is_missing(kept.p) || level.p > kept.p) {
        kept = level;
    }
    return 3;
}

/// 77PPP or 66PPP, dddff, and the shear 4vvvv that may follow; the strongest stays.
size_t decode_max_wind(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    if (groups[0].substr(2) == "999") {
        return 1;
    }
    SoundLevel level;
    MET_clear_level(&level);
    level.p = pressure_of(groups[0], part.upper);
    decode_wind(group_at(groups, 1), part.metric, &level.dir, &level.spd);
    SoundLevel &kept = ascent->report.mand[kUpaMaxWind];
    if (level.spd > kept.spd) {
        kept = level;
    }
    const std::string &next = group_at(groups, 2);
    return next[0] == '4' && !opens_section(next) ? 3 : 2;
}

/// PPhhh TTTDD and, up to the last level that has one, dddff. 0 for no such level.
size_t decode_level(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    std::string code;
    const int slot = slot_of(groups[0], part.upper, &code);
    if (slot == 0) {
        return 0;
    }
    SoundLevel &level = ascent->report.mand[slot];
    UPA_decode_pz(code.c_str(), &level.p, &level.z);
    UPA_decode_td(group_at(groups, 1).c_str(), &level.t, &level.td);
    if (!has_wind(part, slot)) {
        return 2;
    }
    decode_wind(group_at(groups, 2), part.metric, &level.dir, &level.spd);
    return 3;
}

size_t decode_one(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    const std::string mark = groups[0].substr(0, 2);
    if (mark == "99" && !part.upper) {
        return decode_surface(groups, part, ascent);
    }
    if (mark == "88") {
        return decode_tropopause(groups, part, ascent);
    }
    return mark == "77" || mark == "66" ? decode_max_wind(groups, part, ascent)
                                        : decode_level(groups, part, ascent);
}

/// Levels are numbered by two equal digits.
bool is_numbered(const std::string &group)
{
    return group[0] == group[1] && group[0] != '/';
}

/// Behind 21212: winds by pressure.
size_t decode_pressure_winds(std::span<const std::string> groups, const PartContext &part,
                             Ascent *ascent)
{
    size_t i = 0;
    for (; i < groups.size() && is_numbered(groups[i]); i += 2) {
        PressureWind wind = {pressure_of(groups[i], part.upper), kMissing, kMissing};
        decode_wind(group_at(groups, i + 1), part.metric, &wind.dir, &wind.spd);
        if (wind.p > 0 && !is_missing(wind.dir)) {
            ascent->pressure_winds.push_back(wind);
        }
    }
    return std::min(i, groups.size());
}

/// Feet of a height of so many units.
float feet_of(char unit, int wmo, int units)
{
    constexpr int kFirstThousands = 70000; // WMO blocks 70 to 78: thousands of feet
    constexpr int kLastThousands = 78999;
    const auto height = static_cast<float>(units);
    if (unit == '8') {
        return height * 500.0F / kMetresOfFoot;
    }
    const bool thousands = wmo >= kFirstThousands && wmo <= kLastThousands;
    return thousands ? height * 1000.0F : height * 300.0F / kMetresOfFoot;
}

/// 9tuuu and a wind for each u. 0 for another group.
size_t decode_wind_row(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    const std::string &head = groups[0];
    const int tens = digits(head, 1, 1) + (head[0] == '1' ? 10 : 0);
    if ((head[0] != '9' && head[0] != '8' && head[0] != '1') || digits(head, 1, 1) < 0) {
        return 0;
    }
    size_t used = 1;
    for (size_t place = 2; place < kGroup; ++place) {
        const int unit = digits(head, place, 1);
        if (unit < 0) {
            continue;
        }
        UpaWindLevel level = {feet_of(head[0], ascent->wmo, 10 * tens + unit), kMissing, kMissing};
        decode_wind(group_at(groups, used++), part.metric, &level.dir, &level.spd);
        if (!is_missing(level.dir)) {
            ascent->winds.push_back(level);
        }
    }
    return used;
}

/// Height of a pressure between the levels around it, linear in its logarithm.
float height_at(const UpaReport &report, float p)
{
    const SoundLevel *below = nullptr;
    for (int slot = kUpa1000; slot <= kUpa1; ++slot) {
        const SoundLevel &level = report.mand[slot];
        if (is_missing(level.p) || is_missing(level.z)) {
            continue;
        }
        if (level.p <= p && below != nullptr) {
            return MET_log_interp(below->z, level.z, below->p, level.p, p);
        }
        below = level.p >= p ? &level : below;
    }
    return MET_std_height(p);
}

} // namespace

bool is_group(const std::string &word)
{
    return word.size() == kGroup && word.find_first_not_of("0123456789/") == std::string::npos;
}

size_t decode_mandatory(std::span<const std::string> groups, const PartContext &part,
                        Ascent *ascent)
{
    size_t i = 0;
    while (i < groups.size() && !opens_section(groups[i])) {
        const size_t used = decode_one(groups.subspan(i), part, ascent);
        if (used == 0) {
            return i;
        }
        i += used;
    }
    return groups.size();
}

size_t decode_significant(std::span<const std::string> groups, const PartContext &part,
                          Ascent *ascent)
{
    size_t i = 0;
    for (; i < groups.size() && is_numbered(groups[i]); i += 2) {
        UpaSigLevel level = {pressure_of(groups[i], part.upper), kMissing, kMissing};
        UPA_decode_td(group_at(groups, i + 1).c_str(), &level.t, &level.td);
        if (level.p > 0 && !is_missing(level.t)) {
            ascent->sig.push_back(level);
        }
    }
    if (i < groups.size() && groups[i] == "21212") {
        i += 1 + decode_pressure_winds(groups.subspan(i + 1), part, ascent);
    }
    return i >= groups.size() || opens_section(groups[i]) ? groups.size() : i;
}

size_t decode_winds(std::span<const std::string> groups, const PartContext &part, Ascent *ascent)
{
    size_t i = 0;
    while (i < groups.size() && !opens_section(groups[i])) {
        if (groups[i] == "21212") {
            i += 1 + decode_pressure_winds(groups.subspan(i + 1), part, ascent);
            return i >= groups.size() || opens_section(groups[i]) ? groups.size() : i;
        }
        const size_t used = decode_wind_row(groups.subspan(i), part, ascent);
        if (used == 0) {
            return i;
        }
        i += used;
    }
    return groups.size();
}

int finish_ascent(Ascent *ascent)
{
    UpaReport &report = ascent->report;
    for (const PressureWind &wind : ascent->pressure_winds) {
        const float z = height_at(report, wind.p);
        ascent->winds.push_back({z / kMetresOfFoot, wind.dir, wind.spd});
    }
    std::stable_sort(ascent->sig.begin(), ascent->sig.end(),
                     [](const UpaSigLevel &a, const UpaSigLevel &b) { return a.p > b.p; });
    std::stable_sort(ascent->winds.begin(), ascent->winds.end(),
                     [](const UpaWindLevel &a, const UpaWindLevel &b) { return a.z < b.z; });
    report.num_mand = kAllSlots;
    report.num_sig = static_cast<int>(std::min<size_t>(ascent->sig.size(), kUpaSignificant));
    report.num_wnd = static_cast<int>(std::min<size_t>(ascent->winds.size(), kUpaWinds));
    std::copy_n(ascent->sig.begin(), report.num_sig, report.sig);
    std::copy_n(ascent->winds.begin(), report.num_wnd, report.wnd);
    SoundLevel &surface = report.mand[kUpaSurface];
    if (is_missing(surface.p) && report.num_sig > 0 && report.sig[0].p > 500) {
        surface.p = report.sig[0].p;
        surface.t = report.sig[0].t;
        surface.td = report.sig[0].td;
    }
    if (is_missing(surface.dir) && report.num_wnd > 0 && report.wnd[0].z == 0) {
        surface.dir = report.wnd[0].dir;
        surface.spd = report.wnd[0].spd;
    }
    return static_cast<int>(ascent->sig.size() + ascent->winds.size()) - report.num_sig -
           report.num_wnd;
}

} // namespace tyr
