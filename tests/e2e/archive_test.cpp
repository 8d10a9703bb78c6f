// Archives drawn by many workers: what is missing is told, and drawn by the next run alone.

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

struct Archive : testing::Test {
    TempDir dir;
    std::string data = dir.file("data");
    std::string out = dir.file("out");
    std::string damaged;
    std::string whole;

    /// Two days of four stations, with a file that is cut, and a program that at one picture is
    /// killed together with its worker.
    void SetUp() override
    {
        run({TYR_BINARY_DIR "/bin/make_samples", data, "--layout", "12", "--hours", "48", "--start",
             "2026110100"});
        damaged = data + "/20261102_0500_prf.nc";
        whole = read_file(damaged);
        cut();
        dir.write("stations", "DQUA4\nFBYN1\nMBWW4\nPLTC2\n");
        const std::string program =
            dir.write("program", "#!/bin/sh\ncase \"$*\" in *20261101/FBYN1.ps*) [ -e '" +
                                     dir.file("killed") + "' ] || { touch '" + dir.file("killed") +
                                     "'; kill -9 $PPID; exit; } ;; esac\nexec '" TYR_BINARY_DIR
                                     "/bin/profiler' -df /nonexistent -fp '" TYR_SOURCE_DIR
                                     "/data' \"$@\"\n");
        chmod(program.c_str(), S_IRWXU);
    }
    void cut() const { dir.write("data/20261102_0500_prf.nc", whole.substr(0, 4000)); }

    RunResult draw(const std::vector<std::string> &more,
                   const std::vector<std::string> &env = {}) const
    {
        std::vector<std::string> words = {TYR_SOURCE_DIR "/scripts/archive.sh",
                                          "--profiler",
                                          dir.file("program"),
                                          "--stations",
                                          dir.file("stations"),
                                          "--workers",
                                          "2",
                                          "--chunk",
                                          "2"};
        words.insert(words.end(), more.begin(), more.end());
        words.insert(words.end(), {data, out});
        return run(words, {.env = env, .seconds = 120});
    }
    void expect_told_and_mended(const std::vector<std::string> &more,
                                const std::vector<std::string> &env = {}) const
    {
        const RunResult first = draw(more, env);
        EXPECT_EQ(first.code, 1) << first.err;
        EXPECT_NE(first.out.find("8 pictures, 8 to draw, 5 missing or incomplete\n"),
                  std::string::npos)
            << first.out << first.err;
        const std::string missing = read_file(out + "/missing");
        std::string expected = "20261101 FBYN1 not drawn: its worker ended\n";
        for (const char *station : {"DQUA4", "FBYN1", "MBWW4", "PLTC2"}) {
            expected += std::string("20261102 ") + station +
                        " drawn without: PROF_read_header: " + damaged + ": cut short,";
        }
        std::string shortened; // without how many reports were whole
        for (size_t at = 0; at < missing.size(); at = missing.find('\n', at) + 1) {
            const std::string line = missing.substr(at, missing.find('\n', at) - at);
            const size_t behind = line.find(" cut short,");
            shortened += behind == std::string::npos ? line + "\n" : line.substr(0, behind + 11);
        }
        EXPECT_EQ(shortened, expected);
        const auto drawn = fs::last_write_time(out + "/20261101/PLTC2.ps");
        dir.write("data/20261102_0500_prf.nc", whole);
        const RunResult second = draw(more, env);
        EXPECT_EQ(second.code, 0) << second.out << second.err;
        EXPECT_NE(second.out.find(" 0 missing or incomplete\n"), std::string::npos) << second.out;
        EXPECT_EQ(fs::last_write_time(out + "/20261101/PLTC2.ps"), drawn) << "drawn once only";
        EXPECT_TRUE(fs::exists(out + "/20261101/FBYN1.ps"));
        const RunResult third = draw(more, env);
        EXPECT_NE(third.out.find("8 pictures, 0 to draw, 0 missing"), std::string::npos)
            << third.out;
    }
};

TEST_F(Archive, ByParallel)
{
    if (!have_program("parallel")) {
        GTEST_SKIP() << "GNU parallel isn't installed";
    }
    expect_told_and_mended({});
}

TEST_F(Archive, BySlurm)
{
    if (!have_program("slurmctld") || !have_program("slurmd") || !have_program("munged")) {
        GTEST_SKIP() << "slurm-wlm isn't installed";
    }
    if (getuid() != 0) {
        GTEST_SKIP() << "a node of one's own needs root";
    }
    const std::string node = dir.file("node");
    const RunResult started = run({TYR_SOURCE_DIR "/scripts/slurm_node.sh", "start", node});
    if (started.code == 0) {
        expect_told_and_mended({"--slurm"}, {"SLURM_CONF=" + node + "/slurm.conf"});
    }
    run({TYR_SOURCE_DIR "/scripts/slurm_node.sh", "stop", node});
    if (started.code != 0) {
        GTEST_SKIP() << "no node comes up here: " << started.err;
    }
}

} // namespace
