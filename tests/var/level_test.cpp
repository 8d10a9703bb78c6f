#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/met/sounding.h"
#include "tyr/var/layer.h"
#include "tyr/var/level.h"
#include "tyr/var/time_range.h"

namespace {

constexpr float M = kMissing;
constexpr int kUntouched = 777;

class LevelTest : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        MET_set_sounding(nullptr, 0);
        for (const SpecialLevel which : {kSpecialSurface, kSpecialTropopause, kSpecialMaxWind})
            MET_clear_level(MET_special_level(which));
    }
};
using TimeTest = LevelTest;

struct Limits {
    int result, kind;
    float bottom, top, extra;
};

Limits limits(const char *text)
{
    VarRec record;
    VAR_init(&record);
    VAR_level(text, &record.level_kind, &record.level_value);
    Limits l{};
    l.result = VAR_layer_limits(&record, &l.kind, &l.bottom, &l.top, &l.extra);
    return l;
}

} // namespace

TEST_F(LevelTest, TextsGiveKindAndValue)
{
    const struct {
        int kind, value;
        std::vector<const char *> texts;
    } cases[] = {
        {100, 500, {"500", "500mb", "500 mb", "500hPa", "p500"}},
        {103, 500, {"500m", "h500"}},
        {105, 500, {"500m_ag", "a500", "A500"}},
        {113, 315, {"k315", "315K"}},
        {103, 304, {"1000ft"}},
        {105, 304, {"1000ft_ag"}},
        {115, 30, {"30mb_ag"}},
        {109, 12, {"12lev"}},
        {117, 2, {"2pv"}},
        {103, -100, {"-100m"}},
        {101, 70085, {"850-700", "700-850", "850-700mb", "p850-700", "p700-850"}},
        {106, 30000, {"a0-3000", "0-3000m_ag", "sfc-3000m_ag"}},
        {104, 20010, {"h1000-2000"}},
        {114, 310300, {"k300-310", "300-310k"}},
        {104, 50010, {"1000-5000m"}},
        {104, 18009, {"3000ft-6000ft"}},
        {116, 30000, {"0-30mb_ag"}},
        {101, 50190, {"sfc-500"}},
        {101, 50200, {"sfc[3]-500"}},
        {101, 50191, {"maxt-500"}},
        {101, 30195, {"trop-300"}},
        {104, 20996, {"trop-2000m"}},
        {104, 20995, {"trop+2000m"}},
        {107, 9950, {"s0.995", "0.995sig"}},
        {107, 3500, {"0.35sig"}},
        {108, 500900, {"s0.9-0.5", "0.9-0.5sig"}},
        {119, 5000, {"0.5eta"}},
        {120, 501000, {"1.0-0.5eta"}},
        {1, 12, {"sfc[12"}},
        {9, 0, {"-"}},
        {0, 0, {"none", "snd"}},
        {1, 0, {"SFC"}},
        {4, 0, {"frz"}},
        {5, 0, {"lcl"}},
        {6, 0, {"mwnd"}},
        {7, 0, {"trop"}},
        {102, 0, {"sea", "sl"}},
        {200, 0, {"whole"}},
        {204, 0, {"top_frz"}},
        {210, 0, {"blcld_top"}},
        {215, 0, {"cld_ceil"}},
        {232, 0, {"hcld_bot"}},
        {244, 0, {"conv_lyr"}},
        {254, 0, {"sclw_top"}},
        {kMissingInt, kMissingInt, {"miss"}},
        // what fits nothing leaves both alone
        {kUntouched,
         kUntouched,
         {"xyz", "abc-500", "500furlong", "500-300furlong", "5lev-6lev", "850-", "nan", "inf-500"}},
    };
    for (const auto &c : cases) {
        for (const char *text : c.texts) {
            SCOPED_TRACE(text);
            int kind = kUntouched;
            int value = kUntouched;
            EXPECT_EQ(VAR_level(text, &kind, &value), 2);
            EXPECT_EQ(kind, c.kind);
            EXPECT_EQ(value, c.value);
        }
    }
}

TEST_F(LevelTest, EmptyTextAndTheWordLevelTakeTheSettings)
{
    int kind = kUntouched;
    int value = kUntouched;
    EXPECT_EQ(VAR_level("", &kind, &value), 2);
    EXPECT_EQ(kind, kUntouched);
    PRM_set(kPrmLevelKind, 105);
    PRM_set(kPrmLevelValue, 1500);
    for (const char *text : {"", "level", "LEVEL"}) {
        kind = value = kUntouched;
        EXPECT_EQ(VAR_level(text, &kind, &value), 1);
        EXPECT_EQ(kind, 105);
        EXPECT_EQ(value, 1500);
    }
}

TEST_F(TimeTest, TextsGiveHoursAndRanges)
{
    PRM_set(kPrmTime, 12);
    const struct {
        int result, time;
        std::vector<const char *> texts;
    } cases[] = {
        {1, 12, {"", "time"}},
        {2, 12, {"12", "h12", "H12"}},
        {2, 48, {"2d", "2day", "d2"}},
        {2, 36, {"e1", "1e", "1.5day"}},
        {2, 3006012, {"h12-6avg"}},
        {2, 2006012, {"h12-6xyz"}},
        {2, 4018024, {"24-6acc"}},
        {2, 6012024, {"1d-12MAX"}},
        {2, 13000024, {"h24-24iavg"}},
        {2, 23000024, {"h24-24uavg"}},
        {2, 18000024, {"h24-24var"}},
        {1, 6, {"time-6"}},
        {1, 5006012, {"time-6dif"}},
        {2, 0, {"anal", "init", "in"}},
        {2, 3006000, {"anal-6avg"}},
        {2, kMissingInt, {"miss"}},
        {0, kUntouched, {"xyz", "-6", "wbrb-500", "hel", "dewp", "99999999999"}}, // no times
    };
    for (const auto &c : cases) {
        for (const char *text : c.texts) {
            SCOPED_TRACE(text);
            int time = kUntouched;
            EXPECT_EQ(VAR_time(text, &time), c.result);
            EXPECT_EQ(time, c.time);
        }
    }
    PRM_clear(kMissingInt);
    int time = kUntouched;
    EXPECT_EQ(VAR_time("", &time), 2);
    EXPECT_EQ(time, 0);
}

