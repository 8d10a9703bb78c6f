#include <cstring>

#include "tyr/base/str.h"
#include "tyr/place/city.h"
#include "tyr/place/city_match.h"

namespace {

CityRec denver()
{
    CityRec record;
    CTY_empty_record(&record);
    STR_copy(record.name, sizeof record.name, "Denver/Intl");
    STR_copy(record.state, sizeof record.state, "CO");
    STR_copy(record.country, sizeof record.country, "US");
    STR_copy(record.id, sizeof record.id, "KDEN");
    record.priority = 3;
    record.lat = 39.87F;
    record.lon = -104.67F;
    record.elev = 1640.0F;
    record.wmo = 72565;
    return record;
}

/// A list as the resource gives it.
struct List {
    int count = 0;
    char **words = nullptr;
    explicit List(const std::string &text) { STR_split(text.c_str(), ',', &count, &words); }
    ~List() { STR_free_list(count, words); }
};

} // namespace

TEST(CityMatch, WordsSelectAsTheySay)
{
    const struct {
        const char *name, *list;
        int result;
    } cases[] = {
        {"empty list", "", 1},
        {"first word", "ST=CO", 0},
        {"second word", "ST=WY,ST=CO", 1},
        {"none", "ST=WY,ST=UT", -1},
        {"other case", "st=co", 0},
        {"state and country", "ST=CO_US", 0},
        {"other country", "ST=CO_CA", -1},
        {"state of three", "ST=COL", -1},
        {"next part", "ST:CO", 0},
        {"next part, country", "ST:CO_US:P<3", 0},
        {"state alone", "ST", -1},
        {"country", "CN=US", 0},
        {"country, next part", "CN:us", 0},
        {"country, other", "CN:FR", -1},
        {"id", "ID=kden", 0},
        {"id, other", "ID=KDE", -1},
        {"name behind one sign", "Name='Den", 0},
        {"name, not within", "Name='ver", -1},
        {"name, nothing", "Name='", -1},
        {"within 100 km", "RA<40:-105:100", 0},
        {"not within 10 km", "RA<40:-105:10", -1},
        {"radius short of parts", "RA<40:-105", -1},
        {"radius alone", "RA<", -1},
        {"radius and more", "RA<40:-105:100:ST=CO", 0},
        {"radius and other state", "RA<40:-105:100:ST=WY", -1},
        {"priority equal", "P=3", 0},
        {"priority at most itself", "P<3", 0},
        {"priority at most 2", "P<2", -1},
        {"priority at least 3", "P>3", 0},
        {"priority at least 4", "P>4", -1},
        {"latitude", "Lat>39:Lat<40", 0},
        {"latitude, south", "Lat<39", -1},
        {"longitude", "Lon<-104:Lon>-105", 0},
        {"longitude, east", "lon>-104", -1},
        {"elevation", "Elev>1600", 0},
        {"elevation, low", "Elev<1600", -1},
        {"WMO text", "WMO=72565", 0},
        {"WMO text, short", "WMO=7256", -1},
        {"WMO range", "WMO>72500:WMO<72600", 0},
        {"WMO below", "WMO<72500", -1},
        {"both must hold", "ST=CO:P<2", -1},
        {"plain id", "kden", 0},
        {"plain number", "72565", 0},
        {"plain beginning of name", "Denver/I", 0},
        {"short beginning", "Denv", -1},
        {"whole word, not parts", "KDEN:P<5", -1},
        {"unknown key", "XX=5", -1},
        {"nothing but colons", ":::", -1},
        {"directives", "%s%n:%d", -1},
    };
    const CityRec record = denver();
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const List list(c.list);
        EXPECT_EQ(CTY_match(list.count, list.words, &record), c.result);
    }
    const List list(std::string(10000, 'R') + "," + std::string(10000, ':'));
    EXPECT_EQ(CTY_match(list.count, list.words, &record), -1);
}

TEST(CityMatch, NamesOfTwelveCharactersMatchByTheirBeginning)
{
    CityRec record = denver();
    STR_copy(record.name, sizeof record.name, "Colorado_Springs_Mun");
    const List list("Colorado_Spr");
    EXPECT_EQ(CTY_match(list.count, list.words, &record), 0);
}

TEST(CityMatch, MissingValuesFitNoNumber)
{
    CityRec record = denver();
    record.elev = record.lat = kMissing;
    record.priority = kMissingInt;
    for (const char *word : {"Elev<5000", "Elev>-99999", "Lat<90", "P<9", "RA<0:0:99999"}) {
        SCOPED_TRACE(word);
        const List list(word);
        EXPECT_EQ(CTY_match(list.count, list.words, &record), -1);
    }
}

TEST(CityMatch, DistancesFollowTheSphere)
{
    // A degree of a great circle of radius 6371.3 km is 111.200 km, also across the date line.
    CityRec record = denver();
    record.lat = 0.0F;
    record.lon = 179.5F;
    const struct {
        const char *name, *list;
        int result;
    } cases[] = {
        {"inside", "RA<0:-179.5:111.3", 0},        {"outside", "RA<0:-179.5:111.1", -1},
        {"from the north", "RA<1:179.5:111.3", 0}, {"opposite", "RA<0:-0.5:20000", -1},
        {"the whole half", "RA<0:-0.5:20017", 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const List list(c.list);
        EXPECT_EQ(CTY_match(list.count, list.words, &record), c.result);
    }
}

TEST(CityMatch, SelectorsAreLeftToTheDatabase)
{
    const struct {
        const char *name, *list, *id;
        int result;
    } cases[] = {
        {"empty list", "", "KDEN", 1},
        {"the id", "KORD,KDEN", "KDEN", 1},
        {"another", "KORD", "KDEN", 0},
        {"state", "KORD,st=CO", "KDEN", 1},
        {"state, next part", "ST:CO", "KDEN", 1},
        {"radius", "RA<1:2:3", "KDEN", 1},
        {"priority", "P>2", "KDEN", 1},
        {"number", "WMO<72000", "KDEN", 1},
        {"no key: P and name", "PLTC2", "KDEN", 0},
        {"no key: ST alone", "STL", "KDEN", 0},
        {"key within a word", "X:ST=CO", "KDEN", 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const List list(c.list);
        EXPECT_EQ(CTY_is_selected(list.count, list.words, c.id), c.result);
    }
}
