#include <cmath>
#include <cstring>

#include "support/temp_dir.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/place/city.h"

namespace {

constexpr const char *kStations =
    "Denver               CO US KDEN      0  39.870 -104.670  1640 72565 0\n"
    "Denver/Stapleton     CO US KDNR      *7*  39.770 -104.870  1611 72469\n"
    "Boulder              CO US --        3  40.020 -105.250  9999 99999 12\n"
    "Cheyenne             WY US KCYS      2*  41.150 -104.800  1871 72564 0\n"
    "\n"
    "Buoy_East            -- B_ --        1  42.000 -68.000     0 44005 0\n"
    "Paris                -- FR LFPG      0  49.020    2.530   109 07157 0\n"
    "Cordoba              -- AR --        4 -31.320  -64.220   474 87344 0\n";

struct CityTest : ::testing::Test {
    TempDir folder;
    CityTest()
    {
        for (const char *name : {"city_file", "identifier", "stat_prior"}) {
            RES_put(name, nullptr);
        }
        RES_put("file_path", folder.path().c_str());
        folder.write("sao.cty", kStations);
    }
    /// All of the world.
    static DomainRec world()
    {
        DomainRec domain;
        DOM_init(&domain);
        domain.proj = kProjLatLon;
        domain.clat = 0.0F;
        domain.clon = 0.0F;
        domain.dx = domain.dy = 1.0F;
        domain.nx = 361;
        domain.ny = 181;
        return domain;
    }
    static void read(int mode, int priority = kMissingInt)
    {
        DomainRec domain = world();
        const int handle = CTY_read(nullptr, mode, &domain, priority);
        ASSERT_GT(handle, 0);
        CTY_close_file(handle);
    }
    static bool has(const char *id)
    {
        CityPoint point = {};
        return CTY_get(id, &point) == 1;
    }
};

} // namespace

TEST_F(CityTest, RecordsAreReadFieldByField)
{
    int count = 0;
    const int handle = CTY_open_file(nullptr, &count);
    ASSERT_GT(handle, 0);
    EXPECT_EQ(count, static_cast<int>(std::strlen(kStations) / 59));
    const struct {
        const char *name, *state, *country, *id;
        int fields, priority;
        char first, second;
        float lat, lon, elev;
        int wmo, number;
    } cases[] = {
        {"Denver", "CO", "US", "KDEN", 10, 0, ' ', ' ', 39.87F, -104.67F, 1640, 72565, 0},
        {"Denver/Stapleton", "CO", "US", "KDNR", 9, 7, '*', '*', 39.77F, -104.87F, 1611, 72469, 0},
        {"Boulder", "CO", "US", "--", 10, 3, ' ', ' ', 40.02F, -105.25F, kMissing, 99999, 12},
        {"Cheyenne", "WY", "US", "KCYS", 10, 2, ' ', '*', 41.15F, -104.8F, 1871, 72564, 0},
        {"Buoy_East", "--", "B_", "--", 10, 1, ' ', ' ', 42.0F, -68.0F, 0, 44005, 0},
        {"Paris", "--", "FR", "LFPG", 10, 0, ' ', ' ', 49.02F, 2.53F, 109, 7157, 0},
        {"Cordoba", "--", "AR", "--", 10, 4, ' ', ' ', -31.32F, -64.22F, 474, 87344, 0},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto &c : cases) {
            SCOPED_TRACE(c.name);
            CityRec record;
            EXPECT_EQ(CTY_read_record(handle, &record), c.fields);
            EXPECT_STREQ(record.name, c.name);
            EXPECT_STREQ(record.state, c.state);
            EXPECT_STREQ(record.country, c.country);
            EXPECT_STREQ(record.id, c.id);
            EXPECT_EQ(record.priority, c.priority);
            EXPECT_EQ(record.first_mark, c.first);
            EXPECT_EQ(record.second_mark, c.second);
            EXPECT_FLOAT_EQ(record.lat, c.lat);
            EXPECT_FLOAT_EQ(record.lon, c.lon);
            EXPECT_FLOAT_EQ(record.elev, c.elev);
            EXPECT_EQ(record.wmo, c.wmo);
            EXPECT_EQ(record.number, c.number);
        }
        CityRec record;
        EXPECT_LT(CTY_read_record(handle, &record), 1);
        CTY_rewind(handle);
    }
    CTY_close_file(handle);
    CityRec record;
    EXPECT_LT(CTY_read_record(handle, &record), 1) << "closed";
}

