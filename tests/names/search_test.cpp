#include <cstdlib>

#include "support/capture.h"
#include "support/dates.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/names/decode_window.h"
#include "tyr/names/search.h"
#include "tyr/names/sequence.h"

namespace {

constexpr int kNone = kMissingInt;

int set_name(std::string type)
{
    return FILE_set_name(type.data());
}

DateRec user_hour(int month, int day, int hour, int minute)
{
    return make_date(kNone, month, day, hour, minute);
}

/// Now is 1999-03-06 12:30; of the hourly files those of 9, 7 and 3 UTC are there, 9 is empty.
/// The half hour stays in the time through a search: 7 UTC is found at 7:30.
class Current : public testing::Test {
  protected:
    Current()
    {
        for (const char *hour : {"07", "03"}) {
            folder.write("990306" + std::string(hour), "data");
        }
        folder.write("99030609", "");
        RES_put("data_path", folder.path().c_str());
        setenv("tyrcurtime", "199903061230", 1);
        set_name("@%D/%y%m%d%h");
    }
    ~Current() override
    {
        unsetenv("tyrcurtime");
        TIME_clear_hour();
    }
    std::string current(const char *spec)
    {
        char out[kFileNameRoom];
        time = FILE_current(spec, out);
        return std::string(out).substr(folder.path().size() + 1);
    }
    TempDir folder;
    long time = 0;
};

TEST_F(Current, WordsFindTheirFile)
{
    const DateRec none;
    const DateRec six_before = user_hour(kNone, kNone, -6, kNone);
    // clang-format off
    const struct {
        const char *name;
        DateRec user;
        std::vector<const char *> specs; ///< null for none
    } cases[] = {
        {"99030612", none, {"", "cu", "#", "junk"}},
        {"99030607", none, {nullptr, "la", "LA", "Cula", "latest", "la#6", "#1999030608la"}},
        {"99030606", none, {"-6", "6"}},
        {"99030618", none, {"+6"}},
        {"99030611", none, {"-0:31"}},
        {"99030512", none, {"-1d"}},
        {"99030510", none, {"-1d2"}},
        {"99030601", none, {"la-6"}},
        {"99030709", none, {"la+1d1:30"}},
        {"99030603", none, {"-6la", "-9+la", "-10+la", "#199903060430-1"}},
        {"99030610", none, {"la#3"}},
        {"99030604", none, {"#1999030604"}},
        {"99010100", none, {"#1999"}},
        {"99030610", user_hour(kNone, kNone, 10, kNone), {""}},
        {"99030514", user_hour(kNone, kNone, 14, kNone), {""}},
        {"99030611", user_hour(kNone, kNone, kNone, 45), {""}},
        {"99030512", user_hour(kNone, 5, kNone, kNone),  {""}},
        {"99020712", user_hour(kNone, 7, kNone, kNone),  {""}},
        {"98040612", user_hour(4, kNone, kNone, kNone),  {""}},
        {"99030612", six_before,                         {""}},
        {"99030606", six_before,                         {"-1"}},
    };
    // clang-format on
    for (const auto &c : cases) {
        TIME_set_hour(&c.user);
        for (const char *spec : c.specs) {
            EXPECT_EQ(current(spec), c.name) << (spec ? spec : "(null)");
        }
    }
    current("la"); // with hours ahead any file will do, as long as the search ends
    TIME_set_hour(&none);
    current("-99999999999999999999d");
}

TEST_F(Current, TimeIsRoundedToTheStep)
{
    current("la");
    EXPECT_EQ(time, 920703600); // date -u -d '1999-03-06 07:00' +%s
    set_name("@%D/%y%m%d%6h");
    EXPECT_EQ(current("-1"), "99030606");
    EXPECT_EQ(time, 920700000);
}

TEST_F(Current, SmallFilesDoNotCount)
{
    folder.write("name_conv", "big %D/%y%m%d%h - 4\nsmall %D/%y%m%d%h - 0\n");
    RES_put("file_path", folder.path().c_str());
    set_name("small");
    EXPECT_EQ(current("la"), "99030607");
    set_name("big");
    EXPECT_EQ(current("la#8"), "99030605") << "runs out of tries";
    folder.write("99030602", "more data");
    EXPECT_EQ(current("la"), "99030602");
}

TEST_F(Current, TemplateWithoutADateEndsTheSearchAtOnce)
{
    set_name("@%D/fixed");
    EXPECT_EQ(current("la#100000"), "fixed");
    set_name("none");
    char out[kFileNameRoom];
    FILE_current("la", out);
    EXPECT_STREQ(out, "filename");
}

TEST_F(Current, ParsedNamesServeTheSameWords)
{
    const struct {
        const char *text, *name;
    } cases[] = {
        {"cu-6", "99030606"},
        {"la", "99030607"},
        {"la#1", "99030612"},
        {"#1999030604", "99030604"},
    };
    char out[kFileNameRoom];
    for (const auto &c : cases) {
        FILE_parse_name(c.text, out);
        EXPECT_EQ(std::string(out), folder.file(c.name)) << c.text;
    }
    EXPECT_EXIT(FILE_parse_name("Exit", out), testing::ExitedWithCode(0), "");
}

TEST_F(Current, FirstFileIsAskedFor)
{
    const struct {
        const char *name, *answers;
        const char *file; ///< null where the run ends
        int code;
    } cases[] = {
        {"a name", "99030607\n", "99030607", 0},
        {"second try", "x\n99030603\n", "99030603", 0},
        {"latest", "la\n", "99030607", 0},
        {"current", "cu-5:00\n", "99030607", 0},
        {"with a date", "#1999030603\n", "99030603", 0},
        {"set comes first", "set x=1\n99030603\n", "99030603", 0},
        {"list is no try", "list\nlist\nlist\nlist\nlist\n99030603\n", "99030603", 0},
        {"four tries", "a\nb\nc\nd\n99030603\n", nullptr, 10},
        {"exit", "EXIT\n", nullptr, 0},
        {"end of input", "a\n", nullptr, 0},
        {"no input", "", nullptr, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const auto ask = [&] {
            type_in(c.answers);
            char out[kFileNameRoom];
            const int found = FILE_get_name("Which? ", out);
            const bool good = found == 1 && c.file && out == folder.file(c.file);
            std::exit(good ? 77 : 78);
        };
        EXPECT_EXIT(ask(), testing::ExitedWithCode(c.file ? 77 : c.code), "");
    }
}

// A resource stays once it is set: this test is the last of these.
TEST_F(Current, FirstFileComesFromTheResources)
{
    char out[kFileNameRoom];
    RES_put("filename", "99030603");
    EXPECT_EQ(FILE_get_name("", out), 1);
    EXPECT_EQ(std::string(out), folder.file("99030603"));
    RES_put("filename", "99030604");
    EXPECT_EQ(FILE_get_name("", out), 0);
    RES_put("filename", "LIST");
    EXPECT_EXIT(FILE_get_name("", out), testing::ExitedWithCode(0), "");
    RES_put("filename", "");
    RES_put("current", "la-4");
    EXPECT_EQ(FILE_get_name("", out), 1);
    EXPECT_EQ(std::string(out), folder.file("99030603"));
    DateRec date;
    FILE_get_date(&date);
    EXPECT_EQ(date.hour, 3);
    RES_put("current", "-2");
    EXPECT_EXIT(FILE_get_name("", out), testing::ExitedWithCode(10),
                "File not found: .*/99030610\n");
}

TEST(Sequence, WalksItsHours)
{
    RES_put("data_path", "/d");
    TIME_clear_hour();
    FILE_set_default_hours(0);
    const struct {
        const char *name;
        const char *num_hour; ///< null for the default
        const char *filename, *text;
        std::vector<std::string> files;
    } cases[] = {
        {"back", "-3", "", "@%d%h", {"0609", "0610", "0611", "0612"}},
        {"forward", "2", "", "@%d%h", {"0612", "0613", "0614"}},
        {"two-hour step", "-5,2", "", "@%d%h", {"0606", "0608", "0610", "0612"}},
        {"minutes", "-0:30", "", "@%h%15n", {"1130", "1145", "1200"}},
        {"only minutes", ":30", "", "@%h%15n", {"1200", "1215", "1230"}},
        {"minute step", "-1,:30", "", "@%h%15n", {"1100", "1130", "1200"}},
        {"step below the files' own", "-2,:10", "", "@%d%h", {"0610", "0611", "0612"}},
        {"over midnight", "-14,7", "", "@%d%h", {"0522", "0605", "0612"}},
        {"a list", "-3", "a\nb", "@%d%h", {"a", "b"}},
        {"a list of one with a range", "-1", "0612", "@%d%h", {"0611", "0612"}},
        {"a list of one without", "0", "0612", "@%d%h", {"0612"}},
        {"a current word is no list", "-1", "cu", "@%d%h", {"0611", "0612"}},
        {"nothing asked for", "0", "", "@%d%h", {"0612"}},
        {"nonsense", "x", "", "@%d%h", {"0612"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        set_name(c.text);
        RES_set(1, "filename", c.filename, kResList);
        RES_put("num_hour", c.num_hour);
        const DateRec base = make_date(1999, 3, 6, 12, 0);
        char out[kFileNameRoom];
        FILE_compose(&base, out);
        FILE_seq_init(&base);
        std::vector<std::string> files;
        while (FILE_next(out) && files.size() < 100) {
            files.emplace_back(out);
        }
        EXPECT_EQ(files, c.files);
    }
    RES_put("filename", "");
}

TEST(Sequence, DayOfThreeHourSteps)
{
    RES_put("num_hour", "-24,3");
    RES_put("filename", "");
    set_name("@%D/%y%m%d%h");
    const DateRec base = make_date(1999, 3, 6, 12);
    char out[kFileNameRoom];
    FILE_compose(&base, out);
    FILE_seq_init(&base);
    EXPECT_EQ(FILE_seq_offset(), -86400);
    int count = 0;
    while (FILE_next(out)) {
        ++count;
    }
    EXPECT_EQ(count, 9);
    FILE_seq_set_offset(0);
    EXPECT_EQ(FILE_next(out), 1);
    EXPECT_EQ(FILE_name_at(&base, -21600, out), -2);
}

TEST(Sequence, ReadsSpans)
{
    set_name("@%d%h");
    const DateRec date = make_date(1999);
    char out[kFileNameRoom];
    FILE_compose(&date, out);
    const struct {
        const char *value;
        int range, step;
    } cases[] = {
        {"-12", -43200, 3600},
        {"-12,3", -43200, 10800},
        {"-1:30", -5400, 3600},
        {"-0:30,0:15", -1800, 900},
        {"1:30,1:30", 5400, 5400},
        {",2", 0, 7200},
        {"", 0, 3600},
        {"999999999", 900000000, 3600},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        RES_put("num_hour", c.value);
        EXPECT_EQ(FILE_num_hours(), c.range);
        EXPECT_EQ(FILE_num_step(), c.step);
    }
}

TEST(DecodeWindow, SelectsReports)
{
    const DateRec date = make_date(1999, 3, 6, 14, 37);
    TIME_clear_hour();
    const struct {
        const char *decode_hour;
        int hour, minute;
        int inside, outside; ///< report times
    } cases[] = {
        {"12", 12, 0, 1150, 1140},         {"12:00-30+30", 12, 0, 1130, 1231},
        {"12-5+5", 12, 0, 1155, 1206},     {"0-10+10", 0, 0, 2355, 2345},
        {"23:55-5+20", 23, 55, 10, 20},    {":-60+0", 14, 37, 1340, 1336},
        {"cu:cu-5+5", 14, 37, 1442, 1443}, {"cu-2-10+10", 12, 37, 1230, 1225},
        {"cu:30-5+5", 14, 30, 1425, 1424}, {"-6", 12, 0, 1150, 1211},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.decode_hour);
        RES_put("decode_hour", c.decode_hour);
        shown_by([&] { TIME_set_decode(&date); });
        DateRec decode;
        TIME_get_decode(&decode);
        EXPECT_EQ(decode.hour, c.hour);
        EXPECT_EQ(decode.minute, c.minute);
        EXPECT_EQ(TIME_in_window(c.inside), 1);
        EXPECT_EQ(TIME_in_window(c.outside), 0);
    }
}

} // namespace
