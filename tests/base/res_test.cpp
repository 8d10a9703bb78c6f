#include <cstdlib>

#include "support/capture.h"
#include "support/dates.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/start/convert.h"

namespace {

TEST(Res, KeepsPlaceAndTellsNoneFromEmpty)
{
    EXPECT_EQ(RES_get("res_a"), nullptr);
    RES_set(3, "res_a", "1", kResInt);
    RES_set(4, "res_b", nullptr, kResFlag);
    RES_put("res_a", "2");
    EXPECT_STREQ(RES_get("res_a"), "2");
    EXPECT_STREQ(RES_get("res_b"), "");
    EXPECT_EQ(RES_get("RES_A"), nullptr) << "names are exact";
    RES_put("res_a", RES_get("res_a"));
    EXPECT_STREQ(RES_get("res_a"), "2") << "a value may be stored over itself";
    MSG_set_mask(10, 0xFFFFF);
    const std::string all = shown_by(RES_print_all);
    EXPECT_NE(all.find("res_a: 2\nres_b:\n"), std::string::npos) << all;
}

TEST(Res, ListsSplitByTheirType)
{
    RES_put("res_list", "a b,c");
    EXPECT_EQ(RES_list("res_list"), (std::vector<std::string>{"a b", "c"}));
    RES_append(5, "res_words", "a,b", kResList);
    RES_append(9, "res_words", "c", kResText);
    EXPECT_EQ(RES_list("res_words"), (std::vector<std::string>{"a,b", "c"}));
    int count = 5;
    char **array = nullptr;
    EXPECT_EQ(RES_get_list("res_words", &count, &array), 2);
    EXPECT_STREQ(array[1], "c");
    STR_free_list(count, array);
    EXPECT_EQ(RES_get_list("res_absent", &count, &array), 0);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(array, nullptr);
}

TEST(Res, ProgramNameIsTheBaseName)
{
    char name[kProgramNameRoom];
    RES_set_program("/usr/local/bin/prf");
    EXPECT_STREQ(RES_program_name(name), "prf");
    RES_set_program(std::string(4000, 'p').c_str());
    EXPECT_EQ(std::string(RES_program_name(name)), std::string(31, 'p'));
    char *copy = RES_program_name(nullptr);
    EXPECT_STREQ(copy, name);
    std::free(copy);
}

TEST(Convert, ReadsNumbersAndFlags)
{
    const struct {
        int type;
        const char *value;
        int result; ///< from 77 before
        int returned;
    } cases[] = {
        {kResFlag, nullptr, 1, 1},  {kResFlag, "Yes", 1, 1},
        {kResFlag, "OFF", 0, 1},    {kResFlag, "maybe", 77, 1},
        {kResInt, "-12", -12, 1},   {kResInt, "+5", 5, 1},
        {kResInt, "0xff", 255, 1},  {kResInt, "0XFFFFFFFF", -1, 1},
        {kResInt, "x", 77, 1},      {kResInt, "", 77, 1},
        {kResInt, nullptr, 77, 0},  {kResInt, "99999999999999999999", 2147483647, 1},
        {kResNameConv, "x", 77, 0}, {99, "1", 77, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value ? c.value : "(null)");
        int result = 77;
        EXPECT_EQ(RES_convert(c.value, &result, c.type), c.returned);
        EXPECT_EQ(result, c.result);
        EXPECT_EQ(RES_convert(c.value, nullptr, c.type), 0);
    }
    short small = 7;
    RES_convert("-3", &small, kResShort);
    EXPECT_EQ(small, 7);
    RES_convert("99999", &small, kResShort);
    EXPECT_EQ(small, 32767);
    long large = 7;
    RES_convert("5000000000", &large, kResLong);
    EXPECT_EQ(large, 5000000000L);
    RES_convert("5000000000", &large, kResLongByInt);
    EXPECT_EQ(large, 2147483647L);
    float real = 7.0F;
    RES_convert("1.5e2km", &real, kResReal);
    EXPECT_FLOAT_EQ(real, 150.0F);
}

TEST(Convert, NameWithoutValueSetsAFlagAlone)
{
    RES_put("bare", nullptr);
    int flag = 7;
    EXPECT_EQ(RES_get_value("bare", &flag, kResFlag), 1);
    EXPECT_EQ(flag, 1);
    float scale = 1.5F;
    EXPECT_EQ(RES_get_value("bare", &scale, kResReal), 0);
    EXPECT_EQ(scale, 1.5F);
}

TEST(Convert, HandsOutTexts)
{
    const char *text = nullptr;
    const std::string value = "p,sz=a4,eps";
    EXPECT_EQ(RES_convert(value.c_str(), &text, kResText), 1);
    EXPECT_EQ(text, value.c_str());
    EXPECT_EQ(RES_convert(value.c_str(), &text, kResDevice), 1);
    EXPECT_STREQ(text, "sz=a4,eps");
    EXPECT_EQ(PRM_get(kPrmDevice), 4);
    char copy[kTextCopyRoom];
    RES_convert(std::string(4000, 'x').c_str(), copy, kResTextCopy);
    EXPECT_EQ(std::string(copy).size(), kTextCopyRoom - 1);
    for (const auto &[given, made] : std::vector<std::pair<const char *, const char *>>{
             {"/a", "/a/"}, {"/a/", "/a/"}, {"NONE", ""}, {"", ""}}) {
        char *path = nullptr;
        RES_convert(given, &path, kResPath);
        EXPECT_STREQ(path, made);
        std::free(path);
    }
}

TEST(Convert, KnowsDevicesPlotTypesAndFileParameters)
{
    const struct {
        int type;
        const char *value;
        int slot, result;
    } cases[] = {
        {kResDevice, "Ps", kPrmDevice, 4},          {kResDevice, "q,x", kPrmDevice, 5},
        {kResDevice, "H", kPrmDevice, 5},           {kResDevice, "m", kPrmDevice, 3},
        {kResDevice, "w", kPrmDevice, 6},           {kResDevice, "", kPrmDevice, 1},
        {kResDevice, "d", kPrmDevice, 1},           {kResPlotType, "RAW", kPrmPlotType, 0},
        {kResPlotType, "stream", kPrmPlotType, 23}, {kResPlotType, "hodo", kPrmPlotType, 69},
        {kResPlotType, "none", kPrmPlotType, 99},   {kResPlotType, "what", kPrmPlotType, -9999},
        {kResFileParam, "reuse", kPrmFileParam, 3}, {kResFileParam, "Calc", kPrmFileParam, 1},
        {kResFileParam, "app", kPrmFileParam, 2},   {kResFileParam, "other", kPrmFileParam, -9999},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        PRM_clear(kMissingInt);
        EXPECT_EQ(RES_convert(c.value, nullptr, c.type), 1);
        EXPECT_EQ(PRM_get(c.slot), c.result);
    }
}

TEST(Convert, ReadsHours)
{
    constexpr int kNone = kMissingInt;
    // clang-format off
    const struct {
        const char *value;
        DateRec hour;
    } cases[] = {
        {"#199903061230", make_date(1999, 3, 6, 12, 30)},
        {"#199903",       make_date(1999, 3)},
        {"030612",        make_date(kNone, 3, 6, 12)},
        {"0612",          make_date(kNone, kNone, 6, 12)},
        {"612",           make_date(kNone,kNone, 6, 12)},
        {"6d12:30",       make_date(kNone, kNone, 6, 12, 30)},
        {":30",           make_date(kNone,kNone, kNone, kNone, 30)},
        {"-:30",          make_date(kNone, kNone, kNone, kNone, -30)},
        {"12",            make_date(kNone, kNone, kNone, 12)},
        {"12:30",         make_date(kNone, kNone, kNone, 12, 30)},
        {"-3",            make_date(kNone,kNone, kNone, -3)},
        {"-306",          make_date(kNone, kNone, kNone, -306)},
        {"-0:30",         make_date(kNone, kNone, kNone, kNone, -30)},
        {"-0",            make_date(kNone)},
        {"0",             make_date(kNone, kNone, kNone, 0)},
        {"noon",          make_date(kNone)},
        {"",              make_date(kNone)},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(RES_convert(c.value, nullptr, kResHour), 1);
        DateRec d;
        TIME_get_hour(&d);
        EXPECT_EQ(fields(d), fields(c.hour));
    }
    TIME_clear_hour();
}

} // namespace
