#include <cstdlib>
#include <ctime>

#include "support/capture.h"
#include "support/dates.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"

namespace {

constexpr int kNone = kMissingInt;
constexpr const char *kTemplate = "@%D/%y%m%d%h_prf.dat";

int set_name(std::string type)
{
    return FILE_set_name(type.data());
}

std::string compose(const DateRec &date)
{
    char out[kFileNameRoom] = "(untouched)";
    FILE_compose(&date, out);
    return out;
}

std::string parse(const std::string &input)
{
    char out[kFileNameRoom] = "(untouched)";
    EXPECT_EQ(FILE_parse_name(input.c_str(), out), 0);
    return out;
}

DateRec user(int day, int hour = kNone, int minute = kNone)
{
    return make_date(kNone, kNone, day, hour, minute);
}

/// Names of data below /d; whatever a test changes is put back.
class Names : public testing::Test {
  protected:
    Names() { reset(); }
    ~Names() override { reset(); }
    static void reset()
    {
        RES_put("data_path", "/d");
        RES_put("filename", "");
        TIME_clear_hour();
        FILE_set_key('k', "");
        set_name(kTemplate);
    }
};

TEST_F(Names, ComposeFromADate)
{
    const DateRec none;
    const DateRec d = make_date(1999, 3, 6, 14, 37);
    RES_put("raw_path", "/r r");
    RES_put("other", "/o");
    const struct {
        const char *text;
        DateRec user;
        DateRec date;
        const char *name;
        int step;
    } cases[] = {
        {"%D/%y%m%d%h_prf.dat", none, d, "/d/99030614_prf.dat", 3600},
        {"%y%m%d%6h", none, d, "99030612", 21600},
        {"%y%m%d%h", user(kNone, -6), d, "99030612", 21600},
        {"%y%m%d%h", user(kNone, -306), d, "99030615", 21600},
        {"%y%m%d%h", user(kNone, -300), d, "99030617", 3600},
        {"%h%n", user(kNone, 5), d, "0537", 60},
        {"%6h%n", user(kNone, 5, 7), d, "0007", 60},
        {"%h%15n", none, d, "1430", 900},
        {"%h%n", user(kNone, kNone, -30), d, "1430", 1800},
        {"%Y%b%d", none, d, "1999mar06", 86400},
        {"%Y%j", none, d, "1999065", 86400},
        {"%Y%j", none, make_date(2000, 12, 31), "2000366", 86400},
        {"%10y", none, d, "90", kNone},
        {"%Y%3m", none, make_date(1999, 8, 6), "199906", kNone},
        {"%d", user(9), d, "09", 86400},
        {"%d", user(-5), d, "05", 432000},
        {"%Y%m%d%h%n", none, make_date(1999), "199900000000", 60},
        {"%b%j", none, make_date(1999), "xxx000", 86400},
        {"a b{c}*%%", none, d, "a_bc*%", kNone},
        {"%R/%F|%{other}|%{unset}|", none, d, "/r r/.|/o||", kNone},
        {"%q%2k%k", none, d, "0vava_l", kNone},
        {"x%", none, d, "x", kNone},
        {"x%12", none, d, "x", kNone},
        {"x%{other", none, d, "x/o", kNone},
        {"%99999999999h", none, d, "00", 9999 * 3600},
    };
    FILE_set_key('k', "va l");
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(set_name(std::string("@") + c.text), 1);
        TIME_set_hour(&c.user);
        EXPECT_EQ(compose(c.date), c.name);
        EXPECT_EQ(FILE_get_raw_step(), c.step);
    }
}

TEST_F(Names, ComposingSetsTheFileDate)
{
    set_name("@%10y%m%d%6h");
    compose(make_date(1999, 3, 6, 14, 37));
    DateRec date;
    FILE_get_date(&date); // the century is kept, and the template has no minute
    EXPECT_EQ(fields(date), fields(make_date(1990, 3, 6, 12)));
    set_name("@%Y%j");
    compose(make_date(2000, 3, 1, 14));
    FILE_get_date(&date);
    EXPECT_EQ(fields(date), fields(make_date(2000, 3, 1)));
    EXPECT_EQ(date.yday, 61);
}

