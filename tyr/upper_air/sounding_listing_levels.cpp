#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/sounding_private.h"
#include "tyr/met/wind.h"
#include "tyr/upper_air/sounding_listing.h"
#include "tyr/upper_air/sounding_listing_private.h"

namespace {

using namespace tyr;

constexpr const char *kRule = "-------------------------------------";
constexpr const char *kStormRule = "-------------------------------------------------------------";

// A number with so many decimals in a column so wide, and a blank; all blanks for Missing.
std::string cell(float value, int width, int decimals)
{
    std::array<char, 64> text{};
    if (is_missing(value))
        return std::string(static_cast<size_t>(width) + 1, ' ');
    std::snprintf(text.data(), text.size(), "%*.*f ", width, decimals, double{value});
    return text.data();
}

std::string cells(const ListedWind &wind)
{
    return cell(wind.dir, 3, 0) + cell(wind.spd, 3, 0) + cell(wind.u, 5, 1) + cell(wind.v, 5, 1);
}

// Pauses when a page is full of rows.
class Pager {
  public:
    void row()
    {
        constexpr int kOtherLines = 4; // of a page, that aren't rows
        if (++rows_ % std::max(MSG_page_length() - kOtherLines, 1) == 0)
            list_pause(kListLevel);
    }

  private:
    int rows_ = 0;
};

} // namespace

namespace tyr {

ListedWind listed_wind(float dir, float spd)
{
    ListedWind w{kMissing, kMissing, dir, spd};
    MET_wind_uv(&w.u, &w.v, dir, spd);
    return w;
}

ListedWind relative_wind(const ListedWind &wind, const ListedWind &storm)
{
    ListedWind w;
    if (!wind.is_there() || !storm.is_there())
        return w;
    w.u = wind.u - storm.u;
    w.v = wind.v - storm.v;
    MET_wind_dirspd(&w.dir, &w.spd, w.u, w.v);
    return w;
}

} // namespace tyr

void THERM_print_levels()
{
    const SoundingStore &s = THERM_store();
    const SoundLevel surface = level_at(s.temps, s.num_temps, kPressureKind, s.surface_pressure);
    Pager pager;
    if (!is_missing(surface.p)) {
        MET_print_level(kListLevel, 0, kTagSurface, &surface);
        pager.row();
    }
    for (int i = 0; i < s.num_temps; ++i) {
        MET_print_level(kListLevel, 0, i, &s.temps[i]);
        pager.row();
    }
    if (!is_missing(s.tropopause.p))
        MET_print_level(kListLevel, 0, kTagTropopause, &s.tropopause);
    if (!is_missing(s.max_wind.p))
        MET_print_level(kListLevel, 0, kTagMaxWind, &s.max_wind);
}

void THERM_print_wind_levels()
{
    const SoundingStore &s = THERM_store();
    const ListedWind storm = listed_wind(s.storm_motion.dir, s.storm_motion.spd);
    const bool has_storm = storm.is_there();
    const char *rule = has_storm ? kStormRule : kRule;
    MSG_out(kListLevel, "\nWind level data\n");
    if (has_storm)
        MSG_out(kListLevel, "   Storm motion: %3.0f at %3.0f knt\n", double{storm.dir},
                double{storm.spd});
    MSG_out(kListLevel, "%s\n LEV   P    H    DIR SPD   U     V   %s%s\n", rule,
            has_storm ? "| DIR SPD   U     V\n" : "\n", rule);
    Pager pager;
    for (int i = 0; i < s.num_winds; ++i) {
        const SoundLevel &level = s.winds[i];
        const ListedWind wind = listed_wind(level.dir, level.spd);
        std::string row = cell(level.p, 4, 0) + cell(level.z, 5, 0) + cells(wind);
        if (has_storm)
            row += " | " + cells(relative_wind(wind, storm));
        MSG_out(kListLevel, "%3d  %s\n", i, row.c_str());
        pager.row();
    }
}
