#include <gtest/gtest.h>

#include "support/kernel_plot.h"
#include "support/program.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/paper/metafile_reader.h"

namespace {

/// The section of the sample files on a device.
class Devices : public testing::Test {
  protected:
    std::string draw(const std::string &kind, const std::string &name,
                     const std::string &words = "")
    {
        if (files_.empty()) {
            files_ = make_samples(dir_.file("data"), "12", 4);
        }
        std::vector<std::string> all = {"-va",   "wbrb", "-id",
                                        "PLTC2", "-de",  kind + "," + dir_.file(name) + words};
        all.insert(all.end(), files_.begin(), files_.end());
        const RunResult result = run_profiler(all);
        EXPECT_EQ(result.code, 0) << result.err;
        return dir_.file(name);
    }

    TempDir dir_;
    std::vector<std::string> files_;
};

TEST_F(Devices, GhostscriptReadsEveryFormOfPage)
{
    if (!have_program("gs")) {
        GTEST_SKIP() << "no ghostscript";
    }
    const char *forms[] = {"",    ",color",       ",eps",      ",eps,port,color",
                           ",a4", ",sz=8x6,port", ",scale=0.5"};
    for (const char *form : forms) {
        SCOPED_TRACE(form);
        const std::string path = draw("p", "s.ps", form);
        const RunResult gs = run({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-sDEVICE=bbox", path});
        EXPECT_EQ(gs.code, 0);
        EXPECT_EQ(gs.out, "");
        EXPECT_EQ(gs.err.rfind("%%BoundingBox:", 0), 0U) << gs.err;
        EXPECT_EQ(gs.err.find("%%BoundingBox: 0 0 0 0"), std::string::npos) << "an empty page";
    }
}

TEST_F(Devices, AMetafilePlayedBackDrawsWhatThePageShows)
{
    const DrawnSection direct = read_section(read_file(draw("p", "s.ps", ",color")));
    const std::string metafile = draw("m", "s.met");
    ASSERT_EQ(read_file(metafile).rfind("TYRMETA", 0), 0U);
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    KernelPlot replay(kDevicePostScript, "color");
    ASSERT_TRUE(replay.opened());
    EXPECT_EQ(gread_metafile(metafile.c_str()), 0);
    // the surfaces of the two devices differ in shape: each picture is read by its own border
    const DrawnSection played = read_section(replay.finish());
    EXPECT_EQ(played.error, "");
    EXPECT_EQ(played.texts, direct.texts);
    EXPECT_EQ(played.levels.size(), direct.levels.size());
    EXPECT_EQ(played.columns.size(), direct.columns.size());
    ASSERT_EQ(played.barbs.size(), direct.barbs.size());
    EXPECT_GT(played.barbs.size(), 80U);
    for (size_t i = 0; i < direct.barbs.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(played.barbs[i].column, direct.barbs[i].column);
        EXPECT_EQ(played.barbs[i].height, direct.barbs[i].height);
        EXPECT_EQ(played.barbs[i].knots, direct.barbs[i].knots);
        EXPECT_NEAR(played.barbs[i].direction, direct.barbs[i].direction, 0.5);
    }
}

TEST_F(Devices, HpglIsDrawnByAnotherProgram)
{
    if (!have_program("hp2xx")) {
        GTEST_SKIP() << "no hp2xx";
    }
    const std::string path = draw("h", "s.hp");
    const RunResult hp2xx = run({"hp2xx", "-q", "-m", "eps", "-f", dir_.file("hp.eps"), path});
    EXPECT_EQ(hp2xx.code, 0) << hp2xx.err;
    EXPECT_GT(read_file(dir_.file("hp.eps")).size(), 10000U);
}

} // namespace