TEST_F(Names, WithoutATemplateTheNameStands)
{
    char out[kFileNameRoom];
    EXPECT_EQ(set_name("NONE"), 0);
    const DateRec date = make_date(1999, 3, 6);
    EXPECT_EQ(FILE_compose(&date, out), 1);
    EXPECT_STREQ(out, "filename");
    EXPECT_EQ(parse("any.thing"), "any.thing");
    EXPECT_EQ(FILE_compose(&date, out), 1);
    EXPECT_STREQ(out, "any.thing");
    set_name("@-");
    EXPECT_EQ(FILE_compose(&date, out), 1);
    EXPECT_STREQ(out, "-");
    EXPECT_EQ(parse("x"), "-");
    set_name(kTemplate);
    const DateRec missing;
    FILE_set_last("/d/last");
    EXPECT_EQ(FILE_compose(&missing, out), 1);
    EXPECT_STREQ(out, "/d/last");
}

TEST_F(Names, ParseWhatTheUserTyped)
{
    const DateRec none;
    const struct {
        const char *name, *text, *input, *result;
        DateRec date;
    } cases[] = {
        {"date", "%D/%y%m%d%h_prf.dat", "99030612", "/d/99030612_prf.dat",
         make_date(1999, 3, 6, 12)},
        {"whole name", "%D/%y%m%d%h_prf.dat", "99030612_prf.dat", "/d/99030612_prf.dat",
         make_date(1999, 3, 6, 12)},
        {"other tail", "%D/%y%m%d%h_prf.dat", "99030612.nc", "/d/99030612.nc",
         make_date(1999, 3, 6, 12)},
        {"own directory", "%D/%y%m%d%h_prf.dat", "./99030612_prf.dat", "./99030612_prf.dat",
         make_date(1999, 3, 6, 12)},
        {"absolute name", "%D/%y%m%d%h_prf.dat", "/other/99030612_prf.dat",
         "/other/99030612_prf.dat", none},
        {"no date", "%D/%y%m%d%h_prf.dat", "x.nc", "/d/x.nc", none},
        {"part of a date", "%D/%y%m%d%h_prf.dat", "9903", "/d/9903", make_date(1999, 3)},
        {"half a number", "%D/%y%m%d%h_prf.dat", "9903061", "/d/9903061", make_date(1999, 3, 6)},
        {"exactly", "%D/%y%m%d%h_prf.dat", "@x y", "x y", none},
        {"none", "%D/%y%m%d%h_prf.dat", "None", "None", none},
        {"standard input", "%D/%y%m%d%h_prf.dat", "-", "-", none},
        {"empty", "%D/%y%m%d%h_prf.dat", "", "-", none},
        {"path into a path", "/d/%y.dat", "/other/x", "/other/x", none},
        {"four-digit year and month name", "%Y%b%d.dat", "1999MAR06", "1999MAR06.dat",
         make_date(1999, 3, 6)},
        {"no such month", "%Y%b.dat", "1999foo", "1999foo", make_date(1999)},
        {"day of the year", "%D/%Y%j.dat", "2000061", "/d/2000061.dat", make_date(2000, 3, 1)},
        {"separators supplied", "%D/%Y%m%d_%h00_prf.nc", "20261122_03", "/d/20261122_0300_prf.nc",
         make_date(2026, 11, 22, 3)},
        {"other minute passes", "%D/%Y%m%d_%h00_prf.nc", "20261122_0330", "/d/20261122_0330",
         make_date(2026, 11, 22, 3)},
        {"braces", "%D/{sub/}%y%m.dat", "9903", "/d/sub/9903.dat", make_date(1999, 3)},
        {"star", "%D/%y*", "99rest of it", "/d/99rest of it", make_date(1999)},
        {"key", "%D/%k_%y.dat", "val_99", "/d/val_99.dat", make_date(1999)},
        {"key without a value", "%D/%q_%y.dat", "val_99", "/d/val_99", none},
        {"template that ends in a percent", "%D/%y%", "99", "/d/99", make_date(1999)},
        {"input that is only a dot", "%D/%y.dat", ".", ".", none},
    };
    FILE_set_key('k', "val");
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        set_name(std::string("@") + c.text);
        EXPECT_EQ(parse(c.input), c.result);
        DateRec date;
        FILE_get_date(&date);
        EXPECT_EQ(fields(date), fields(c.date));
    }
}

