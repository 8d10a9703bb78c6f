#include "tyr/upper_air/coded_text.h"

#include <algorithm>
#include <cmath>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/groups.h"
#include "var/number.h"

namespace tyr {

namespace {

constexpr int kFirstUpper = 19;        // num_mand of a report without levels above 10 hPa
constexpr float kTropopauseCode = 880; // 88 and 77 take the place of tens of hPa
constexpr float kMaxWindCode = 770;
constexpr float kLowSurface = 500.0F;
constexpr float kThousandFeet = 1000.0F;
constexpr size_t kPressureWord = 3;
constexpr size_t kHeightWord = 2;

std::string group(WordCursor &words)
{
    return std::string(words.word());
}

/// hhh of a group as a pressure; Missing where it has none.
float pressure_of(const std::string &text)
{
    float code = kMissing;
    float p = kMissing;
    UPA_decode_pz(text.c_str(), &code, &p);
    return p;
}

} // namespace

const char *group_or(int encoded, const char *nothing)
{
    return encoded == 0 ? UPA_group() : nothing;
}

void read_slot(WordCursor &words, SoundLevel *level)
{
    UPA_decode_pz(group(words).c_str(), &level->p, &level->z);
    UPA_decode_td(group(words).c_str(), &level->t, &level->td);
    UPA_decode_wind(group(words).c_str(), &level->dir, &level->spd);
}

void write_slot(WordWriter &out, const SoundLevel &level, const char *nothing)
{
    out.word(group_or(UPA_encode_pz(level.p, level.z), nothing));
    out.word(group_or(UPA_encode_td(level.t, level.td), nothing));
    out.word(group_or(UPA_encode_wind(level.dir, level.spd), nothing));
}

void read_upper_slots(WordCursor &words, UpaReport *report)
{
    report->num_mand = kFirstUpper;
    for (int slot = kUpa7; slot < kUpaTropopause && words.peek().substr(0, 1) == "-"; ++slot) {
        read_slot(words, &report->mand[slot]);
        ++report->num_mand;
    }
    SoundLevel &tropopause = report->mand[kUpaTropopause];
    tropopause.p = pressure_of(group(words));
    UPA_decode_td(group(words).c_str(), &tropopause.t, &tropopause.td);
    UPA_decode_wind(group(words).c_str(), &tropopause.dir, &tropopause.spd);
    SoundLevel &max_wind = report->mand[kUpaMaxWind];
    max_wind.p = pressure_of(group(words));
    UPA_decode_wind(group(words).c_str(), &max_wind.dir, &max_wind.spd);
}

void write_upper_slots(WordWriter &out, const UpaReport &report)
{
    int slot = kUpa7;
    while (slot <= kUpa1 && !is_missing(report.mand[slot].p)) {
        write_slot(out, report.mand[slot++], kNoGroup);
    }
    if (slot > kUpa7) {
        out.end_line();
    }
    const SoundLevel &tropopause = report.mand[kUpaTropopause];
    const bool has_tropopause = !is_missing(tropopause.p);
    out.word(has_tropopause ? group_or(UPA_encode_pz(kTropopauseCode, tropopause.p), kNoGroup)
                            : kNoGroup);
    out.word(group_or(has_tropopause ? UPA_encode_td(tropopause.t, tropopause.td) : -1, kNoGroup));
    out.word(
        group_or(has_tropopause ? UPA_encode_wind(tropopause.dir, tropopause.spd) : -1, kNoGroup));
    const SoundLevel &max_wind = report.mand[kUpaMaxWind];
    const bool has_max = !is_missing(max_wind.p);
    out.word(has_max ? group_or(UPA_encode_pz(kMaxWindCode, max_wind.p), kNoGroup) : kNoGroup);
    out.word(group_or(has_max ? UPA_encode_wind(max_wind.dir, max_wind.spd) : -1, kNoGroup));
    out.end_line();
}

float sig_pressure(std::string_view word)
{
    const bool leading_zero = word.substr(0, 1) == "0";
    const float p = VAR_take_real(&word).value_or(kMissing);
    if (p < 0) {
        return kMissing;
    }
    return leading_zero && p < 100 ? p + 1000 : p;
}

bool read_sig(WordCursor &words, UpaSigLevel *level)
{
    const std::string_view word = words.word(kPressureWord);
    if (word.empty() || word.front() == 'X' || word.front() == '$') {
        return false;
    }
    level->p = sig_pressure(word);
    UPA_decode_td(group(words).c_str(), &level->t, &level->td);
    return true;
}

void write_sig(WordWriter &out, const UpaSigLevel &level)
{
    constexpr float kWholePressures = 9.95F; // where "%3.1f" would take a fourth character
    const int p = VAR_whole(level.p);
    if (level.p >= 1000) {
        out.word(STR_print("%3.3d", p % 1000));
    } else if (level.p >= kWholePressures) {
        out.word(STR_print("%3d", std::max(p, 10)));
    } else {
        out.word(STR_print("%3.1f", level.p));
    }
    out.word(group_or(UPA_encode_td(level.t, level.td), kNoGroup));
}

bool read_wind(WordCursor &words, UpaWindLevel *level)
{
    std::string_view word = words.word(kHeightWord);
    if (word.empty() || word.front() == 'X' || word.front() == '$') {
        return false;
    }
    const std::optional<int> thousands = VAR_take_int(&word);
    level->z = thousands ? kThousandFeet * static_cast<float>(*thousands) : kMissing;
    UPA_decode_wind(group(words).c_str(), &level->dir, &level->spd);
    return true;
}

bool fits_wind_entry(const UpaWindLevel &level)
{
    return level.z >= -1 && level.z < 100 * kThousandFeet - 1;
}

void write_wind(WordWriter &out, const UpaWindLevel &level)
{
    out.word(STR_print("%2.2d", VAR_whole((level.z + 1) / kThousandFeet)));
    out.word(group_or(UPA_encode_wind(level.dir, level.spd), kNoGroup));
}

void take_surface(UpaReport *report)
{
    SoundLevel &surface = report->mand[kUpaSurface];
    if (report->num_sig > 0 && report->sig[0].p > kLowSurface) {
        surface.p = report->sig[0].p;
        surface.t = report->sig[0].t;
        surface.td = report->sig[0].td;
    }
    if (report->num_wnd > 0 && report->wnd[0].z == 0) {
        surface.dir = report->wnd[0].dir;
        surface.spd = report->wnd[0].spd;
    }
    if (report->num_sig > 0) {
        return;
    }
    // a mandatory level below the ground is told without a temperature
    if (is_missing(report->mand[kUpa1000].t)) {
        surface.p = report->mand[kUpa1000].p;
    } else if (is_missing(report->mand[kUpa925].t)) {
        surface.p = report->mand[kUpa925].p;
    }
}

bool stands_in_slot(const UpaReport &report, int index)
{
    const int slot = UPA_mand_index(report.sig[index].p);
    return index > 0 && slot > 0 && !is_missing(report.mand[slot].z);
}

UpaSigLevel surface_sig(const UpaReport &report)
{
    const SoundLevel &surface = report.mand[kUpaSurface];
    return {surface.p, surface.t, surface.td};
}

UpaWindLevel surface_wind(const UpaReport &report)
{
    const SoundLevel &surface = report.mand[kUpaSurface];
    return {0.0F, surface.dir, surface.spd};
}

std::string heading_word(const UpaReport &report)
{
    std::string word = report.id;
    if (word.empty()) {
        word = report.wmo == kMissingInt ? "?" : STR_print("%05d", report.wmo);
    }
    std::replace_if(
        word.begin(), word.end(), [](char c) { return c <= ' ' || c == ':' || c == '$'; }, '_');
    return word;
}

} // namespace tyr
