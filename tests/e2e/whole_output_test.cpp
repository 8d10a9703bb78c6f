// Nothing half-written: whatever ends a run, the file of its name is the old one or a whole new
// one.

#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/temp_dir.h"

namespace {

constexpr const char *kOld = "the file of yesterday\n";

struct OutputCase {
    const char *name;
    const char *device; ///< before the file's name
    const char *behind;
};
constexpr OutputCase kOutputs[] = {{"plot.ps", "p,", ""},   {"plot.hpgl", "h,", ""},
                                   {"plot.meta", "m,", ""}, {"plot.cgm", "m,", ",cgm"},
                                   {"plot.png", "i,", ""},  {"plot.svg", "i,", ""},
                                   {"plot.pdf", "i,", ""}};

class WholeOutput : public testing::Test {
  protected:
    /// The shell's text that draws a section to a file of the output folder.
    std::string command(const OutputCase &output) const
    {
        std::string text = profiler_path() + " -df /nonexistent -fp " TYR_SOURCE_DIR "/data" +
                           " -id PLTC2 -va wbrb -de " + output.device + path(output) +
                           output.behind;
        for (const std::string &sample : samples_) {
            text += " " + sample;
        }
        return text;
    }

    std::string path(const OutputCase &output) const { return folder_.file(output.name); }

    static RunResult shell(const std::string &text)
    {
        return run({"/bin/sh", "-c", text}, {.env = {"SOURCE_DATE_EPOCH=1700000000"}});
    }

    /// What a run gives that nothing disturbs.
    std::string whole(const OutputCase &output) const
    {
        EXPECT_EQ(shell(command(output)).code, 0);
        return read_file(path(output));
    }

    /// What stands in the folder, in one line.
    std::string names() const
    {
        std::string all;
        for (const auto &entry : std::filesystem::directory_iterator(folder_.path())) {
            all += (all.empty() ? "" : " ") + entry.path().filename().string();
        }
        return all;
    }

    int files() const
    {
        int count = 0;
        for ([[maybe_unused]] const auto &entry :
             std::filesystem::directory_iterator(folder_.path())) {
            ++count;
        }
        return count;
    }

    TempDir samples_folder_;
    TempDir folder_;
    std::vector<std::string> samples_ = make_samples(samples_folder_.path());
};

TEST_F(WholeOutput, SurvivesAKillAtAnyMoment)
{
    std::mt19937 random(19);
    for (const OutputCase &output : kOutputs) {
        SCOPED_TRACE(output.name);
        const auto start = std::chrono::steady_clock::now();
        const std::string expected = whole(output);
        const std::chrono::duration<double> length = std::chrono::steady_clock::now() - start;
        std::uniform_real_distribution moment(0.001, 1.1 * length.count());
        int ended = 0;
        for (const char *signal : {"INT", "TERM", "KILL"}) {
            for (int i = 1; i <= 9; ++i) {
                SCOPED_TRACE(std::string(signal) + " " + std::to_string(i));
                folder_.write(output.name, kOld);
                const RunResult result =
                    shell("timeout --preserve-status -s " + std::string(signal) + " " +
                          std::to_string(moment(random)) + " " + command(output));
                const std::string left = read_file(path(output));
                EXPECT_TRUE(left == kOld || left == expected) << left.substr(0, 200);
                ended += result.code != 0 ? 1 : 0;
                if (signal != std::string("KILL")) {
                    EXPECT_EQ(names(), output.name) << "a temporary file is left";
                }
            }
        }
        EXPECT_GT(ended, 0) << "no run was ended early: the test tried nothing";
        std::filesystem::remove_all(folder_.path());
        std::filesystem::create_directory(folder_.path());
    }
}

TEST_F(WholeOutput, TwoRunsOnOneNameLeaveOneWholeFile)
{
    const std::string expected = whole(kOutputs[0]);
    for (int i = 0; i < 20; ++i) {
        shell(command(kOutputs[0]) + " & " + command(kOutputs[0]) + " & wait");
        EXPECT_EQ(read_file(path(kOutputs[0])), expected);
        EXPECT_EQ(files(), 1);
    }
}

TEST_F(WholeOutput, AFullDiskLeavesTheOldFile)
{
    for (const OutputCase &output : kOutputs) {
        SCOPED_TRACE(output.name);
        folder_.write(output.name, kOld);
        const int before = files();
        const RunResult result = shell("trap '' XFSZ; ulimit -f 2; " + command(output));
        EXPECT_EQ(result.code, 4);
        EXPECT_NE(result.err.find("unable to write"), std::string::npos) << result.err;
        EXPECT_EQ(read_file(path(output)), kOld);
        EXPECT_EQ(files(), before);
    }
}

TEST_F(WholeOutput, ARunThatDrawsNothingMakesNoFile)
{
    for (const OutputCase &output : kOutputs) {
        SCOPED_TRACE(output.name);
        samples_ = {folder_.path() + "/missing.nc"};
        EXPECT_NE(shell(command(output)).code, 0);
        EXPECT_EQ(files(), 0);
    }
}

TEST_F(WholeOutput, KeepsLinksAndModes)
{
    const OutputCase &output = kOutputs[0];
    TempDir elsewhere;
    const std::string real = elsewhere.write("real.ps", kOld);
    std::filesystem::permissions(real, std::filesystem::perms(0640));
    std::filesystem::create_symlink(real, path(output));
    const std::string drawn = whole(output);
    EXPECT_TRUE(std::filesystem::is_symlink(path(output)));
    EXPECT_EQ(read_file(real), drawn);
    EXPECT_EQ(std::filesystem::status(real).permissions(), std::filesystem::perms(0640));
    EXPECT_TRUE(drawn.starts_with("%!PS")) << drawn.substr(0, 40);
}

} // namespace