TEST_F(Names, ParsingReadsAnExtension)
{
    set_name("@%D/%y_%e.dat");
    EXPECT_EQ(parse("99_west.dat"), "/d/99_west.dat");
    EXPECT_EQ(compose(make_date(2001, 3, 6)), "/d/01_west.dat");
}

TEST_F(Names, DateBehindANameGoesToTheUsersHour)
{
    EXPECT_EQ(parse("x.nc#199903061230"), "/d/x.nc");
    DateRec hour;
    TIME_get_hour(&hour);
    EXPECT_EQ(fields(hour), fields(make_date(1999, 3, 6, 12, 30)));
    DateRec date;
    FILE_get_date(&date);
    EXPECT_EQ(date.hour, 12);
}

TEST_F(Names, DirectoryOfTheUserStays)
{
    char out[kFileNameRoom];
    RES_put("filename", "./mine/99030612_prf.dat");
    EXPECT_EQ(FILE_get_name("", out), 0);
    // two levels of the template's own: the date wasn't read, the directory is taken all the same
    EXPECT_EQ(compose(make_date(1999, 3, 6, 13)), "./mine/99030613_prf.dat");
    RES_put("filename", "/99030612_prf.dat");
    FILE_get_name("", out);
    EXPECT_EQ(compose(make_date(1999, 3, 6, 13)), "/99030613_prf.dat");
    RES_put("filename", "99030612");
    FILE_get_name("", out);
    FILE_set_literal(0);
    EXPECT_EQ(compose(make_date(1999, 3, 6, 13)), "/d/99030613_prf.dat");
}

TEST_F(Names, LongNamesAreBounded)
{
    const std::string path(4000, 'p');
    RES_put("data_path", ("/" + path).c_str());
    EXPECT_EQ(compose(make_date(1999, 3, 6, 12)), "/" + path + "/99030612_prf.dat");
    EXPECT_EQ(parse(path), "/" + path + "/" + path.substr(0, kFileNameRoom - 4003));
    set_name("@" + std::string(5000, 'n'));
    const std::string told =
        told_by([] { EXPECT_EQ(compose(make_date(1999, 3, 6, 12)).size(), kFileNameRoom - 1); });
    EXPECT_NE(told.find("too long"), std::string::npos);
}

struct ConventionCase {
    const char *type;
    int found;
    const char *composed;
    const char *written; ///< by the output template
};

TEST_F(Names, ConventionFileIsSearchedFromTheTop)
{
    const TempDir folder;
    folder.write("name_conv", "# comment %y\n"
                              "prf_dat %D/%y.dat - 100\n"
                              "prf %D/%y_%e.prf %C/%y.out\n"
                              "\nsat\n"
                              "bin\x01\xff %y.bin\n"
                              "long " +
                                  std::string(10000, 'x') + "\nafter %m.dat\n");
    RES_put("file_path", folder.path().c_str());
    RES_put("con_path", "/c");
    const std::vector<ConventionCase> cases = {
        {"prf_dat", 1, "/d/99.dat", ""},
        {"PRF_DAT", 1, "/d/99.dat", ""},
        {"prf_dat_west", 1, "/d/99.dat", ""},
        {"prf_west", 1, "/d/99_west.prf", "/c/99.out"},
        {"prf", 1, "/d/99_.prf", "/c/99.out"},
        {"after", 1, "03.dat", ""},
        {"sat", 1, "filename", ""},
        {"x%y", 0, "x99", ""},
    };
    for (const ConventionCase &c : cases) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(set_name(c.type), c.found);
        const DateRec date = make_date(1999, 3, 6);
        EXPECT_EQ(compose(date), c.composed);
        char out[kFileNameRoom] = "";
        if (std::string(c.composed) != "filename") {
            EXPECT_EQ(FILE_out_name(&date, out), *c.written ? 1 : 0);
            EXPECT_STREQ(out, c.written);
        }
    }
    set_name("prf_dat");
    EXPECT_EQ(FILE_get_min_size(), 100);
    FILE_set_min_size(7);
    EXPECT_EQ(FILE_get_min_size(), 7);
    FILE_set_min_size(0);
    RES_put("file_path", "/nonexistent");
    EXPECT_EQ(told_by([] { EXPECT_EQ(set_name("prf_dat"), 0); }),
              "FILE_set_name: No file name convention file: /nonexistent/name_conv\n");
}

