#include <cstdio>

#include "support/capture.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/label.h"
#include "tyr/var/match.h"
#include "tyr/var/sources.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"
#include "tyr/var/variable.h"

namespace {

constexpr int M = kMissingInt;

class CatalogueTest : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        RES_put("file_path", folder_.path().c_str());
        set_mode("");
    }

    static void set_mode(const char *word)
    {
        RES_put("plot_param", word);
        VAR_label_options();
    }

    void load(const std::string &lines)
    {
        folder_.write("variable.lup", lines);
        ASSERT_EQ(VAR_read_varfile(), 1);
    }

    void open(const std::string &lines)
    {
        folder_.write("test.var", lines);
        ASSERT_EQ(VAR_open_file("test.var"), 1);
    }

    TempDir folder_;
};
using VarFileTest = CatalogueTest;
using LabelTest = CatalogueTest;

std::string str(int number, const char *units = "")
{
    char out[kVarTextSize];
    return VAR_str(out, number, units);
}

/// Value and text that the menu answers.
std::string menu()
{
    char answer[80];
    const int value = VAR_menu("Title", "Enter: ", answer, 3);
    return std::to_string(value) + " " + answer;
}

std::string datatype(int time, int kind, int value)
{
    char out[kDatatypeSize];
    return VAR_make_datatype(time, kind, value, out);
}

} // namespace

TEST_F(CatalogueTest, LinesGiveNumbersAbbreviationAndDescription)
{
    load("# a comment here\n"
         "11,1,2,3,4 temp Temperature \r\n"
         "lonely\n"
         "\n"
         "205 wbrb\n"
         "12,5 averylongabbreviation " +
         std::string(200, 'd') + "\n");
    ASSERT_EQ(VAR_catalogue().size(), 3U);
    const CatalogueEntry &first = VAR_catalogue()[0];
    EXPECT_EQ(first.numbers, (std::array<int, 5>{11, 1, 2, 3, 4}));
    EXPECT_EQ(first.description, "Temperature");
    EXPECT_EQ(VAR_catalogue()[1].numbers, (std::array<int, 5>{205, M, M, M, M}));
    EXPECT_EQ(VAR_catalogue()[2].abbreviation, "averylong");
    EXPECT_EQ(VAR_catalogue()[2].description.size(), 49U);
    EXPECT_EQ(VAR_find_abbr("+TEMP"), &VAR_catalogue()[0]);
    EXPECT_EQ(VAR_find_abbr("none"), nullptr);
    EXPECT_EQ(VAR_find_number(M), nullptr);
}

TEST_F(CatalogueTest, TextsOfNumbers)
{
    load("11 temp Temperature\n205 wbrb Wind barbs\n");
    EXPECT_EQ(str(11), "Temperature");
    EXPECT_EQ(str(11, "C"), "Temperature (C)");
    EXPECT_EQ(str(1205), "Wind barbs");
    EXPECT_EQ(str(19000011), "Temperature");
    EXPECT_EQ(str(77, "K"), "v77 (K)");
    EXPECT_EQ(str(M), "v0");
    set_mode("labsimp");
    EXPECT_EQ(str(11, "C"), "temp (C)");
    char out[kVarNameTextSize];
    EXPECT_STREQ(VAR_abbr(out, 205), "wbrb");
    EXPECT_STREQ(VAR_abbr(out, 1205), "");
}

TEST_F(CatalogueTest, MissingAndOverlongCatalogues)
{
    const std::string told = told_by([] {
        EXPECT_EQ(VAR_read_varfile(), 0);
        EXPECT_EQ(str(11), "v11"); // no second message
    });
    EXPECT_EQ(told,
              "VAR_read_varfile: Unable to open file: " + folder_.file("variable.lup") + "\n");
    std::string lines;
    for (int i = 1; i <= 760; ++i)
        lines += std::to_string(i) + " v" + std::to_string(i) + " text\n";
    EXPECT_NE(told_by([&] { load(lines); }).find("More than 750 entries"), std::string::npos);
    EXPECT_EQ(VAR_catalogue().size(), 750U);
}

