// Makes data/sao.cty from public lists of weather stations.
//
//     make_cities STATIONS.gz AIRPORTS.gz SURFACE.tbl UPPER.tbl PROFILERS.stn > data/sao.cty
//
// The first two are those of Debian's package weather-util-data, the others are tables of id, WMO
// number, name, state, country, latitude and longitude in hundredths of a degree, and elevation in
// metres. data/README.md names the sources.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <numbers>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <zlib.h>

#include "tools/make_cities/place_name.h"
#include "tyr/base/str.h"
#include "tyr/place/wmo_ids.h"

namespace {

constexpr int kUnknownElevation = 9999;
constexpr double kEarth = 6371.0; ///< km
constexpr int kMajorWeight = 1000;
/// Part of a spacing round a large airport where it comes before the small ones, and the finest
/// spacing for which that holds.
constexpr double kShadow = 0.6;
constexpr double kFinestShadow = 60.0;
constexpr double kSamePlace = 100.0; ///< km between two lists' places of one station
constexpr double kFarOff = 30.0;     ///< degrees from the middle of a block of numbers
constexpr size_t kFewest = 6;        ///< stations that tell where a block lies
constexpr int kBlock = 1000;         ///< numbers of a block

/// Least distance (km) between stations of a priority and those ahead of them.
constexpr double kSpacing[] = {650, 420, 280, 190, 130, 90, 60, 40, 20, 0};

/// Airports of capitals and of the largest cities: they come first where places compete.
constexpr const char *kMajor =
    "KDEN KORD KJFK KLAX KATL KDFW KSEA KMSP KMIA KIAH KDCA KBOS KPHX KSLC KSTL KMSY KLAS KSFO "
    "KDTW KPHL KMCI KABQ KBNA KCLT KBIS KBIL KBOI KRAP KOMA KOKC KELP KSAT KLIT KJAX KBUF KPWM "
    "KFAR KGTF PANC PAFA PAJN PHNL CYOW CYYZ CYUL CYVR CYYC CYEG CYWG CYQR CYHZ CYYT CYFB CYZF "
    "CYXY CYQB CYYQ MMMX MMMY MMGL MMUN MMHO MMTJ MUHA MKJP MDSD TJSJ MYNN MGGT MSLP MHTG MNMG "
    "MROC MPTO MZBZ TTPP TBPB SVMI SKBO SEQM SPJC SPJC SLLP SCEL SAEZ SUMU SGAS SBBR SBGL SBGR "
    "SBEG SBBE SBFZ SBRF SBSV SBPA SBCY SOCA SMJP SYCJ SACO SAVC SAWH SCCI SKCL "
    "EGLL EGPH EGPF EGAA EGCC EIDW LFPG LFML LFBO LFLL LFRS LFBD EBBR EHAM EDDB EDDM EDDF EDDH "
    "EKCH ENGM ENBR ENTC ENVA ESSA ESGG ESPA EFHK EFRO EETN EVRA EYVI EPWA EPKK LKPR LZIB LHBP "
    "LOWW LSZH LSGG LIRF LIMC LIRN LICJ LEMD LEBL LEZL LEMG LPPT LPPR LGAV LGTS LTAC LTBA LTBJ "
    "LCLK LMML LBSF LROP LYBE LDZA LJLJ LQSA LWSK LATI LUKK UKBB UKOO UMMS UUEE ULLI UWKD URRR "
    "USSS UNNT UNKL UIII UHHH UHWW UEEE UHMM USPP UACC UAAA UTTT UTAA UTDD UAFM UGTB UDYZ UBBB "
    "BIKF BGSF BGGH ENSB LPLA GCLP DAAG DTTA HLLT HECA GMMN GMME GOOY GQNN GABS DRRN DNMM DNKN "
    "DNAA DGAA DIAP DBBB FTTJ FKKD FCBB FZAA FZIC FOOL FNLU HSSS HAAA HAAB HDAM HCMM HKJK HTDA "
    "HUEN HRYR FLKK FVHA FWLI FQMA FQNP FACT FAOR FADN FBSK FYWH FMMI FMEE FIMP FSIA FHAW FGSL "
    "LLBG OJAI OSDI OLBA ORBI OERK OEJN OKBK OBBI OTBD OTHH OMAA OMDB OOMS OYSN OYAA OIIE OIII "
    "OIMM OISS OAKB OPKC OPRN OPLA VIDP VABB VECC VOMM VOBL VOHS VAAH VNKT VGHS VGEG VQPR VCBI "
    "VRMM VYYY VTBS VTBD VTCC VLVT VVNB VVTS VDPP WMKK WSSS WIII WIHH WADD WAAA WBKK WBGG WBSB "
    "RPLL RPMD ZBAA ZSPD ZSSS ZGGG VHHH VMMC ZUUU ZLXY ZWWW ZPPP ZHHH ZYTX ZYHB ZULS ZMUB ZMCK "
    "RKSI RKSS ZKPY RJTT RJAA RJBB RJCC RJFF ROAH RCTP RCSS PGUM PTPN PKMJ PTRO "
    "YSSY YSCB YMML YBBN YPPH YPAD YPDN YBAS YMHB YBCS YBTL YPKG YBRM YPLM NZAA NZWN NZCH NZDN "
    "AYPY AGGH NWWW NFFN NVVV NSFA NFTF NTAA NCRG SCIP NZSP NZCM";

/// Countries of location indicators (ICAO Doc 7910, ISO 3166) that the descriptions leave open.
constexpr const char *kCountries =
    "AG SB BG GL DB BJ DF BF DG GH DI CI DR NE DX TG EB BE EF FI EL LU EQ TR EY LT FC CG FE CF FH "
    "SH FJ IO FM MG FP ST FS SC FT TD FW MW FX LS GB GM GF SL GG GW GL LR GS EH GU GN HA ET HB BI "
    "HD DJ HF DJ HH ER HK KE HU UG LA AL LC CY LD HR LM MT LO AT LQ BA LW MK LX GI LZ SK MK JM MN "
    "NI MR CR MS SV MT HT MW KY MZ BZ NG TV NI NU NL WF NS WS NW NC OA AF OB BH OJ JO OL LB OS SY "
    "OY YE PG GU PH US PJ UM PK MH PL KI PM UM PP US PT FM PW UM RC TW RO JP RP PH SF FK SO GF SU "
    "UY SV VE TA AG TB BB TD DM TF MQ TG GD TI VI TK KN TL LC TN CW TQ AI TT TT TU VG TX BM UE RU "
    "UI RU UK UA VB MM VH HK VM MO VN NP WB MY WP TL WR ID YD AU YM AU YS AU ZG CN ZH CN ZK KP ZL "
    "CN ZP CN ZW CN ZY CN NZ NZ";

struct Station {
    std::string id; ///< empty for none
    std::string name, state, country;
    double lat = 0.0, lon = 0.0; ///< degrees
    int elevation = kUnknownElevation;
    int wmo = kNoWmo;
    int importance = 0;
    int priority = -1;
    double x = 0.0, y = 0.0, z = 0.0; ///< km, earth-centred
};

std::vector<Station> stations;
std::map<std::string, size_t> by_id;
std::set<int> known_numbers;

std::vector<std::string> read_gz(const char *path)
{
    std::vector<std::string> lines;
    gzFile file = gzopen(path, "rb");
    char line[4096];
    while (file && gzgets(file, line, sizeof line)) {
        STR_clean_line(line);
        lines.emplace_back(line);
    }
    if (file) {
        gzclose(file);
    }
    return lines;
}

/// Sets a station's place, in degrees and in space.
void place(Station *s, double latitude, double longitude)
{
    const double lat = latitude * std::numbers::pi / 180.0;
    const double lon = longitude * std::numbers::pi / 180.0;
    s->lat = latitude;
    s->lon = longitude;
    s->x = kEarth * std::cos(lat) * std::cos(lon);
    s->y = kEarth * std::cos(lat) * std::sin(lon);
    s->z = kEarth * std::sin(lat);
}

double distance2(const Station &a, const Station &b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    const double dz = a.z - b.z;
    return dx * dx + dy * dy + dz * dz;
}

/// Adds a station. Of one that is known already a later list's place wins where they are far apart,
/// and its number where there was none.
void add(const Station &station)
{
    if (std::fabs(station.lat) > 90.0 || std::fabs(station.lon) > 180.0) {
        return;
    }
    if (!station.id.empty() && by_id.count(station.id) != 0) {
        Station &known = stations[by_id[station.id]];
        if (distance2(known, station) > kSamePlace * kSamePlace) {
            std::fprintf(stderr, "%s %s: %.2f %.2f, by another list %.2f %.2f\n", known.id.c_str(),
                         known.name.c_str(), known.lat, known.lon, station.lat, station.lon);
            place(&known, station.lat, station.lon);
        }
        known.importance += station.importance;
        if (known.wmo == kNoWmo && known_numbers.insert(station.wmo).second) {
            known.wmo = station.wmo;
        }
        return;
    }
    Station copy = station;
    if (copy.wmo != kNoWmo && !known_numbers.insert(copy.wmo).second) {
        if (copy.id.empty()) {
            return;
        }
        copy.wmo = kNoWmo; // a number has one station
    }
    if (!copy.id.empty()) {
        by_id[copy.id] = stations.size();
    }
    stations.push_back(copy);
}

/// Tables of fixed columns. WMO numbers have five digits, or six of which the last is 0.
/// @param name_at  column of the name
void read_table(const char *path, size_t name_at, int importance)
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.size() < name_at + 50) {
            continue;
        }
        Station s;
        s.id = trimmed(line.substr(0, 8));
        const std::string number = trimmed(line.substr(9, name_at - 9));
        const int n = std::atoi(number.c_str());
        if (number.size() == 5 && n > 0) {
            s.wmo = n;
        } else if (number.size() == 6 && n != 999999 && n % 10 == 0) {
            s.wmo = n / 10;
        }
        int lat = 0;
        int lon = 0;
        const std::string places = line.substr(name_at + 32, 6);
        const size_t gap = places[0] == ' ' ? 1 : 0;
        const std::string state = trimmed(places.substr(gap, 2));
        const std::string country = trimmed(places.substr(gap + 3));
        std::istringstream numbers(line.substr(name_at + 38));
        if (!(numbers >> lat >> lon >> s.elevation)) {
            continue;
        }
        place(&s, lat / 100.0, lon / 100.0);
        s.country = country == "AA" ? "AQ" : country;
        const bool is_us = country == "US";
        const bool is_canada = country == "CN"; // of these lists
        s.state = (is_us || is_canada || country == "AU") && state != "--" ? state : "";
        if ((is_us || is_canada) && s.id.size() == 3) {
            s.id.insert(0, is_us ? "K" : "C");
        } else if (s.id.size() == 3) {
            s.id.clear(); // no location indicator
        }
        if (s.id.empty() && s.wmo == kNoWmo) {
            continue;
        }
        s.name = make_name(line.substr(name_at, 32));
        s.importance = importance;
        add(s);
    }
}