TEST_F(CityTest, EstimateIsExactForEvenLinesAndBounded)
{
    const std::string line = "Denver CO US KDEN 0  39.870 -104.670  1640 72565     0    \n";
    ASSERT_EQ(line.size(), 59U);
    std::string text;
    for (int i = 0; i < 5000; ++i) {
        text += line;
    }
    int count = 0;
    folder.write("even.cty", text.substr(0, 59 * 20));
    CTY_close_file(CTY_open_file("even.cty", &count));
    EXPECT_EQ(count, 20);
    folder.write("even.cty", text);
    CTY_close_file(CTY_open_file("even.cty", &count));
    EXPECT_EQ(count, kMostCityRecords);
}

TEST_F(CityTest, SearchFindsByIdNameOrNumber)
{
    const struct {
        const char *name, *text;
        int found;
        float lat;
    } cases[] = {
        {"id", "KDEN", 1, 39.87F},
        {"other case", "kcys", 1, 41.15F},
        {"name", "PARIS", 1, 49.02F},
        {"number", "07157", 1, 49.02F},
        {"number, short", "7157", 0, kMissing},
        {"part of a name", "Pari", 0, kMissing},
        {"first of two", "Denver", 1, 39.87F},
        {"empty", "", 0, kMissing},
        {"directives", "%s%n%d%s", 0, kMissing},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        float lat = 0.0F;
        float lon = 0.0F;
        EXPECT_EQ(CTY_find_position(c.text, nullptr, &lat, &lon), c.found);
        EXPECT_FLOAT_EQ(lat, c.lat);
    }
    float lat = 0.0F;
    float lon = 0.0F;
    EXPECT_EQ(CTY_find_position(std::string(10000, 'x').c_str(), nullptr, &lat, &lon), 0);
}