TEST_F(Names, InstalledConventionsGiveHourlyProfilerFiles)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    const std::vector<ConventionCase> cases = {
        {"prf_dat", 3600, "/d/20261122_0300_prf.nc", ""},
        {"prf_bufr", 3600, "/d/20261122_0300_prf.bufr", ""},
        {"prf_bufr_6min", 360, "/d/20261122_0312_prf.bufr", ""},
        {"prf_6min", 360, "/d/20261122_0312_prf.nc", ""},
        {"prf_yday", 3600, "/d/26326_0300_npn_hourly.nc", ""},
        {"prf_day", 3600, "/d/2026-11-22_0300_npn_hourly.nc", ""},
        {"prf_plain", 3600, "/d/20261122_0300", ""},
    };
    for (const ConventionCase &c : cases) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(set_name(c.type), 1);
        EXPECT_EQ(compose(make_date(2026, 11, 22, 3, 17)), c.composed);
        EXPECT_EQ(FILE_get_step(), c.found);
    }
}

TEST_F(Names, KeysComeWithTheType)
{
    RES_put("file_path", "/nonexistent");
    std::string type = "name_%r_%i:r=us east:i=01:x=";
    told_by([&] { EXPECT_EQ(FILE_set_name(type.data()), 0); });
    EXPECT_STREQ(type.c_str(), "name_%r_%i");
    EXPECT_EQ(compose(make_date(1999, 3, 6)), "name_us_east_01");
    char value[kFileKeyRoom];
    FILE_set_key('r', std::string(100, 'k').c_str());
    FILE_get_key('r', value);
    EXPECT_EQ(std::string(value), std::string(29, 'k'));
    FILE_set_key('r', nullptr);
    FILE_set_key('i', "");
}

TEST_F(Names, SavedStateComesBack)
{
    set_name("@%6h_a");
    compose(make_date(1999, 3, 6, 13));
    FILE_save();
    set_name("@%n_b");
    compose(make_date(1999, 3, 6, 13, 5));
    FILE_restore();
    char out[kFileNameRoom];
    FILE_get_last(out);
    EXPECT_STREQ(out, "12_a");
    EXPECT_EQ(FILE_get_step(), 21600);
    EXPECT_EQ(compose(make_date(1999, 3, 6, 19)), "18_a");
    set_name("@fixed");
    compose(make_date(1999, 3, 6, 19));
    EXPECT_EQ(FILE_get_raw_step(), kNone);
    EXPECT_EQ(FILE_get_step(), 100000);
}

TEST_F(Names, ListShowsTheFilesThatFit)
{
    const TempDir folder;
    for (const char *name : {"99030612_prf.dat", "99030613_prf.dat", "9903061x_prf.dat", "other"}) {
        folder.write(name, "");
    }
    RES_put("data_path", folder.path().c_str());
    const std::string list = shown_by(FILE_list);
    EXPECT_NE(list.find("99030612_prf.dat"), std::string::npos);
    EXPECT_NE(list.find("99030613_prf.dat"), std::string::npos);
    EXPECT_EQ(list.find("other"), std::string::npos);
}

TEST_F(Names, ListRunsNothingThatANameHolds)
{
    const TempDir folder;
    const std::string mark = folder.file("mark");
    const std::string evil = folder.path() + "/a b;touch " + mark + ";$(touch " + mark +
                             ")`touch " + mark + "`'\"&|<>\n~*?";
    RES_put("data_path", evil.c_str());
    FILE_set_key('k', "$(touch mark)");
    for (const std::string text : {"@%D/%y%k", "@$(touch mark);touch mark|%y", "@-la %y"}) {
        set_name(text);
        told_by([] { shown_by(FILE_list); });
        EXPECT_NE(FILE_exists(mark.c_str()), 1) << text;
        EXPECT_NE(FILE_exists("mark"), 1) << text;
    }
    const std::string odd = "it's a dir";
    folder.write(odd + "/99.dat", "");
    RES_put("data_path", (folder.path() + "/" + odd).c_str());
    set_name("@%D/%y.dat");
    EXPECT_NE(shown_by(FILE_list).find("99.dat"), std::string::npos);
}

} // namespace