/// Sections "[id]" with a description of "name, [city,] [state,] country" and a place in radians.
void read_reports(const char *path, const std::set<std::string> &airports,
                  std::map<std::string, std::map<std::string, int>> *votes)
{
    Station s;
    for (const std::string &line : read_gz(path)) {
        if (line[0] == '[') {
            s = {};
            s.id = upper(line.substr(1, line.find(']') - 1));
        } else if (line.rfind("description = ", 0) == 0) {
            const std::vector<std::string> parts = STR_fields(line.substr(14), ',');
            const size_t n = parts.size();
            const std::string last = trimmed(parts.back());
            // "Airport, City, Region, CC" where the country is a code, else "City, ..., Country"
            const bool coded = n >= 3 && last.size() == 2;
            s.name = make_name(trimmed(coded ? parts[n - 3] : parts[0]));
            if (coded && s.id.size() == 4) {
                (*votes)[s.id.substr(0, 2)][last]++;
                (*votes)[s.id.substr(0, 1)][last]++;
            }
            const std::string state = n >= 3 ? trimmed(parts[n - 2]) : "";
            const bool named = last == "US" || last == "CA" || last.rfind("United States", 0) == 0;
            s.state = named && state.size() == 2 ? state : "";
            s.country = coded ? last : named ? "US" : "";
        } else if (line.rfind("location = (", 0) == 0 && s.id.size() == 4) {
            double lat = 0.0;
            double lon = 0.0;
            if (std::sscanf(line.c_str(), "location = (%lf, %lf)", &lat, &lon) == 2) {
                place(&s, lat * 180.0 / std::numbers::pi, lon * 180.0 / std::numbers::pi);
                s.importance = airports.count(s.id) != 0 ? 2 : 1;
                add(s);
            }
        }
    }
}