TEST_F(CityTest, ResourceCityFileNamesTheFileOrNone)
{
    folder.write("own.cty", "Rome -- IT LIRF 0 41.8 12.25 3 16242 0\n");
    float lat = 0.0F;
    float lon = 0.0F;
    RES_put("city_file", "own.cty");
    EXPECT_EQ(CTY_find_position("Rome", "sao.cty", &lat, &lon), 1);
    RES_put("city_file", "None");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(CTY_open_file(nullptr, nullptr), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    RES_put("city_file", "missing.cty");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(CTY_open_file(nullptr, nullptr), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "CTY_open_file: Database file not found: " + folder.file("missing.cty") + "\n");
    DomainRec domain = world();
    EXPECT_EQ(CTY_read(nullptr, kCityPlaces, &domain, 9), 0);
}

TEST_F(CityTest, TableIsLookedUpByEachKindOfIdentifier)
{
    read(kCityPlaces);
    const struct {
        const char *name, *id;
        int found, wmo;
    } cases[] = {
        {"id", "KDEN", 1, 72565},
        {"number", "72469", 1, 72469},
        {"coded number", "K2564", 1, 72564},
        {"buoy", "b44005", 1, 44005},
        {"buoy by its bare number", "44005", 0, 0},
        {"label of one without id", "87344", 1, 87344},
        {"without id or number", "99999", 0, 0},
        {"ids are exact", "kden", 0, 0},
        {"unknown", "KXXX", 0, 0},
        {"empty", "", 0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CityPoint point = {};
        EXPECT_EQ(CTY_get(c.id, &point), c.found);
        EXPECT_EQ(point.wmo, c.wmo);
    }
    CityPoint paris = {};
    ASSERT_EQ(CTY_get("LFPG", &paris), 1);
    EXPECT_FLOAT_EQ(paris.x, 2.53F);
    EXPECT_FLOAT_EQ(paris.y, 49.02F);
    EXPECT_FLOAT_EQ(paris.elev, 109.0F);
    EXPECT_STREQ(paris.id, "LFPG");
}

TEST_F(CityTest, WholeRecordsComeBackInModeOne)
{
    read(kCityRecords);
    CityRec record;
    ASSERT_EQ(CTY_get("KCYS", &record), 1);
    EXPECT_STREQ(record.name, "Cheyenne");
    EXPECT_EQ(record.second_mark, '*');
    ASSERT_EQ(CTY_get("87344", &record), 1);
    EXPECT_STREQ(record.name, "Cordoba");
}

TEST_F(CityTest, LabelFollowsTheIdentifierType)
{
    const struct {
        const char *name;
        int type;
        const char *paris, *cordoba, *boulder, *buoy;
    } cases[] = {
        {"id", kCityById, "LFPG", "87344", "99999", "b44005"},
        {"WMO", kCityByWmo, "07157", "87344", "--", "b44005"},
        {"coded WMO", kCityByCodedWmo, "LFPG", "SA344", "99999", "b44005"},
        {"unknown", 17, "LFPG", "87344", "99999", "b44005"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CTY_set_id_type(c.type);
        read(kCityPoints);
        const auto label = [](const char *wmo) {
            CityPoint point = {};
            CTY_get(wmo, &point);
            return std::string(point.id);
        };
        EXPECT_EQ(label("07157"), c.paris);
        EXPECT_EQ(label("87344"), c.cordoba);
        EXPECT_EQ(label("b44005"), c.buoy);
    }
    CTY_set_id_type(kCityById);
}

TEST_F(CityTest, PriorityIdentifiersAndDomainChoose)
{
    const struct {
        const char *name;
        const char *stat_prior, *identifier;
        int priority;
        bool denver, stapleton, cheyenne, paris;
    } cases[] = {
        {"all", nullptr, nullptr, kMissingInt, true, true, true, true},
        {"priority 5", "5", nullptr, kMissingInt, true, false, true, true},
        {"priority 10", "10", nullptr, kMissingInt, true, true, true, true},
        {"priority given", "10", nullptr, 1, true, false, false, true},
        {"the word all", nullptr, "ALL", kMissingInt, true, true, true, true},
        {"one station", nullptr, "KDEN", kMissingInt, true, false, false, false},
        {"a state", nullptr, "ST=CO", kMissingInt, true, true, false, false},
        {"state and priority", nullptr, "ST=CO:P<3", kMissingInt, true, false, false, false},
        {"either state", nullptr, "ST=CO,ST=WY", kMissingInt, true, true, true, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("stat_prior", c.stat_prior);
        RES_put("identifier", c.identifier);
        read(kCityPlaces, c.priority);
        EXPECT_EQ(has("KDEN"), c.denver);
        EXPECT_EQ(has("KDNR"), c.stapleton);
        EXPECT_EQ(has("KCYS"), c.cheyenne);
        EXPECT_EQ(has("LFPG"), c.paris);
    }
    RES_put("stat_prior", nullptr);
    RES_put("identifier", nullptr);
    DomainRec europe = world();
    europe.clat = 50.0F;
    europe.clon = 10.0F;
    europe.nx = europe.ny = 21;
    const int handle = CTY_read(nullptr, kCityPlaces, &europe, 9);
    CTY_close_file(handle);
    EXPECT_TRUE(has("LFPG"));
    EXPECT_FALSE(has("KDEN"));
    EXPECT_TRUE(DOM_equal(DOM_get(nullptr), &europe)) << "it is the current domain";
}

TEST_F(CityTest, DamagedFilesGiveWhatTheyHold)
{
    const std::string whole = kStations;
    for (size_t length = 0; length <= whole.size(); ++length) {
        folder.write("sao.cty", whole.substr(0, length));
        read(kCityPlaces);
    }
    const struct {
        const char *name;
        std::string text;
    } cases[] = {
        {"long line", std::string(10000, 'x') + "\nRome -- IT LIRF 0 41.8 12.25 3 16242 0\n"},
        {"long words", std::string(300, 'x') + " yyyy zzzz " + std::string(300, '9') +
                           "\nRome -- IT LIRF 0 41.8 12.25 3 16242 0\n"},
        {"no numbers", "a b c d e f g h\nRome -- IT LIRF 0 41.8 12.25 3 16242 0\n"},
        {"not numbers",
         "Nan -- XX NANN 0 nan inf nan 1 1\nRome -- IT LIRF 0 41.8 12.25 3 16242 0\n"},
        {"NUL bytes", std::string("a\0b\n", 4) + "Rome -- IT LIRF 0 41.8 12.25 3 16242 0\n"},
        {"directives", "%n%s %n %n %n %n %n\nRome -- IT LIRF 0 41.8 12.25 3 16242 0"},
        {"CR LF", "Rome -- IT LIRF 0 41.8 12.25 3 16242 0\r\n\r\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        folder.write("sao.cty", c.text);
        read(kCityPlaces);
        EXPECT_TRUE(has("LIRF"));
        EXPECT_FALSE(has("NANN"));
    }
}

TEST(CityData, InstalledStationsAreWhereTheyAre)
{
    RES_put("city_file", nullptr);
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    // Places of the airports' published reference points.
    const struct {
        const char *id;
        float lat, lon;
    } cases[] = {
        {"KDEN", 39.86F, -104.67F},  {"KORD", 41.98F, -87.90F}, {"EGLL", 51.48F, -0.46F},
        {"LFPG", 49.01F, 2.55F},     {"RJTT", 35.55F, 139.78F}, {"YSSY", -33.95F, 151.18F},
        {"SBGR", -23.43F, -46.47F},  {"FAOR", -26.13F, 28.24F}, {"NZSP", -90.0F, 0.0F},
        {"74533", 40.18F, -104.72F}, // Platteville profiler
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.id);
        float lat = 0.0F;
        float lon = 0.0F;
        ASSERT_EQ(CTY_find_position(c.id, nullptr, &lat, &lon), 1);
        EXPECT_NEAR(lat, c.lat, 0.1);
        EXPECT_NEAR(lon, c.lon, 0.15);
    }
}

TEST(CityData, EveryInstalledLineIsWhole)
{
    RES_put("city_file", nullptr);
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    const int handle = CTY_open_file(nullptr, nullptr);
    ASSERT_GT(handle, 0);
    CityRec record;
    int count = 0;
    int coarsest = 0;
    int last_priority = 0;
    for (int fields; (fields = CTY_read_record(handle, &record)) >= 1; ++count) {
        ASSERT_EQ(fields, 10) << record.name;
        ASSERT_GE(record.priority, last_priority) << record.name;
        ASSERT_LE(std::fabs(record.lat), 90.0F) << record.name;
        ASSERT_LE(std::fabs(record.lon), 180.0F) << record.name;
        last_priority = record.priority;
        const bool in_north_america =
            record.lat > 15.0F && record.lat < 72.0F && record.lon > -168.0F && record.lon < -52.0F;
        coarsest += record.priority == 0 && in_north_america ? 1 : 0;
    }
    CTY_close_file(handle);
    EXPECT_GT(count, 5000);
    EXPECT_GE(coarsest, 40);
    EXPECT_LE(coarsest, 80);
}