TEST_F(CatalogueTest, SourcesAndModels)
{
    char out[kModelTextSize];
    EXPECT_EQ(told_by([&] { EXPECT_EQ(VAR_source(out, 7), nullptr); }),
              "VAR_source: Unable to open file: " + folder_.file("source.lup") + "\n");
    EXPECT_EQ(told_by([&] { EXPECT_STREQ(VAR_model(out, 7), ""); }),
              "VAR_model: Unable to open file: " + folder_.file("mod_name.lup") + "\n");
    folder_.write("source.lup",
                  "oddity\n7 Washington, " + std::string(100, 'x') + "\n98 Reading\n");
    EXPECT_STREQ(VAR_source(out, 98), "Reading");
    EXPECT_EQ(std::string(VAR_source(out, 7)).size(), 40U);
    EXPECT_STREQ(VAR_source(out, 5), "");
    folder_.write("mod_name.lup", "# 7:81 no\n7:81 Global\n98:81 Other\n96 Any\n");
    EXPECT_STREQ(VAR_model(out, 7081), "Global");
    EXPECT_STREQ(VAR_model(out, 98081), "Other");
    EXPECT_STREQ(VAR_model(out, 7096), "Any");
    EXPECT_STREQ(VAR_model(out, 96), "Any");
    EXPECT_STREQ(VAR_model(out, 5081), "");
    EXPECT_STREQ(VAR_model(out, 7081), "Global");
}

TEST(Match, Patterns)
{
    // a pattern, a blank, a text
    const auto match = [](const std::string &words) {
        const size_t blank = words.find(' ');
        return VAR_match(words.substr(0, blank).c_str(), words.substr(blank + 1).c_str());
    };
    for (const char *fits : {"a|b b", "~a b", "1* 12", "1* 1", "*x abcx", "a*c* abcd", "a?c abc",
                             "a.c abc", "[0-9]h 5h", "[xa-c] b", "[ab-] -", "[a|b]c |c", "~ x",
                             "[abc b", "*[0-9] ab7", "*|x y", "~a|a a", "** xyz"}) {
        EXPECT_EQ(match(fits), 1) << fits;
    }
    for (const char *unfit : {"a|b c", "~a a", "1* 2", "*x abxc", "a.c abbc", "[0-9]h xh", "ab a",
                              "a ab", " a", "a ", "a| b", "A a", "[] x"}) {
        EXPECT_EQ(match(unfit), 0) << unfit;
    }
    EXPECT_EQ(VAR_match(nullptr, "a"), 0);
}

TEST_F(VarFileTest, EntriesConditionsAndLookUp)
{
    open("hidden Hidden_one 0 temp:K\n"
         "# comment line here\n"
         "\n"
         "wspd Wind_speed 1 wspd: knt : value\r\n"
         "two Two_lines mo=eta&ft=12,1 a,\\\n"
         "  b :m/s\n"
         "cond Cond mo=gfs c\n"
         "short line\n");
    VarFileEntry entry;
    ASSERT_TRUE(VAR_file_rewind());
    std::string seen;
    while (VAR_file_next(&entry))
        seen += entry.abbreviation + "/" + entry.title + "/" + entry.definition + " ";
    EXPECT_EQ(seen, "hidden/Hidden one/temp:K wspd/Wind speed/wspd:knt:value two/Two lines/a,b:m/s "
                    "cond/Cond/c ");
    char definition[kMaxVarDefinition];
    EXPECT_EQ(VAR_lookup("two", definition), 1);
    EXPECT_STREQ(definition, "a,b:m/s");
    EXPECT_EQ(VAR_lookup("hidden", definition), 1);
    EXPECT_EQ(VAR_lookup("TWO", definition), 0);
    EXPECT_EQ(VAR_lookup("", definition), 0);
    VAR_close_file();
    EXPECT_EQ(VAR_lookup("two", definition), 0);
    EXPECT_EQ(VAR_read_menu(), 0);
}