TEST_F(LevelTest, LayersDecodeTheLargerNumberFirst)
{
    const struct {
        int kind, value;
        float first, second;
    } cases[] = {{101, 70085, 850, 700}, {101, 50190, 1900, 500}, {104, 50010, 5000, 1000},
                 {106, 30000, 3000, 0},  {114, 310300, 310, 300}, {116, 30000, 30, 0},
                 {100, 500, 500, M},     {105, 1500, 1500, M},    {108, 500900, 500900, M}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        float first = 0;
        float second = 0;
        VAR_decode_layer(c.kind, c.value, &first, &second);
        EXPECT_EQ(first, c.first);
        EXPECT_EQ(second, c.second);
    }
}

TEST_F(LevelTest, LayersEncode)
{
    const struct {
        int kind;
        float bottom, top;
        int out_kind, out_value;
    } cases[] = {{101, 850, 700, 101, 70085},
                 {100, 850, 700, 101, 70085},
                 {100, 850, M, 100, 850},
                 {103, 0, 3000, 104, 30000},
                 {104, 100, 3000, 104, 30001},
                 {103, 700, M, 103, 700},
                 {105, 0, 3000, 106, 30000},
                 {106, 0, 3000, 106, 30000},
                 {105, 250.9F, M, 105, 250},
                 {113, 300, 310, 114, 310300},
                 {114, 300, 310, 114, 310300},
                 {107, 900, 500, 108, 500900},
                 {1, 5, M, 1, 5}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.out_value);
        int kind = 0;
        int value = 0;
        VAR_encode_layer(c.kind, &kind, &value, c.bottom, c.top);
        EXPECT_EQ(kind, c.out_kind);
        EXPECT_EQ(value, c.out_value);
    }
}

TEST_F(LevelTest, LimitsInASounding)
{
    const SoundLevel sounding[]{{950, 500, 5, 0, M, M}, {850, 1500, -5, -9, M, M}};
    ASSERT_EQ(MET_set_sounding(sounding, 2), 0);
    *MET_special_level(kSpecialSurface) = {950, 500, 20, 20, M, M};
    *MET_special_level(kSpecialTropopause) = {200, 12000, M, M, M, M};
    *MET_special_level(kSpecialMaxWind) = {250, 10500, M, M, M, M};
    const struct {
        const char *text;
        Limits want;
    } cases[] = {{"miss", {0, 100, M, M, M}},
                 {"sfc", {1, 100, 950, M, M}},
                 {"sfc[7", {1, 100, 950, M, 7}},
                 {"mwnd", {1, 100, 250, M, M}},
                 {"trop", {1, 100, 200, M, M}},
                 {"snd", {2, 100, 950, 500, M}},
                 {"frz", {1, 100, 900, M, M}},
                 {"lcl", {1, 100, 950, M, M}}, // saturated at the ground
                 {"500", {1, 100, 500, M, M}},
                 {"2000m", {1, 103, 2000, M, M}},
                 {"a2000", {1, 105, 2500, M, M}},
                 {"850-700", {2, 101, 850, 700, M}},
                 {"h1000-3000", {2, 104, 3000, 1000, M}},
                 {"a0-3000", {2, 106, 3500, 500, M}},
                 {"k300-310", {2, 114, 310, 300, M}},
                 {"sfc-500", {2, 101, 950, 500, M}},
                 {"maxt-500", {2, 101, 950, 500, M}},
                 {"trop-50", {2, 101, 200, 150, M}},
                 {"trop-300", {2, 101, M, M, M}}, // ends below 0
                 {"sfc[20]-500", {2, 101, 950, 500, 20}},
                 {"trop+2000m", {2, 104, 12000, 14000, M}},
                 {"trop-2000m", {2, 104, 10000, 12000, M}},
                 {"30mb_ag", {1, 115, -920, M, M}},
                 {"0-30mb_ag", {2, 116, -920, -950, M}}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        const Limits got = limits(c.text);
        EXPECT_EQ(got.result, c.want.result);
        EXPECT_EQ(got.kind, c.want.kind);
        EXPECT_NEAR(got.bottom, c.want.bottom, 1);
        EXPECT_EQ(got.top, c.want.top);
        EXPECT_EQ(got.extra, c.want.extra);
    }
}

TEST_F(LevelTest, LimitsWithoutASoundingAreMissing)
{
    for (const char *text :
         {"sfc", "frz", "lcl", "trop", "mwnd", "trop+2000m", "30mb_ag", "trop-50"}) {
        SCOPED_TRACE(text);
        const Limits got = limits(text);
        EXPECT_EQ(got.bottom, M);
        EXPECT_EQ(got.top, M);
    }
    const Limits got = limits("a0-3000");
    EXPECT_EQ(got.result, 2);
    EXPECT_EQ(got.bottom, 3000.0F); // the ground counts as 0 m
}
