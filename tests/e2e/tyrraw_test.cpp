// The companion tyrraw as a user runs it.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/temp_dir.h"

namespace {

constexpr const char *kStations = "TYRRAW\n12Z 06 MAR 99\n!one\nid lat lon t:Temp_in_C:%3.1f u $\n"
                                  "AAA 40 -100 10 1\nBBB 41 -101 20 2\nCCC 38 -98 15 3\n";

class TyrRaw : public testing::Test {
  protected:
    RunResult tyrraw(std::vector<std::string> words)
    {
        words.insert(words.begin(), {TYR_BINARY_DIR "/bin/tyrraw", "-ba", "-df", "/nonexistent",
                                     "-fp", TYR_SOURCE_DIR "/data"});
        return run(words, {.folder = folder_.path()});
    }

    TempDir folder_;
};

TEST_F(TyrRaw, ComputesFromFileToFile)
{
    folder_.write("obs.raw", kStations);
    const RunResult result = tyrraw({"obs.raw-t", "mul", "#2", "=", "out.raw", "-fm", "%1.0f"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read_file(folder_.file("out.raw")),
              "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 20:%3.1f\n"
              "BBB  41.00 -101.00 40:%3.1f\nCCC  38.00  -98.00 30:%3.1f\n\n");
}

TEST_F(TyrRaw, AnalysesStationsIntoAGridThatTyrgridReads)
{
    folder_.write("obs.raw", kStations);
    for (const char *out : {"t.grd", "t.nc", "t.bin", "t.old"}) {
        SCOPED_TRACE(out);
        const RunResult result =
            tyrraw({"analyze", "obs.raw-t", "=", out, "-gd", "lc,39,-99,21,15,.4,.4"});
        EXPECT_EQ(result.code, 0) << result.err;
        const RunResult listed = run({TYR_BINARY_DIR "/bin/tyrgrid", "-df", "/nonexistent", "-fp",
                                      TYR_SOURCE_DIR "/data", folder_.file(out)});
        EXPECT_NE(listed.out.find("21 x 15"), std::string::npos) << listed.out << listed.err;
        // the grid stays within the values of its three stations, by the first pass of means
        EXPECT_NE(listed.out.find("10 to 20"), std::string::npos) << listed.out;
    }
}

TEST_F(TyrRaw, TellsWhatItCantDo)
{
    folder_.write("obs.raw", kStations);
    folder_.write("empty.raw", "");
    const struct {
        std::vector<std::string> words;
        int code;
        const char *told;
    } cases[] = {
        {{}, 11, "No command was given"},
        {{"sum"}, 11, "Invalid operation"},
        {{"sum", "none", "=", "x"}, 11, "Unable to open file"},
        {{"analyze", "obs.raw-t"}, 11, "analyze: file-column = grid"},
        {{"analyze", "none.raw", "=", "x.grd"}, 10, "Unable to open file"},
        {{"analyze", "empty.raw", "=", "x.grd"}, 11, "no values to analyse"},
        {{"analyze", "obs.raw-t", "=", "x.grd", "-ou", "gif"}, 12, "gif: not a kind of grid file"},
        {{"analyze", "obs.raw-t", "=", "x.grd", "-gd", "nowhere"}, 43, "Invalid domain"},
        {{"analyze", "obs.raw-t", "=", "/proc/nowhere/x.grd"}, 12, "x.grd"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.told);
        const RunResult result = tyrraw(c.words);
        EXPECT_EQ(result.code, c.code);
        EXPECT_NE((result.err + result.out).find(c.told), std::string::npos)
            << result.err << result.out;
    }
    EXPECT_EQ(read_file(folder_.file("x.grd")), "");
}

} // namespace