TEST_F(VarFileTest, Conditions)
{
    const struct {
        int bare, with_texts; // model eta, level 500, time 12
        std::vector<const char *> conditions;
    } cases[] = {
        {1, 1, {"1"}},
        {0, 1, {"mo=eta", "mo=e*&le=500", "mo=gfs,ft=1?", "le=~700"}},
        {0, 0, {"0", "2", "", "mo=", "mo=gfs", "mo=eta&le=700"}},
    };
    for (const auto &c : cases) {
        for (const char *condition : c.conditions) {
            SCOPED_TRACE(condition);
            VAR_set_condition_texts(nullptr, nullptr, nullptr);
            EXPECT_EQ(VAR_condition(condition), c.bare);
            VAR_set_condition_texts("eta", "500", "12");
            EXPECT_EQ(VAR_condition(condition), c.with_texts);
        }
    }
    VAR_set_condition_texts(nullptr, nullptr, nullptr);
}

TEST_F(VarFileTest, OverlongDefinitionsAreRefused)
{
    open("big Big 1 " + std::string(600, 'x') + "\nlong Long 1 a\\\n" + std::string(700, 'b') +
         "\nok Ok 1 fine\n");
    char definition[kMaxVarDefinition] = "untouched";
    const std::string told = told_by([&] {
        EXPECT_EQ(VAR_lookup("big", definition), 0);
        EXPECT_EQ(VAR_lookup("long", definition), 0);
    });
    EXPECT_EQ(told, "VAR_lookup: Definition of big is longer than 511 characters\n"
                    "VAR_lookup: Definition of long is longer than 511 characters\n");
    EXPECT_STREQ(definition, "untouched");
    EXPECT_EQ(VAR_lookup("ok", definition), 1);
}

TEST_F(VarFileTest, BatchTakesTheFirstEntryShown)
{
    PRM_set(kPrmBatch, 1);
    open("hidden Hidden 0 x\nwbrb Barbs 1 wbrb\nwspd Speed 1 wspd\n");
    EXPECT_EQ(VAR_read_menu(), 1);
    EXPECT_EQ(menu(), "1 wbrb");
    open("hidden Hidden 0 x\n");
    VAR_read_menu();
    EXPECT_EQ(menu(), "1 def");
}

TEST_F(VarFileTest, TheMenuIsAnsweredByNumberWordListOrFreeText)
{
    open("wbrb Wind_barbs 1 wbrb\nhidden Hidden 0 x\nwspd Speed 1 wspd\n");
    VAR_read_menu();
    type_in("list\n2\nwbrb\n0\n12:500:wbrb\n");
    const std::string text = shown_by([&] {
        EXPECT_EQ(menu(), "2 wspd");
        EXPECT_EQ(menu(), "1 wbrb");
        EXPECT_EQ(menu(), "0 0");
        EXPECT_EQ(menu(), "-9999 12:500:wbrb");
    });
    EXPECT_NE(text.find("hidden   Hidden"), std::string::npos); // the list has all
    EXPECT_EQ(text.find("2: Hidden"), std::string::npos);       // the menu hasn't
    EXPECT_NE(text.find("0: Return to previous menu"), std::string::npos);
}

TEST_F(VarFileTest, TheMenuHasRoomForFortyNine)
{
    std::string lines;
    for (int i = 1; i <= 60; ++i)
        lines += "v" + std::to_string(i) + " T 1 x\n";
    open(lines);
    VAR_read_menu();
    type_in("v49\nv50\n");
    shown_by([&] {
        EXPECT_EQ(menu(), "49 v49");
        EXPECT_EQ(menu(), "-9999 v50");
    });
}

TEST_F(VarFileTest, ListPrintsTheEntries)
{
    open("wbrb Wind_barbs 1 wbrb\\\n  :knt\nhidden Hidden 0 x\n");
    EXPECT_EQ(shown_by([] { EXPECT_EQ(VAR_print_list(), -1); }),
              " Abbr    Description\n"
              "wbrb     Wind barbs                                        \n"
              "hidden   Hidden                                            \n");
}

TEST_F(VarFileTest, FileIsNamedAfterTheProgram)
{
    RES_set_program("/usr/bin/myprog");
    folder_.write("myprog.var", "own Own 1 own\n");
    EXPECT_EQ(VAR_open_file(nullptr), 1);
    char definition[kMaxVarDefinition];
    EXPECT_EQ(VAR_lookup("own", definition), 1);
}

