#include <fstream>
#include <sstream>

#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/var/units.h"

namespace {

class UnitsTest : public testing::Test {
  protected:
    void SetUp() override
    {
        RES_put("file_path", folder_.path().c_str());
        UNIT_forget();
    }

    void write(const std::string &lines) { folder_.write("units.lup", lines); }

    TempDir folder_;
};

} // namespace

TEST_F(UnitsTest, Conversions)
{
    write("# C K +1\n"
          "C F *1.8+32\n"
          "C K +273.15\n"
          "K C -273.15\n"
          "m/s knt *1.943844\n"
          "F C *0.5555556-17.777778\n"
          "odd_unit mm *25.4\n"
          "m/s x *\n"
          "short\n"
          " a \n");
    const struct {
        const char *from, *to;
        float value;
        double want;
    } cases[] = {{"knt", "KNT", 7, 7},
                 {"m/s", "", 7, 7},
                 {"", "", 7, 7},
                 {"", "m/s", 7, 7},
                 {"C", "F", 100, 212},
                 {"F", "C", 212, 100},
                 {"C", "K", 0, 273.15},
                 {"K", "C", 273.15F, 0},
                 {"m/s", "knt", 10, 19.43844},
                 {"M/S", "KNT", 10, 19.43844},
                 {"10^-3/s", "1/s", 5, 0.005},
                 {"1/s", "10^-3/s", 0.005F, 5},
                 {"100 mb", "mb", 3, 300},
                 {"100_mb", "mb", 3, 300},
                 {"-deg", "deg", 30, -30},
                 {"10 C", "F", 10, 212},
                 {"C", "10 F", 100, 21.2},
                 {"odd unit", "mm", 2, 50.8},
                 {"odd_unit", "mm", 2, 50.8},
                 {"knt", "m/s", 5, 5}, // only there the other way round
                 {"m/s", "x", 5, 5},
                 {"this", "that", 5, 5},
                 {"C", "F", kMissing, kMissing},
                 {"mb", "0 mb", 5, kMissing}};
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.from) + " to " + c.to);
        EXPECT_NEAR(UNIT_convert(c.from, c.to, c.value), c.want, 1e-5 * std::abs(c.want) + 1e-4);
        EXPECT_NEAR(UNIT_convert(c.from, c.to, c.value), c.want, 1e-5 * std::abs(c.want) + 1e-4);
    }
}

TEST_F(UnitsTest, OnePairIsReadOnce)
{
    write("a b *2\nc d *3\n");
    EXPECT_EQ(UNIT_convert("a", "b", 1), 2.0F);
    write("a b *5\nc d *3\n");
    EXPECT_EQ(UNIT_convert("A", "B", 1), 2.0F);     // kept
    EXPECT_EQ(UNIT_convert("10 x", "x", 1), 10.0F); // needs no file and keeps the pair
    EXPECT_EQ(UNIT_convert("a", "b", 1), 2.0F);
    EXPECT_EQ(UNIT_convert("c", "d", 1), 3.0F);
    EXPECT_EQ(UNIT_convert("a", "b", 1), 5.0F); // read anew
}

TEST_F(UnitsTest, WithoutTheFileTheResultIsZero)
{
    EXPECT_EQ(UNIT_convert("C", "F", 10), 0.0F);
    EXPECT_EQ(UNIT_convert("100 mb", "mb", 2), 200.0F);
    write("C F *1.8+32\n");
    EXPECT_EQ(UNIT_convert("C", "F", 10), 50.0F); // the failure isn't kept
    EXPECT_EQ(UNIT_convert(nullptr, nullptr, 10), 10.0F);
}

// The installation's own file: both directions of each pair, and figures from NIST SP 811.
TEST_F(UnitsTest, InstallationsPairsGoBothWays)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    std::ifstream file(TYR_SOURCE_DIR "/data/units.lup");
    std::string line;
    int pairs = 0;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string from;
        std::string to;
        std::string conversion;
        if (!(words >> from >> to >> conversion) || from[0] == '#')
            continue;
        SCOPED_TRACE(line);
        ++pairs;
        EXPECT_LE(from.size(), 14U);
        EXPECT_LE(to.size(), 14U);
        const float there = UNIT_convert(from.c_str(), to.c_str(), 7);
        EXPECT_NEAR(UNIT_convert(to.c_str(), from.c_str(), there), 7, 0.001);
        EXPECT_NE(there, 0.0F);
    }
    EXPECT_GT(pairs, 100);
    const struct {
        const char *from, *to;
        double factor;
    } cases[] = {{"knt", "m/s", 0.5144444}, {"mph", "m/s", 0.44704},    {"ft", "m", 0.3048},
                 {"nmi", "km", 1.852},      {"inHg", "hPa", 33.86389},  {"hPa", "mb", 1},
                 {"Pa", "mb", 0.01},        {"kg/kg", "gm/kg", 1000},   {"m/s", "km/h", 3.6},
                 {"dC", "dF", 1.8},         {"deg", "rad", 0.01745329}, {"m/s", "cm/s", 100}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.from);
        EXPECT_NEAR(UNIT_convert(c.from, c.to, 1), c.factor, 1e-6 * c.factor);
    }
}