/// Countries after the letters of the identifier, or of the number's region: one code set for all.
void settle_countries(const std::map<std::string, std::map<std::string, int>> &votes)
{
    const std::vector<std::string> table = STR_fields(kCountries, ' ');
    const auto winner = [&](const std::string &prefix) {
        for (size_t i = 0; i + 1 < table.size(); i += 2) {
            if (table[i] == prefix) {
                return table[i + 1];
            }
        }
        std::string best;
        int most = 0;
        if (const auto row = votes.find(prefix); row != votes.end()) {
            for (const auto &[code, count] : row->second) {
                if (count > most) {
                    most = count;
                    best = code;
                }
            }
        }
        return best;
    };
    for (Station &s : stations) {
        if (s.country == "US") {
            continue;
        }
        std::string id = s.id;
        if (id.size() != 4 && s.wmo != kNoWmo) {
            char coded[kWmoIdRoom];
            CTY_wmo_to_id(coded, s.wmo);
            id = coded;
        }
        if (std::string code = winner(id.substr(0, 2)); !code.empty()) {
            s.country = code;
        } else if (std::string wider = winner(id.substr(0, 1)); !wider.empty()) {
            s.country = wider;
        }
    }
}

/// Rows whose latitude and longitude stand exchanged: they lie far from the others of their
/// number's block, and near them the other way round.
void mend_places()
{
    for (Station &s : stations) {
        if (s.wmo == kNoWmo) {
            continue;
        }
        std::vector<double> lats;
        std::vector<double> lons;
        for (const Station &other : stations) {
            if (other.wmo / kBlock == s.wmo / kBlock) {
                lats.push_back(other.lat);
                lons.push_back(other.lon);
            }
        }
        if (lats.size() < kFewest) {
            continue;
        }
        const size_t middle = lats.size() / 2;
        std::nth_element(lats.begin(), lats.begin() + static_cast<long>(middle), lats.end());
        std::nth_element(lons.begin(), lons.begin() + static_cast<long>(middle), lons.end());
        const auto off = [&](double lat, double lon) {
            return std::hypot(lat - lats[middle], lon - lons[middle]);
        };
        if (std::fabs(s.lon) <= 90.0 && off(s.lat, s.lon) > kFarOff &&
            off(s.lon, s.lat) < kFarOff / 2.0) {
            std::fprintf(stderr, "%05d %s: exchanged %.2f %.2f\n", s.wmo, s.name.c_str(), s.lat,
                         s.lon);
            place(&s, s.lon, s.lat);
        }
    }
}