TEST_F(LabelTest, LevelTexts)
{
    const struct {
        int kind, value;
        const char *text;
    } cases[] = {{0, 0, ""},
                 {9, 0, ""},
                 {M, M, ""},
                 {1, 0, "Surface"},
                 {1, 3, "Surface[3]"},
                 {1, 2003, "Surface[3]"},
                 {2, 0, "Cloud base"},
                 {7, 0, "Tropopause"},
                 {100, 500, "500 mb"},
                 {101, 70085, "850-700 mb"},
                 {101, 50190, "sfc-500 mb"},
                 {101, 50200, "sfc-500 mb"},
                 {101, 30195, "trop-300 mb"},
                 {101, 50201, "sfc[10]-500 mb"},
                 {101, 510, "1000-500 mb"},
                 {101, 508, "850-500 mb"},
                 {101, 599, "SFC-500 mb"},
                 {101, 600, ""},
                 {102, 0, "Sea level"},
                 {103, 1500, "1500 m"},
                 {104, 20010, "1000-2000m"},
                 {104, 20995, "trop+2000 m"},
                 {105, 250, "250 m AG"},
                 {106, 30000, "0-3000 m AG"},
                 {107, 9950, "0.99 sigma"},
                 {108, 50090, "0.90-0.50 sigma"},
                 {109, 12, "12 lev"},
                 {111, 10, "10 cm BG"},
                 {112, 200010, "10-200 cm BG"},
                 {113, 315, "315 K"},
                 {114, 310300, "300-310 K"},
                 {115, 30, "30 mb AG"},
                 {116, 30000, "0-30 mb AG"},
                 {117, 2, "2*10^-6 Km2/kgs"},
                 {119, 5000, "0.50 Eta"},
                 {120, 50090, "0.90-0.50 Eta"},
                 {200, 0, "Whole atms"},
                 {215, 0, "Cld ceiling"},
                 {248, 0, "Shal Conv cld bot lvl"},
                 {254, 0, "Supercool liq wat top"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(datatype(0, c.kind, c.value), c.text);
    }
    EXPECT_EQ(told_by([] { EXPECT_EQ(datatype(0, 150, 0), ""); }),
              "VAR_make_datatype: no ltype: 150\n");
}

TEST_F(LabelTest, TimeTexts)
{
    const struct {
        int time;
        const char *text;
    } cases[] = {{12, ""},
                 {M, ""},
                 {3006012, "6 hour avg 500 mb"},
                 {4000024, "24 hour acc 500 mb"},
                 {13000024, "24 hour iavg 500 mb"},
                 {18000006, "6 hour var 500 mb"},
                 {23000024, "24 hour uavg 500 mb"},
                 {13000805, "805 day iavg 500 mb"},
                 {13000901, "901 month iavg 500 mb"},
                 {9000024, "24 hour 500 mb"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.time);
        EXPECT_EQ(datatype(c.time, 100, 500), *c.text == '\0' ? "500 mb" : c.text);
    }
}

TEST_F(LabelTest, LabelModes)
{
    load("11 temp Temperature\n");
    const struct {
        const char *mode, *label;
    } cases[] = {{"labmin", "temp (C)"},
                 {"labsimple", "500 mb temp (C)"},
                 {"labnorm", "500 mb Temperature (C)"},
                 {"nolab", "500 mb Temperature (C)"},
                 {"lower,LABCOMP", "500 mb Temperature (C) - co=red:hi=2"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.mode);
        set_mode(c.mode);
        VAR_reset();
        VAR_set_count(1);
        VarRec &record = *VAR_get(0);
        record.time = 0;
        record.level_kind = 100;
        record.level_value = 500;
        record.var_number = 11;
        std::snprintf(record.units, sizeof record.units, "C");
        std::snprintf(record.format, sizeof record.format, "co=red:hi=2");
        char out[kVarLabelSize];
        EXPECT_STREQ(VAR_make_label(0, out), c.label);
        EXPECT_STREQ(VAR_make_label(1, out), "");
        EXPECT_STREQ(VAR_make_label(-1, out), "");
    }
}
