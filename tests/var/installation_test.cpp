// What the installation's variable files give to the display.

#include <set>

#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/expression.h"
#include "tyr/var/sources.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"

namespace {

class InstallationTest : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        RES_put("plot_param", "");
        ASSERT_EQ(VAR_open_file("profiler.var"), 1);
        ASSERT_EQ(VAR_read_varfile(), 1);
    }
};

bool is_barb(int type)
{
    return type >= kTypeWindBarb && type <= kTypeVectorBarb;
}

} // namespace

TEST_F(InstallationTest, EachEntryIsOneVariableThatTheDisplayKnows)
{
    const std::set<std::string> known{"city", "temp", "dewp", "dewd", "wdir", "wspd",  "wbrbc",
                                      "wbrb", "wind", "uwnd", "vwnd", "vvel", "shear", "hel"};
    std::set<std::string> used;
    std::vector<VarFileEntry> entries;
    VarFileEntry entry;
    while (VAR_file_next(&entry))
        entries.push_back(entry);
    for (const VarFileEntry &each : entries) {
        SCOPED_TRACE(each.abbreviation);
        EXPECT_LE(each.title.size(), 30U);
        ASSERT_EQ(VAR_decode(nullptr, each.abbreviation.c_str()), 1);
        ASSERT_EQ(VAR_count(), 1);
        const VarRec &record = *VAR_get(0);
        EXPECT_EQ(known.count(record.name), 1U);
        used.insert(record.name);
        EXPECT_EQ(VAR_is_point(0), 1);
        EXPECT_NE(record.var_number, kMissingInt);
        const std::string units = record.units;
        EXPECT_TRUE(!is_barb(record.type) || units == "knt" || units == "m/s");
    }
    EXPECT_EQ(used, known);
}

TEST_F(InstallationTest, PlainBarbsAreInKnots)
{
    const struct {
        const char *text;
        int type;
        const char *units;
    } cases[] = {{"wbrb", 32, "knt"},        {"wbrbc", 33, "knt"},    {"wbrbd", 34, "knt"},
                 {"wbrb::cbarb", 33, "knt"}, {"wbrb:m/s", 32, "m/s"}, {"wbrbms", 32, "m/s"},
                 {"wind", 32, "knt"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        VAR_decode(nullptr, c.text);
        EXPECT_EQ(VAR_get(0)->type, c.type);
        EXPECT_STREQ(VAR_get(0)->units, c.units);
    }
}

TEST_F(InstallationTest, SurfaceEntriesAskForTheSurface)
{
    PRM_set(kPrmLevelKind, 103);
    PRM_set(kPrmLevelValue, 1500);
    for (const char *text : {"temp", "tempf", "dewp", "dewd", "sfcbrb"}) {
        VAR_decode(nullptr, text);
        EXPECT_EQ(VAR_get(0)->level_kind, 1) << text;
    }
    VAR_decode(nullptr, "wbrb");
    EXPECT_EQ(VAR_get(0)->level_value, 1500);
}

TEST_F(InstallationTest, CatalogueHasNoDoubles)
{
    std::set<int> numbers;
    std::set<std::string> words;
    for (const CatalogueEntry &entry : VAR_catalogue()) {
        SCOPED_TRACE(entry.abbreviation);
        EXPECT_TRUE(numbers.insert(entry.numbers[0]).second);
        EXPECT_TRUE(words.insert(entry.abbreviation).second);
        EXPECT_LT(entry.numbers[0], 1000);
        EXPECT_FALSE(entry.description.empty());
        EXPECT_TRUE(VAR_plot_code(entry.abbreviation.c_str()) == -1 ||
                    entry.abbreviation == "wind");
    }
    char out[kModelTextSize];
    EXPECT_STREQ(VAR_source(out, 98), "ECMWF (RSMC)");
    EXPECT_STREQ(VAR_model(out, 7096), "GFS");
}