/// Gives each station the coarsest priority that keeps its spacing to those ahead.
void settle_priorities()
{
    const std::vector<std::string> list = STR_fields(kMajor, ' ');
    std::map<std::string, int> major; // earlier in the list, more important
    for (const std::string &id : list) {
        major.emplace(id, 2 * kMajorWeight - static_cast<int>(major.size()));
    }
    for (Station &s : stations) {
        const auto found = major.find(s.id);
        s.importance =
            found != major.end() ? found->second : s.importance + (s.wmo != kNoWmo ? 2 : 0);
    }
    std::stable_sort(stations.begin(), stations.end(), [](const Station &a, const Station &b) {
        return a.importance > b.importance;
    });
    std::vector<const Station *> majors;
    for (const Station &s : stations) {
        if (s.importance >= kMajorWeight) {
            majors.push_back(&s);
        }
    }
    std::vector<const Station *> taken;
    int priority = 0;
    for (const double spacing : kSpacing) {
        for (Station &s : stations) {
            const auto too_near = [&](const Station *t) {
                return distance2(s, *t) < spacing * spacing;
            };
            const double shadow = kShadow * spacing;
            const bool in_a_shadow = spacing > kFinestShadow && s.importance < kMajorWeight &&
                                     std::any_of(majors.begin(), majors.end(), [&](auto *m) {
                                         return distance2(s, *m) < shadow * shadow;
                                     });
            if (s.priority < 0 && !in_a_shadow &&
                std::none_of(taken.begin(), taken.end(), too_near)) {
                s.priority = priority;
                taken.push_back(&s);
            }
        }
        ++priority;
    }
    std::stable_sort(stations.begin(), stations.end(), [](const Station &a, const Station &b) {
        return a.priority != b.priority ? a.priority < b.priority
               : a.country != b.country ? a.country < b.country
                                        : a.name < b.name;
    });
}

std::string or_dashes(const std::string &text)
{
    return text.empty() ? "--" : text;
}

void write_all()
{
    for (const Station &s : stations) {
        std::printf("%-20s %-2.2s %-2.2s %-9s %d %7.3f %8.3f %5d %05d 0\n", s.name.c_str(),
                    or_dashes(s.state).c_str(), or_dashes(s.country).c_str(),
                    or_dashes(s.id).c_str(), s.priority, s.lat, s.lon, s.elevation, s.wmo);
    }
}

} // namespace

int main(int count, char **words)
{
    if (count != 6) {
        std::fputs("make_cities STATIONS.gz AIRPORTS.gz SURFACE.tbl UPPER.tbl PROFILERS.stn\n",
                   stderr);
        return 1;
    }
    std::set<std::string> airports;
    for (const std::string &line : read_gz(words[2])) {
        if (line.rfind("station = ", 0) == 0) {
            airports.insert(upper(line.substr(10)));
        }
    }
    read_table(words[5], 16, 0); // first: they keep their names and numbers
    read_table(words[3], 16, 2);
    read_table(words[4], 16, 3);
    std::map<std::string, std::map<std::string, int>> votes;
    read_reports(words[1], airports, &votes);
    mend_places();
    settle_countries(votes);
    settle_priorities();
    write_all();
    return 0;
}
