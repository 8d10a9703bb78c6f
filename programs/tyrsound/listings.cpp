#include "programs/tyrsound/listings.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/sounding_listing.h"
#include "tyr/upper_air/sounding_store.h"

namespace tyr {

namespace {

struct Listing {
    const char *word;
    void (*print)();
};
constexpr Listing kListings[] = {
    {"levels",     THERM_print_levels     },
    {"windlevels", THERM_print_wind_levels},
    {"indices",    THERM_print_indices    },
    {"winds",      THERM_print_winds      },
    {"storm",      THERM_print_storm      },
};

std::string number(int decimals, float value)
{
    return is_missing(value) ? "-" : STR_print("%.*f", decimals, static_cast<double>(value));
}

std::string date_text(const DateRec &date)
{
    std::array<char, kDateTextRoom> text = {};
    if (date.month > 0) {
        TIME_format(&date, text.data());
    }
    return text[0] == '\0' ? "-" : text.data();
}

int known_levels(const UpaReport &report)
{
    return static_cast<int>(
        std::count_if(std::begin(report.mand), std::end(report.mand), [](const SoundLevel &level) {
            return !is_missing(level.t) || !is_missing(level.dir) || !is_missing(level.z);
        }));
}

int known_winds(const UpaReport &report)
{
    return static_cast<int>(
        std::count_if(report.wnd, report.wnd + report.num_wnd,
                      [](const UpaWindLevel &level) { return !is_missing(level.dir); }));
}

} // namespace

void list_stations(const std::vector<HeldReport> &held)
{
    MSG_out(kMsgPrint, "%-10s %6s %8s %9s %6s %5s %5s %5s  %s\n", "station", "number", "lat", "lon",
            "elev", "mand", "sig", "wind", "date");
    for (const HeldReport &one : held) {
        const UpaReport &r = one.report;
        MSG_out(kMsgPrint, "%-10s %6s %8s %9s %6s %5d %5d %5d  %s\n", station_of(r).c_str(),
                r.wmo > 0 ? STR_print("%05d", r.wmo).c_str() : "-", number(2, r.lat).c_str(),
                number(2, r.lon).c_str(), number(0, r.elev).c_str(), known_levels(r), r.num_sig,
                known_winds(r), date_text(one.date).c_str());
    }
}

bool is_listing(const std::string &word)
{
    return std::any_of(std::begin(kListings), std::end(kListings), [&](const Listing &listing) {
        return STR_casecmp(word.c_str(), listing.word) == 0;
    });
}

void print_listings(const std::vector<std::string> &words)
{
    const SoundingStore &s = THERM_store();
    MSG_out(kMsgPrint, "\n%s  %s\n\n", s.station, date_text(s.date).c_str());
    for (const Listing &listing : kListings) {
        const bool is_asked =
            words.empty() || std::any_of(words.begin(), words.end(), [&](const std::string &word) {
                return STR_casecmp(word.c_str(), listing.word) == 0;
            });
        if (is_asked) {
            listing.print();
        }
    }
}

} // namespace tyr
