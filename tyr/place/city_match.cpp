#include "tyr/place/city_match.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numbers>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/place/city_rec.h"

namespace {

constexpr double kSphereRadius = 6371.3; ///< km
constexpr size_t kStateLength = 2;
constexpr size_t kStateCountryLength = 5;
constexpr size_t kWmoLength = 5;
constexpr size_t kNamePart = 5; ///< shortest beginning of a name

constexpr const char *kSelectors[] = {
    "Name=", "ST=",  "ST:",  "CN=",  "CN:",  "ID=",   "RA<",   "P=",    "P<",   "P>",   "Lat=",
    "Lat<",  "Lat>", "Lon=", "Lon<", "Lon>", "Elev=", "Elev<", "Elev>", "WMO=", "WMO<", "WMO>"};

bool same(const std::string &a, const std::string &b)
{
    return STR_casecmp(a.c_str(), b.c_str()) == 0;
}

/// What a record is compared by.
struct Subject {
    const CityRec &record;
    std::string state_country; ///< "CO_US"
    std::string wmo;           ///< five digits
};

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

/// Great circle distance in km, by the haversine formula (Sinnott, Sky and Telescope 68, 1984).
double distance(double lat1, double lon1, double lat2, double lon2)
{
    const double dlat = std::sin(radians(lat2 - lat1) / 2.0);
    const double dlon = std::sin(radians(lon2 - lon1) / 2.0);
    const double h = dlat * dlat + std::cos(radians(lat1)) * std::cos(radians(lat2)) * dlon * dlon;
    return 2.0 * kSphereRadius * std::asin(std::sqrt(std::fmin(h, 1.0)));
}

bool has_state(const Subject &s, const std::string &text)
{
    return (text.size() == kStateLength && same(text, s.record.state)) ||
           (text.size() == kStateCountryLength && same(text, s.state_country));
}

bool is_near(const CityRec &record, double lat, double lon, double km)
{
    return !is_missing(record.lat) && !is_missing(record.lon) &&
           distance(lat, lon, record.lat, record.lon) <= km;
}

/// A number's test: '=', '<' (at most) or '>' (at least). @return 1 it holds, 0 it doesn't, -1 the
/// part isn't one of this key
int test_number(const std::string &part, const char *key, float value)
{
    const size_t length = std::strlen(key);
    if (!STR_has_prefix(part, key) || part.size() <= length || !std::strchr("=<>", part[length])) {
        return -1;
    }
    const float limit = static_cast<float>(std::atof(part.c_str() + length + 1));
    if (is_missing(value)) {
        return 0;
    }
    switch (part[length]) {
    case '<':
        return value <= limit ? 1 : 0;
    case '>':
        return value >= limit ? 1 : 0;
    default:
        return value == limit ? 1 : 0;
    }
}

bool test_numbers(const Subject &s, const std::string &part)
{
    const CityRec &r = s.record;
    const struct {
        const char *key;
        float value;
    } numbers[] = {
        {"P",    static_cast<float>(r.priority)},
        {"Lat",  r.lat                         },
        {"Lon",  r.lon                         },
        {"Elev", r.elev                        },
        {"WMO",  static_cast<float>(r.wmo)     },
    };
    for (const auto &number : numbers) {
        if (const int held = test_number(part, number.key, number.value); held >= 0) {
            return held == 1;
        }
    }
    return false;
}

/// Tests part i of a word, and moves i behind what it consumes.
bool test_part(const Subject &s, const std::vector<std::string> &parts, size_t &i)
{
    const std::string &part = parts[i++];
    const auto begins = [&part](const char *key) { return STR_has_prefix(part, key); };
    const auto behind = [&part](size_t n) { return part.substr(std::min(n, part.size())); };
    if (begins("Name=")) {
        const std::string beginning = behind(6);
        return !beginning.empty() && STR_has_prefix(s.record.name, beginning);
    }
    if (begins("ST=")) {
        return has_state(s, behind(3));
    }
    if (begins("CN=")) {
        return same(s.record.country, behind(3));
    }
    if (begins("ID=")) {
        return same(s.record.id, behind(3));
    }
    if (begins("WMO=")) {
        return same(s.wmo, behind(4));
    }
    if (begins("RA<")) {
        if (parts.size() - i < 2) {
            return false;
        }
        i += 2;
        return is_near(s.record, std::atof(behind(3).c_str()), std::atof(parts[i - 2].c_str()),
                       std::atof(parts[i - 1].c_str()));
    }
    if (same(part, "ST") || same(part, "CN")) {
        if (i == parts.size()) {
            return false;
        }
        const std::string &value = parts[i++];
        return same(part, "ST") ? has_state(s, value) : same(s.record.country, value);
    }
    return test_numbers(s, part);
}

bool all_parts_hold(const Subject &s, const std::string &word)
{
    const std::vector<std::string> parts = STR_fields(word, ':');
    for (size_t i = 0; i < parts.size();) {
        if (!test_part(s, parts, i)) {
            return false;
        }
    }
    return !parts.empty();
}

bool names(const Subject &s, const std::string &word)
{
    return (word.size() == kWmoLength && same(word, s.wmo)) || same(word, s.record.id) ||
           (word.size() >= kNamePart && STR_has_prefix(s.record.name, word));
}

} // namespace

int CTY_match(int count, char **list, const CityRec *record)
{
    if (count <= 0) {
        return 1;
    }
    const Subject subject = {*record, STR_print("%2s_%2s", record->state, record->country),
                             STR_print("%5.5d", record->wmo)};
    for (int i = 0; i < count; ++i) {
        const std::string word = list[i];
        if (!word.empty() && (all_parts_hold(subject, word) || names(subject, word))) {
            return i;
        }
    }
    return -1;
}

int CTY_is_selected(int count, char **list, const char *id)
{
    if (count <= 0) {
        return 1;
    }
    for (int i = 0; i < count; ++i) {
        for (const char *selector : kSelectors) {
            if (STR_has_prefix(list[i], selector)) {
                return 1;
            }
        }
        if (STR_casecmp(list[i], id) == 0) {
            return 1;
        }
    }
    return 0;
}
